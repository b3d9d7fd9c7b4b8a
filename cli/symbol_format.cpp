// symbol_format.cpp - see symbol_format.h.
#include "cli/symbol_format.h"

#include <utility>

#include "cli/output.h"
#include "picker/failure.h"
#include "picker/search/readings.h"
#include "picker/set_formats.h"
#include "picker/word_list.h"

namespace kigou {
namespace {

using Field = std::string (*)(const ToldSymbol &);

constexpr std::pair<std::string_view, Field> all_fields[] = {
    {"symbol", [](const ToldSymbol &symbol) { return symbol.written; }},
    {"kuten", [](const ToldSymbol &symbol) { return symbol.codes.kuten; }},
    {"unicode", [](const ToldSymbol &symbol) { return symbol.codes.unicode; }},
    {"jis", [](const ToldSymbol &symbol) { return symbol.codes.jis; }},
    {"sjis", [](const ToldSymbol &symbol) { return symbol.codes.sjis; }},
    {"name", [](const ToldSymbol &symbol) { return symbol.name; }},
    {"english", [](const ToldSymbol &symbol) { return symbol.english; }},
    {"readings", [](const ToldSymbol &symbol) { return word_list(symbol.readings); }},
    {"paths", [](const ToldSymbol &symbol) { return word_list(symbol.paths); }},
    {"code", [](const ToldSymbol &symbol) { return symbol.code; }},
};

Field field_named(std::string_view name) {
    for (const auto &[own, field] : all_fields) {
        if (own == name) return field;
    }
    throw Failure(FailureKind::refused, "there is no field %(" + std::string(name) + ")",
                  {"the fields are " + SymbolFormat::fields()});
}

} // namespace

ToldSymbol::ToldSymbol(const Sjis &bytes, std::vector<std::string> stands_in)
    : codes(codes_of(bytes)),
      written(written_symbols(bytes)),
      readings(readings_of(bytes)),
      paths(std::move(stands_in)) {
    if (const SymbolNames *const names = names_of(bytes)) {
        name = names->name;
        english = names->english;
    }
    for (const Sjis &other : lookalikes_of(bytes)) lookalikes.push_back(to_utf8(other));
}

nlohmann::ordered_json json_of(const ToldSymbol &symbol) {
    const auto text_or_null = [](const std::string &text) -> nlohmann::ordered_json {
        if (text.empty()) return nullptr;
        return text;
    };
    nlohmann::ordered_json json = json_of(symbol.codes);
    json["readings"] = symbol.readings;
    json["name"] = text_or_null(symbol.name);
    json["english"] = text_or_null(symbol.english);
    json["paths"] = symbol.paths;
    return json;
}

SymbolFormat::SymbolFormat(const std::string &format) {
    std::string text;
    for (std::size_t i = 0; i < format.size(); ++i) {
        const std::string_view rest = std::string_view(format).substr(i);
        if (rest.starts_with("%(")) {
            const auto end = rest.find(')');
            if (end == std::string_view::npos) {
                throw Failure(FailureKind::refused, "%( without ) in the format " + format);
            }
            parts_.push_back({std::exchange(text, {}), field_named(rest.substr(2, end - 2))});
            i += end;
        } else if (rest.starts_with("%%") || rest.starts_with("\\\\")) {
            text += format[i++];
        } else if (rest.starts_with("\\t") || rest.starts_with("\\n")) {
            text += format[++i] == 't' ? '\t' : '\n';
        } else {
            text += format[i];
        }
    }
    parts_.push_back({text});
}

std::string SymbolFormat::line(const ToldSymbol &symbol) const {
    std::string line;
    for (const Part &part : parts_) {
        line += part.text;
        if (part.field) line += printable(part.field(symbol));
    }
    return line;
}

std::string SymbolFormat::fields() {
    std::string text;
    for (const auto &[name, field] : all_fields) {
        text += (text.empty() ? "%(" : ", %(") + std::string(name) + ")";
    }
    return text;
}

} // namespace kigou
