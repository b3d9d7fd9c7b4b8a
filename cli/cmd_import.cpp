// cmd_import.cpp - kigou import: a symbol file, an export, a dictionary or an old-format file
// into a set.
#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>

#include "cli/edit_command.h"
#include "cli/shell_word.h"
#include "cli/standard_input.h"
#include "picker/dictionary/dictionary.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/set_formats.h"
#include "picker/set_import.h"

namespace kigou {
namespace {

struct Options {
    std::string source, format, from;
    std::optional<std::string> into;
    EditOptions edit;
};

const std::map<std::string, Format> formats{{"kig", Format::kig},
                                            {"text", Format::text},
                                            {"json", Format::json},
                                            {"tsv", Format::tsv},
                                            {"csv", Format::csv}};

const std::map<std::string, DictionaryFormat> dictionaries{{"mozc", DictionaryFormat::mozc},
                                                           {"skk", DictionaryFormat::skk}};

/** What is to come in: a set, which may be the one title of a dictionary, or an old-format file. */
struct Source {
    bool is_set = true;
    SymbolSet set;
    OldFile old;
    std::string title; /**< of the file to add to */
};

/** @throws Failure (refused) for text that was read as UTF-8 and is not */
void refuse_other_encodings(const std::string &name, const std::string &text) {
    const std::u32string characters = to_characters(text);
    const auto at = std::ranges::find(characters, replacement_character);
    if (at == characters.end()) return;
    const auto line = 1 + std::count(characters.begin(), at, U'\n');
    throw Failure(FailureKind::refused, name + " is not UTF-8 in line " + std::to_string(line),
                  {"--from EUC-JP or --from Shift_JIS tells its encoding"});
}

/** Where the symbols of a dictionary go. @throws Failure (refused) when no title is named */
void choose_title(Source &source, const Context &context, const Options &options) {
    const std::string typed = normalized(options.into.value_or(""));
    const SetFiles sets = find_sets(context.directories);
    const SetFile *const file = file_beginning(sets, typed);
    const std::size_t end = file ? file->title.text.size() : typed.find(separator);
    if (end >= typed.size()) {
        throw Failure(FailureKind::refused, "the symbols of a dictionary go into one title",
                      {"--into 私の記号/辞書 names it; it is made when there is none"});
    }
    source.title = typed.substr(0, end);
    source.set.blocks.front().path = typed_title(typed.substr(end + separator.size())).sjis;
}

std::optional<DictionaryFormat> dictionary_format(const Options &options, const Sjis &text) {
    if (!options.format.empty()) {
        const auto found = dictionaries.find(options.format);
        return found == dictionaries.end() ? std::nullopt : std::optional(found->second);
    }
    if (format_of(text)) return std::nullopt;
    return dictionary_format_of(utf8_of_file(text));
}

/** Of a text; the first line of a dictionary may tell it. */
Encoding encoding_of(const Options &options, const Sjis &bytes) {
    if (options.format == "ini" || options.format == "kig") return Encoding::utf_8; // as it is
    if (!options.from.empty()) return encoding_named(options.from);
    return encoding_of_dictionary(bytes).value_or(Encoding::utf_8);
}

Source read_old(const Options &options, const Sjis &bytes, bool from_input) {
    if (from_input && !options.into) {
        throw Failure(FailureKind::refused, "an old file from the standard input has no name",
                      {"--into TITLE names the symbol file to add its titles to"});
    }
    Source source{.is_set = false, .set = {}, .old = read_old_file(bytes), .title = {}};
    if (source.old.titles.empty() && options.format.empty()) {
        throw Failure(FailureKind::refused,
                      options.source + " is in no format that can be imported",
                      {"an export begins with 〈記号〉, {, or a row file, path, symbols",
                       "an old-format file is Shift_JIS and has lines such as ［矢印］",
                       "a dictionary has lines such as 'やじるし /→/←/', or a reading and a word "
                       "with a tab between",
                       "--from tells that a text is in EUC-JP or Shift_JIS"});
    }
    source.title = options.into.value_or(std::filesystem::path(options.source).stem().string());
    return source;
}

Source read_source(const Context &context, const Options &options, LeftOutList &left_out) {
    const bool from_input = options.source == "-";
    const Sjis bytes =
        from_input ? whole_standard_input("paste an export") : read_input(options.source);
    const Encoding from = encoding_of(options, bytes);
    const std::string in_utf8 = from == Encoding::utf_8 ? "" : decoded(bytes, from);
    const Sjis text = in_utf8.empty() ? bytes : Sjis(in_utf8.begin(), in_utf8.end());
    Source source;
    if (const auto dictionary = dictionary_format(options, text)) {
        const std::string words = utf8_of_file(text);
        const std::string name = from_input ? "the standard input" : options.source;
        if (from == Encoding::utf_8) refuse_other_encodings(name, words);
        Sjis symbols = read_dictionary(words, *dictionary, left_out);
        if (symbols.empty()) {
            throw Failure(FailureKind::refused,
                          "no word of " + name + " is a symbol, so nothing is done");
        }
        source.set.blocks.push_back({{}, std::move(symbols), options.source});
        choose_title(source, context, options);
        return source;
    }
    std::optional<Format> format;
    if (options.format.empty()) {
        format = format_of(text);
    } else if (options.format != "ini") {
        format = formats.at(options.format);
    }
    if (!format) return read_old(options, bytes, from_input);
    source.set = read_set(text, *format, left_out);
    source.title = options.into.value_or(to_utf8(source.set.file));
    return source;
}

/** Opens the file to add to, or makes it. */
void open_or_make(Edit &edit, const Source &source, const Options &options) {
    const Title title = typed_title(source.title);
    const SetFile *set = edit.sets().find(title.sjis);
    if (!set) return edit.create(new_file_title(source.title));
    if (!options.into && source.is_set) {
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
    const Source source = read_source(context, options, left_out);
    const EditReport report = run_edit(
        context, options.edit,
        [&](Edit &edit) {
            open_or_make(edit, source, options);
            if (source.is_set) {
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
    arguments.option("--into", Value::path, options->into,
                     "Symbol file to add to, made when there is none (default: a new one with the "
                     "title in the export, or the name of the old file); for a dictionary the "
                     "title in it, too");
    arguments.choice("--format", options->format,
                     {"ini", "kig", "text", "json", "tsv", "csv", "mozc", "skk"},
                     "What the file is (default: seen from the file)");
    declare_from(arguments, options->from);
    arguments.option("--as", Value::new_title, options->edit.as,
                     "Make a new symbol file of this title; with --into one that has both, and the "
                     "old one stays as it is");
    declare_dry_run(arguments, options->edit);
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command import_command{
    .name = "import",
    .summary = "Add a symbol file, an export, a dictionary or an old-format file",
    .examples =
        "  kigou import old.ini --into 私の記号\n"
        "  kigou import 私の記号.txt\n"
        "  kigou import backup/私の記号.kig --into 私の記号\n"
        "  kigou export 拡張の記号 | kigou import - --into 私の記号\n"
        "  kigou import user_dictionary.txt --into 私の記号/辞書",
    .declare = declare,
    .notes =
        "A title that is there already gets the symbols that it lacks. Of a dictionary of mozc or "
        "SKK the words of one character come in.",
    .exit_status = "0 done, 2 misuse or failure, 3 something was left out; each is named"};

} // namespace kigou
