// cmd_recover.cpp - kigou recover: a symbol file from the working file of a killed process.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/command.h"
#include "cli/edit.h"
#include "cli/file_check.h"
#include "cli/output.h"
#include "cli/storable.h"
#include "cli/working_copy.h"
#include "common/acccom.h"
#include "sym/format.h"

namespace kigou {
namespace {

struct Options {
    std::string source;
    std::optional<std::string> to, as;
    bool dry_run = false;
};

struct Recovered {
    Sjis text; /**< text form */
    bool header_damaged = false;
};

/** The text behind a sound header, or else from the first head line on. */
Recovered text_of(const std::string &path) {
    const Sjis bytes = bytes_of_file(path);
    if (auto copy = parse_working_copy(bytes)) return {std::move(copy->text), false};
    const auto start = std::search(bytes.begin(), bytes.end(), acc::m_ucSymHeader.data(),
                                   acc::m_ucSymHeader.data() + acc::m_ucSymHeader.size());
    if (start == bytes.end()) {
        throw Failure(Status::failed, path + " is not a working file: no symbol file is in it",
                      {"working files lie in the temporary directory (TMPDIR) and hold Shift_JIS"});
    }
    return {Sjis(start, bytes.end()), true};
}

Sjis disk_form(Sjis text) {
    text.push_back(0);
    const std::unique_ptr<unsigned char, decltype(&CM_free)> euc(CM_sjis2euc(text.data()),
                                                                 &CM_free);
    if (!euc) throw std::bad_alloc();
    return Sjis(euc.get(), euc.get() + CM_lstrlen(euc.get()));
}

/** Writes a file that was not there before. @return false when the name is taken */
bool write_new(const std::string &path, const Sjis &bytes) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0 && errno == EEXIST) return false;
    std::size_t written = 0;
    bool whole = file >= 0;
    while (whole && written < bytes.size()) {
        const ssize_t count = write(file, bytes.data() + written, bytes.size() - written);
        whole = count > 0 || (count < 0 && errno == EINTR);
        if (count > 0) written += static_cast<std::size_t>(count);
    }
    whole = whole && fsync(file) == 0;
    int error = errno;
    if (file >= 0 && close(file) != 0 && whole) {
        whole = false;
        error = errno;
    }
    if (whole) return true;
    if (file >= 0) unlink(path.c_str());
    throw Failure(Status::failed, "cannot write " + path + ": " + std::strerror(error));
}

/** Writes under the first free name of the kind that the library gives. */
std::string write_to_common(const Directories &directories, const Sjis &bytes) {
    make_common_directory(directories);
    for (int number = 0; number < 10000000; ++number) {
        std::array<char, 24> name{};
        std::snprintf(name.data(), name.size(), "@%07d.kig", number);
        std::string path = (std::filesystem::path(directories.common) / name.data()).string();
        if (write_new(path, bytes)) return path;
    }
    throw Failure(Status::failed, "no name is free in " + directories.common);
}

Status run(const Context &context, const Options &options) {
    Recovered recovered = text_of(options.source);
    Sjis &text = recovered.text;
    text.erase(std::find(text.begin(), text.end(), 0), text.end());
    acc::Range range;
    if (!acc::find_file_title(text, static_cast<std::uint32_t>(text.size()), range)) {
        throw Failure(Status::failed, options.source + " has no name line; it cannot be recovered");
    }
    const auto begin = text.begin() + static_cast<std::ptrdiff_t>(range.offset);
    Title title{Sjis(begin, begin + static_cast<std::ptrdiff_t>(range.length)), {}};
    if (options.as) {
        title = new_file_title(*options.as);
        text.erase(begin, begin + static_cast<std::ptrdiff_t>(range.length));
        text.insert(text.begin() + static_cast<std::ptrdiff_t>(range.offset), title.sjis.begin(),
                    title.sjis.end());
    }
    title.text = to_utf8(title.sjis);
    if (!options.to) {
        Host host(context.directories);
        const auto files = host.file_titles().items;
        if (std::any_of(files.begin(), files.end(),
                        [&](const Title &file) { return file.sjis == title.sjis; })) {
            throw Failure(Status::failed, "there is a symbol file " + title.text + " already",
                          {"--as NEW-TITLE recovers under another title",
                           "--to FILE writes to a file of your choice"});
        }
    }
    const Sjis bytes = disk_form(text);
    const CheckedFile checked = check_symbol_file(bytes);
    std::string path = options.to.value_or(context.directories.common);
    if (!options.dry_run && !options.to) path = write_to_common(context.directories, bytes);
    if (!options.dry_run && options.to && !write_new(path, bytes)) {
        throw Failure(Status::failed, path + " exists and is not overwritten",
                      {"name a file that does not exist with --to"});
    }
    if (context.json) {
        const nlohmann::ordered_json json = {{"file", title.text},
                                             {"saved", !options.dry_run},
                                             {"path", path},
                                             {"titles", checked.blocks},
                                             {"symbols", checked.symbols},
                                             {"header_damaged", recovered.header_damaged}};
        std::cout << json.dump(2) << '\n';
    } else {
        std::cout << (options.dry_run ? "would have recovered " : "recovered ")
                  << printable(title.text) << " (" << counted(checked.blocks, "title") << ", "
                  << counted(checked.symbols, "symbol") << ") to " << path << '\n';
        if (options.dry_run) std::cout << "dry run: nothing is written\n";
    }
    if (recovered.header_damaged) complain("the header was damaged; the text was searched for");
    if (!checked.findings.empty()) complain("'kigou check' finds faults in what was recovered");
    return Status::found;
}

Body declare(CLI::App &app) {
    const auto options = std::make_shared<Options>();
    app.add_option("TEMPFILE", options->source, "Working file that a killed process left")
        ->required();
    app.add_option("--to", options->to, "File to write (default: a new one among your own sets)");
    app.add_option("--as", options->as, "File title to give it");
    app.add_flag("--dry-run", options->dry_run, "Show what would be recovered and write nothing");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command recover_command{"recover",
                              "Make a symbol file of the working file of a killed process",
                              "  kigou recover /tmp/file-of-the-killed-process --as 救出\n"
                              "  kigou recover /tmp/file-of-the-killed-process --to saved.kig\n"
                              "Nothing is overwritten, and the working file stays.",
                              declare};

} // namespace kigou
