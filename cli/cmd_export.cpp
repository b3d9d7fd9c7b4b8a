// cmd_export.cpp - kigou export: a symbol file as UTF-8 text, JSON or a table.
#include <iostream>
#include <map>
#include <memory>

#include "cli/command.h"
#include "cli/set_word.h"
#include "picker/set_formats.h"
#include "picker/snapshot.h"

namespace kigou {
namespace {

struct Options {
    std::string title{standard_title};
    std::string format;
};

Status run(const Context &context, const Options &options) {
    const Snapshot snapshot = set_of_word(context, options.title);
    const std::string format =
        options.format.empty() ? (context.json ? "json" : "text") : options.format;
    static const std::map<std::string, Format> formats{
        {"text", Format::text}, {"json", Format::json}, {"tsv", Format::tsv}};
    std::cout << write_set(set_of(snapshot), formats.at(format));
    return Status::found;
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.optional_word("TITLE", Value::file_title, options->title,
                            "Title of the symbol file, or the name of one");
    arguments.choice("--format", options->format, {"text", "json", "tsv"},
                     "text (default), json or tsv");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command export_command{.name = "export",
                             .summary = "Write a symbol file as text, JSON or a table",
                             .examples =
                                 "  kigou export 私の記号 > 私の記号.txt\n"
                                 "  kigou export 拡張の記号 --format tsv\n"
                                 "  kigou export ./new.kig",
                             .declare = declare,
                             .notes = "'kigou import' reads all three back."};

} // namespace kigou
