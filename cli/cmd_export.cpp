// cmd_export.cpp - kigou export: a symbol file as text, JSON, a table or a dictionary.
#include <iostream>
#include <map>
#include <memory>

#include "cli/command.h"
#include "cli/output.h"
#include "cli/set_word.h"
#include "picker/dictionary/dictionary.h"
#include "picker/set_formats.h"
#include "picker/snapshot.h"

namespace kigou {
namespace {

struct Options {
    std::string title{standard_title};
    std::string format;
};

const std::map<std::string, Format> sets{
    {"text", Format::text}, {"json", Format::json}, {"tsv", Format::tsv}};
const std::map<std::string, DictionaryFormat> dictionaries{
    {"list", DictionaryFormat::list},
    {"mozc", DictionaryFormat::mozc},
    {"skk", DictionaryFormat::skk},
    {"xcompose", DictionaryFormat::xcompose},
    {"quickphrase", DictionaryFormat::quick_phrase}};

Status run(const Context &context, const Options &options) {
    const SymbolSet set = set_of(set_of_word(context, options.title));
    const std::string format =
        options.format.empty() ? (context.json ? "json" : "text") : options.format;
    if (const auto found = sets.find(format); found != sets.end()) {
        std::cout << write_set(set, found->second);
        return Status::found;
    }
    LeftOutSymbols left_out;
    std::cout << write_dictionary(set, dictionaries.at(format), context.output(), left_out);
    for (const auto &[reason, symbols] : left_out) {
        std::string line = "left out, ";
        complain(line.append(reason).append(": ").append(symbols));
    }
    return left_out.empty() ? Status::found : Status::incomplete;
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.optional_word("TITLE", Value::file_title, options->title,
                            "Title of the symbol file, or the name of one");
    arguments.choice(
        "--as,--format", options->format,
        {"text", "json", "tsv", "list", "mozc", "skk", "xcompose", "quickphrase"},
        "text (default), json or tsv: all of it. list: a symbol a line. mozc, skk: its symbols "
        "by their readings, for the dictionary of an input method. xcompose: for ~/.XCompose. "
        "quickphrase: for fcitx5");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command export_command{
    .name = "export",
    .summary = "Write a symbol file as text, JSON, a table or a dictionary",
    .examples =
        "  kigou export 私の記号 > 私の記号.txt\n"
        "  kigou export 拡張の記号 --as tsv\n"
        "  kigou export ./new.kig\n"
        "  kigou export 標準の記号 --as mozc > kigou.txt\n"
        "  kigou export 標準の記号 --as skk --to EUC-JP > SKK-JISYO.kigou",
    .declare = declare,
    .notes =
        "'kigou import' reads text, json, tsv, mozc and skk back. A dictionary has each symbol "
        "under its readings and the titles that are kana alone. What it cannot hold is named.",
    .exit_status =
        "0 written, 2 misuse or failure, 3 a dictionary does not hold all; each is named"};

} // namespace kigou
