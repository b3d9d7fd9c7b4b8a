// cmd_recover.cpp - kigou recover: a symbol file from the working file of a killed process.
#include <algorithm>
#include <iostream>
#include <memory>

#include "cli/edit_command.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/stop_signals.h"
#include "picker/check.h"
#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/recovery.h"
#include "picker/set_files.h"

namespace kigou {
namespace {

struct Options {
    std::string source;
    std::optional<std::string> output, as;
    bool dry_run = false;
};

/** Writes what was recovered. @return path of the new file */
std::string keep(const Context &context, const Options &options, const Recovered &recovered) {
    if (!options.output) {
        const StopSignals signals;
        return keep_recovered(context.directories, recovered, edit_hooks());
    }
    if (write_new(*options.output, disk_form(recovered.text))) return *options.output;
    throw Failure(FailureKind::refused, *options.output + " exists and is not overwritten",
                  {"name a file that does not exist with -o"});
}

Status run(const Context &context, const Options &options) {
    Recovered recovered = recover(options.source);
    if (options.as) recovered.rename(new_file_title(*options.as));
    const SetFiles sets = find_sets(context.directories);
    if (!options.output && sets.find(recovered.title.sjis)) {
        throw Failure(FailureKind::refused,
                      "there is a symbol file " + recovered.title.text + " already",
                      {"--as NEW-TITLE recovers under another title",
                       "-o FILE writes to a file of your choice"});
    }
    const CheckedFile checked = check_symbol_file(disk_form(recovered.text));
    std::string path = options.output.value_or(context.directories.common);
    if (!options.dry_run) {
        path = keep(context, options, recovered);
        remove_leftover(options.source);
    }
    if (context.json) {
        write({{"file", recovered.title.text},
               {"saved", !options.dry_run},
               {"path", path},
               {"titles", checked.blocks},
               {"symbols", checked.symbols},
               {"header_damaged", recovered.header_damaged}});
    } else {
        std::cout << (options.dry_run ? "would have recovered " : "recovered ")
                  << printable(recovered.title.text) << " (" << counted(checked.blocks, "title")
                  << ", " << counted(checked.symbols, "symbol") << ") to " << printable(path)
                  << '\n';
        if (options.dry_run) std::cout << "dry run: nothing is written\n";
    }
    if (recovered.header_damaged) complain("the header was damaged; the text was searched for");
    if (std::any_of(checked.findings.begin(), checked.findings.end(),
                    [](const Finding &finding) { return finding.unsafe; })) {
        complain("'kigou check' finds faults in what was recovered");
    }
    return Status::found;
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.word("TEMPFILE", Value::file, options->source,
                   "Working file that a killed process left");
    arguments.option("-o,--output", Value::file, options->output,
                     "File to write (default: a new one among your own sets)");
    arguments.option("--as", Value::new_title, options->as, "File title to give it");
    arguments.flag("--dry-run", options->dry_run, "Show what would be recovered and write nothing");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command recover_command{
    .name = "recover",
    .summary = "Make a symbol file of the working file of a killed process",
    .examples =
        "  kigou recover /tmp/file-of-the-killed-process --as 救出\n"
        "  kigou recover /tmp/file-of-the-killed-process -o saved.kig",
    .declare = declare,
    .notes = "Nothing is overwritten. What was recovered is removed from the temporary directory."};

} // namespace kigou
