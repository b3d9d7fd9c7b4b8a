// cmd_browse.cpp - kigou browse: the full-screen browser, and what was taken in it.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <iostream>
#include <memory>

#include "browser/browse.h"
#include "browser/clipboard.h"
#include "browser/plain.h"
#include "browser/terminal.h"
#include "cli/command.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/output_file.h"
#include "cli/utf8_locale.h"
#include "picker/codes.h"
#include "picker/failure.h"
#include "picker/locate.h"
#include "picker/recovery.h"

namespace kigou {
namespace {

struct Options {
    std::string path;
    std::optional<std::string> file;
    std::optional<std::string> pick_to;
    bool pick = false, copy = false, plain = false;
};

/** The controlling terminal, whatever the standard streams are. */
class ControllingTerminal {
  public:
    ControllingTerminal() : descriptor_(open("/dev/tty", O_RDWR | O_CLOEXEC)) {
        if (descriptor_ >= 0) return;
        throw Failure(FailureKind::refused,
                      std::string("there is no terminal to browse on: ") + std::strerror(errno),
                      {"kigou list and kigou find need none"});
    }
    ~ControllingTerminal() { close(descriptor_); }
    ControllingTerminal(const ControllingTerminal &) = delete;
    ControllingTerminal &operator=(const ControllingTerminal &) = delete;

    int descriptor() const { return descriptor_; }

  private:
    int descriptor_;
};

/** In columns, unless the plain mode is asked for or nothing else can be shown. */
std::vector<Sjis> picks_of(Shelf &shelf, const BrowseStart &start, bool plain) {
    const ControllingTerminal terminal;
    require_utf8_locale();
    const std::string help = "? for help";
    if (plain) return browse_plain(shelf, terminal.descriptor(), start, help);
    if (const std::string why = why_no_columns(terminal.descriptor()); !why.empty()) {
        return browse_plain(shelf, terminal.descriptor(), start,
                            why + "; this is the plain mode, " + help);
    }
    return browse(shelf, terminal.descriptor(), start);
}

std::string json_text(const std::vector<Sjis> &picks) {
    nlohmann::ordered_json json = {{"symbols", nlohmann::json::array()}};
    for (const Sjis &pick : picks) json["symbols"].push_back(json_of(codes_of(pick)));
    return text_of(json);
}

/** @throws Failure with what was taken, which is not to be lost with the file */
void write_to(const OutputFile &file, const std::string &text, const std::string &symbols) {
    try {
        file.write(text);
    } catch (const Failure &failure) {
        throw Failure(failure.kind(), failure.what(), {"taken: " + symbols});
    }
}

Status run(const Context &context, const Options &options) {
    std::string start;
    if (!options.path.empty() || options.file) {
        start = locate(find_sets(context.directories), options.path, options.file).title().text;
    }
    std::optional<OutputFile> file;
    if (options.pick_to && *options.pick_to != "-") file.emplace(*options.pick_to, "--pick-to");
    std::vector<Leftover> leftovers = sweep_leftovers(context.directories); // which changes files
    Shelf shelf(context.directories, Recents());
    const std::vector<Sjis> picks = picks_of(shelf, {start, std::move(leftovers)}, options.plain);
    if (const std::string trouble = shelf.note(picks); !trouble.empty()) complain(trouble);
    if (picks.empty()) {
        if (context.json && !file) std::cout << json_text(picks);
        return Status::nothing_found;
    }
    std::string symbols;
    for (const Sjis &pick : picks) symbols += to_utf8(pick);
    const bool done =
        !options.copy || copy_to_clipboard(ControllingTerminal().descriptor(), symbols);
    if (!done) complain("this terminal has no clipboard that can be set, so nothing is copied");
    const std::string text = context.json ? json_text(picks) : symbols + '\n';
    if (file) {
        write_to(*file, text, symbols);
    } else {
        if (!(std::cout << text << std::flush)) complain("taken: " + symbols); // main says why
    }
    return done ? Status::found : Status::incomplete;
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.optional_word("PATH", Value::path, options->path, "Title to begin at");
    arguments.option("--file", Value::file_title, options->file,
                     "Title of the symbol file when the path does not begin with it");
    arguments.flag("--pick", options->pick, "Browse, on a command line that names no command");
    arguments.option("--pick-to", Value::file, options->pick_to,
                     "File that gets what was taken; - is the standard output");
    arguments.flag("--copy", options->copy, "Copy what was taken to the clipboard as well");
    arguments.flag("--plain", options->plain,
                   "Lines of text in place of columns, for screen readers and simple terminals");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command browse_command{"browse",
                             "Browse the symbol files full-screen, and take symbols",
                             "  kigou browse\n"
                             "  kigou browse 一般記号/矢印\n"
                             "  kigou browse --file 拡張の記号 > symbols.txt\n"
                             "  kigou --copy 一般記号/矢印\n"
                             "  kigou --pick-to symbols.txt\n"
                             "  kigou --plain 一般記号",
                             declare,
                             "What was taken is written as one line; the picture is drawn on the "
                             "terminal all the same, so a script can use $(kigou --pick). The "
                             "file of --pick-to is replaced; when nothing is taken it stays as it "
                             "is. --copy has the terminal set its clipboard, also from afar, in "
                             "tmux and in screen; some terminals must be told to allow it. Where "
                             "TERM names a terminal that cannot show columns the plain mode "
                             "starts by itself.",
                             "0 taken, 1 nothing taken, 2 misuse or failure, 3 taken, but the "
                             "terminal has no clipboard",
                             nullptr,
                             true};

} // namespace kigou
