// cmd_chart.cpp - kigou chart: a title or a whole file as a picture, or as pages to print.
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <iostream>
#include <memory>
#include <optional>
#include <utility>

#include "cli/chart_drawing.h"
#include "cli/command.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/output_file.h"
#include "picker/chart.h"
#include "picker/failure.h"
#include "picker/locate.h"

namespace kigou {
namespace {

constexpr std::size_t most_named = 20; // symbols without a glyph

struct Options {
    std::string path, format;
    std::optional<std::string> file, output;
    bool names = false;
};

/** "svg" or "pdf". @throws Failure where the ending of the output does not tell */
std::string format_of(const Options &options) {
    if (!options.format.empty()) return options.format;
    if (!options.output || *options.output == "-") return "svg";
    std::string name = *options.output;
    for (char &letter : name)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    for (const char *format : {"svg", "pdf"}) {
        if (name.ends_with(std::string(".") + format)) return format;
    }
    throw Failure(FailureKind::refused, *options.output + " ends neither in .svg nor in .pdf",
                  {"--as svg or --as pdf says what it is to be"});
}

Located located(const Context &context, const Options &options) {
    if (!options.file && options.path.ends_with(".kig")) return {Snapshot(options.path), 0};
    return locate(find_sets(context.directories), options.path, options.file);
}

/** Says which symbols the picture shows as empty places. */
void tell_of(const std::vector<std::string> &no_glyph) {
    if (no_glyph.empty()) return;
    std::string line = std::to_string(no_glyph.size()) +
                       (no_glyph.size() == 1 ? " symbol has" : " symbols have") +
                       " no glyph in the fonts of this machine: ";
    for (std::size_t i = 0; i < std::min(most_named, no_glyph.size()); ++i) {
        line += (i == 0 ? "" : ", ") + no_glyph[i];
    }
    if (no_glyph.size() > most_named) {
        line += " and " + std::to_string(no_glyph.size() - most_named) + " more";
    }
    complain(line);
    complain("a Japanese font, such as the package fonts-noto-cjk, has most symbols");
}

Status run(const Context &context, const Options &options) {
    const bool to_file = options.output && *options.output != "-";
    std::optional<OutputFile> file;
    if (to_file) file.emplace(*options.output, "-o");
    const std::string format = format_of(options);
    if (context.output() != Encoding::utf_8) {
        throw Failure(FailureKind::refused, "a picture is in no encoding of text",
                      {"leave --to out"});
    }
    if (context.json && !to_file) {
        throw Failure(FailureKind::refused, "JSON and the picture cannot both be written there",
                      {"-o FILE." + format + " takes the picture"});
    }
    if (!to_file && format == "pdf" && isatty(STDOUT_FILENO)) {
        throw Failure(FailureKind::refused, "a terminal cannot show a PDF",
                      {"-o FILE.pdf takes it"});
    }
    const Located title = located(context, options);
    const Chart chart = chart_of(title.snapshot, title.number, options.names);
    const DrawnChart drawn = draw_chart(chart, format);
    if (file) {
        file->write(drawn.picture);
    } else {
        std::cout << drawn.picture;
    }
    if (context.json) {
        write({{"path", *options.output},
               {"format", format},
               {"titles", chart.titles.size()},
               {"symbols", chart.symbol_count()},
               {"no_glyph", drawn.no_glyph}});
    } else {
        tell_of(drawn.no_glyph);
    }
    return Status::found;
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.optional_word("PATH", Value::path, options->path,
                            "Titles joined by \"／\" or \"/\", with or without the file title, or "
                            "the name of a symbol file that ends in .kig; none: all of the set");
    arguments.option("--file", Value::file_title, options->file,
                     "Title of the symbol file when the path does not begin with it");
    arguments.option(
        "-o,--output", Value::file, options->output,
        "File for the chart, of the format that it ends in: .svg or .pdf; - or none is "
        "the standard output");
    arguments.choice("--as", options->format, {"svg", "pdf"},
                     "svg (default): one picture. pdf: A4 pages, whose text can be searched");
    arguments.flag("--names", options->names, "Write below each symbol what it is called");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command chart_command{
    .name = "chart",
    .summary = "Draw a title or a whole symbol file, to look at or to print",
    .examples =
        "  kigou chart -o kigou.pdf\n"
        "  kigou chart 一般記号/矢印 --names > yajirushi.svg\n"
        "  kigou chart 拡張の記号 --as pdf > kakuchou.pdf",
    .declare = declare,
    .notes =
        "Lines of symbols stay lines; a long one goes on in the next. A symbol that no font of "
        "the machine has is drawn as a hatched square with its codes, and named. The program that "
        "draws is a package of its own, kigou-chart."};

} // namespace kigou
