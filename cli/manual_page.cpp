// manual_page.cpp - see manual_page.h.
#include "cli/manual_page.h"

namespace kigou {
namespace {

std::string in_capitals(std::string text) {
    for (char &letter : text) {
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    }
    return text;
}

} // namespace

std::string escaped(std::string_view text) {
    std::string roff;
    for (const char character : text) {
        switch (character) {
            case '-':
                roff += "\\-";
                break;
            case '\\':
                roff += "\\(rs";
                break;
            case '\'':
                roff += "\\(aq";
                break;
            case '`':
                roff += "\\(ga";
                break;
            case '^':
                roff += "\\(ha";
                break;
            case '~':
                roff += "\\(ti";
                break;
            default:
                roff += character;
        }
    }
    return roff;
}

std::string bold(std::string_view text) {
    return "\\fB" + escaped(text) + "\\fR";
}

std::string italic(std::string_view text) {
    return "\\fI" + escaped(text) + "\\fR";
}

ManualPage::ManualPage(const std::string &name, const std::string &summary,
                       const std::string &version)
    : roff_(".\\\" Written by the build from the table of commands.\n.TH \"" +
            escaped(in_capitals(name)) + "\" 1 \"\" \"kigou " + version + "\" kigou\n") {
    section("NAME");
    line(escaped(name) + " \\- " + escaped(summary));
}

void ManualPage::section(std::string_view heading) {
    roff_ += ".SH ";
    roff_ += heading;
    roff_ += '\n';
}

void ManualPage::line(const std::string &roff) {
    if (roff.starts_with('.')) roff_ += "\\&"; // or else it would be a command
    roff_ += roff + '\n';
}

void ManualPage::text(std::string_view text) {
    while (!text.empty()) {
        const auto end = text.find('\n');
        if (end == 0) {
            request("PP");
        } else {
            line(escaped(text.substr(0, end)));
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
}

void ManualPage::item(const std::string &roff_heading, std::string_view text) {
    request("TP");
    line(roff_heading);
    line(escaped(text));
}

void ManualPage::request(std::string_view name) {
    roff_ += '.';
    roff_ += name;
    roff_ += '\n';
}

} // namespace kigou
