// cmd_import.cpp - kigou import: an old-format file, an export or a symbol file into a set.
#include <filesystem>
#include <map>
#include <memory>

#include "cli/edit_command.h"
#include "cli/shell_word.h"
#include "cli/standard_input.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/set_formats.h"
#include "picker/set_import.h"

namespace kigou {
namespace {

struct Options {
    std::string source, format;
    std::optional<std::string> into;
    EditOptions edit;
};

const std::map<std::string, Format> formats{{"kig", Format::kig},
                                            {"text", Format::text},
                                            {"json", Format::json},
                                            {"tsv", Format::tsv},
                                            {"csv", Format::csv}};

/** What is to come in: a set, or an old-format file. */
struct Source {
    Sjis bytes;
    std::optional<Format> format; /**< nothing for an old-format file */
    SymbolSet set;
    OldFile old;
    std::string title; /**< of the file to add to */
};

Source read_source(const Options &options, LeftOutList &left_out) {
    Source source;
    const bool from_input = options.source == "-";
    source.bytes =
        from_input ? whole_standard_input("paste an export") : read_input(options.source);
    if (options.format.empty()) {
        source.format = format_of(source.bytes);
    } else if (options.format != "ini") {
        source.format = formats.at(options.format);
    }
    if (source.format) {
        source.set = read_set(source.bytes, *source.format, left_out);
        source.title = options.into.value_or(to_utf8(source.set.file));
        return source;
    }
    if (from_input && !options.into) {
        throw Failure(FailureKind::refused, "an old file from the standard input has no name",
                      {"--into TITLE names the symbol file to add its titles to"});
    }
    source.old = read_old_file(source.bytes);
    if (source.old.titles.empty() && options.format.empty()) {
        throw Failure(FailureKind::refused,
                      options.source + " is in no format that can be imported",
                      {"an export begins with 〈記号〉, {, or a row file, path, symbols",
                       "an old-format file is Shift_JIS and has lines such as ［矢印］"});
    }
    source.title = options.into.value_or(std::filesystem::path(options.source).stem().string());
    return source;
}

/** Opens the file to add to, or makes it. */
void open_or_make(Edit &edit, const Source &source, const Options &options) {
    const Title title = typed_title(source.title);
    const SetFile *set = edit.sets().find(title.sjis);
    if (!set) return edit.create(new_file_title(source.title));
    if (!options.into && source.format) {
        throw Failure(
            FailureKind::refused, "there is a symbol file " + title.text + " already",
            {"--into " + shell_word(title.text) + " adds to it, --as NEW-TITLE makes another"});
    }
    edit.open(title);
}

Status run(const Context &context, Options options) {
    if (options.edit.as && !options.into) {
        options.into = std::exchange(options.edit.as, std::nullopt);
        if (find_sets(context.directories).find(typed_title(*options.into).sjis)) {
            throw Failure(FailureKind::refused,
                          "there is a symbol file " + *options.into + " already", {},
                          {{Remedy::choose_free_title}});
        }
    }
    LeftOutList left_out;
    const Source source = read_source(options, left_out);
    const EditReport report = run_edit(
        context, options.edit,
        [&](Edit &edit) {
            open_or_make(edit, source, options);
            if (source.format) {
                import_set(edit, source.set, left_out);
            } else {
                import_old_file(edit, source.old, left_out);
            }
        },
        true);
    return tell(context, report, &left_out);
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.word("FILE", Value::file, options->source, "File to read; - is the standard input");
    arguments.option("--into", Value::file_title, options->into,
                     "Symbol file to add to, made when there is none (default: a new one with the "
                     "title in the export, or the name of the old file)");
    arguments.choice("--format", options->format, {"ini", "kig", "text", "json", "tsv", "csv"},
                     "ini, kig, text, json, tsv or csv (default: seen from the file)");
    arguments.option("--as", Value::new_title, options->edit.as,
                     "Make a new symbol file of this title; with --into one that has both, and the "
                     "old one stays as it is");
    declare_dry_run(arguments, options->edit);
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command import_command{
    .name = "import",
    .summary = "Add the titles of a symbol file, an export or an old-format file",
    .examples =
        "  kigou import old.ini --into 私の記号\n"
        "  kigou import 私の記号.txt\n"
        "  kigou import backup/私の記号.kig --into 私の記号\n"
        "  kigou export 拡張の記号 | kigou import - --into 私の記号",
    .declare = declare,
    .notes = "A title that is there already gets the symbols that it lacks.",
    .exit_status = "0 done, 2 misuse or failure, 3 something was left out; each is named"};

} // namespace kigou
