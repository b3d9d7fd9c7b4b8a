// shipped_versions.cpp - see shipped_versions.h. The copies are named by the file that they are of,
// its size and its time, so that one look tells whether a version is kept.
#include "picker/compare/shipped_versions.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/folder_lock.h"
#include "picker/shipped_sets.h"
#include "picker/snapshot.h"
#include "picker/symbol_reading.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t most_bytes = 1 << 20; // of a set that is kept, and of the notes

fs::path folder_of_copies(const std::string &state) {
    return fs::path(state) / "shipped";
}

fs::path file_of_notes(const std::string &state) {
    return folder_of_copies(state) / "copies";
}

std::string beginning_of_copies(const std::string &shipped) {
    return fs::path(shipped).stem().string() + "-";
}

fs::path copy_of(const std::string &shipped, const FileIdentity &identity,
                 const std::string &state) {
    return folder_of_copies(state) / (beginning_of_copies(shipped) + std::to_string(identity.size) +
                                      "-" + std::to_string(identity.modified) + ".kig");
}

void make_folder_of_copies(const std::string &state) {
    make_private_directory(state);
    make_private_directory(folder_of_copies(state).string());
}

/** @return the title, when there was another version before */
std::optional<std::string> keep(const std::string &shipped, const std::string &state) {
    const auto identity = identity_of(shipped);
    if (!identity || static_cast<std::size_t>(identity->size) > most_bytes) return std::nullopt;
    const fs::path copy = copy_of(shipped, *identity, state);
    std::error_code error;
    if (fs::exists(copy, error)) return std::nullopt;
    const Sjis bytes = read_file(shipped, most_bytes).bytes;
    const std::string title = Snapshot::of_text(text_form(bytes), shipped).file().text;
    const std::vector<std::string> earlier = kept_versions(shipped, state);
    const bool is_other = !earlier.empty() && std::ranges::none_of(earlier, [&](const auto &one) {
        return read_file(one).bytes == bytes;
    });
    make_folder_of_copies(state);
    write_new(copy.string(), bytes, 0600);
    return is_other ? std::optional(title) : std::nullopt;
}

/** Kept versions by the copies of them, without copies that are gone: lines "copy TAB version". */
std::map<std::string, std::string> noted_copies(const std::string &state) {
    std::map<std::string, std::string> copies;
    const std::string path = file_of_notes(state).string();
    if (!identity_of(path)) return copies;
    const Sjis bytes = read_file(path, most_bytes).bytes;
    for (const std::string &line :
         lines_of({reinterpret_cast<const char *>(bytes.data()), bytes.size()})) {
        const std::string copy = line.substr(0, line.find('\t'));
        if (copy.size() < line.size() && identity_of(copy))
            copies[copy] = line.substr(copy.size() + 1);
    }
    return copies;
}

} // namespace

std::vector<std::string> keep_shipped_versions(const Directories &directories,
                                               const std::string &state) {
    std::vector<std::string> titles;
    for (const std::string &shipped : shipped_files(directories)) {
        try {
            if (auto title = keep(shipped, state)) titles.push_back(std::move(*title));
        } catch (const Failure &) {
            // An update asks for an earlier version then and says that there is none.
        }
    }
    return titles;
}

std::vector<std::string> kept_versions(const std::string &shipped, const std::string &state) {
    std::vector<std::string> copies;
    std::error_code error;
    for (fs::directory_iterator file(folder_of_copies(state), error), end; !error && file != end;
         file.increment(error)) {
        if (is_version_of(file->path().string(), shipped)) copies.push_back(file->path().string());
    }
    std::ranges::sort(copies);
    return copies;
}

void note_copy(const std::string &copy, const std::string &shipped, const std::string &state) {
    const auto identity = identity_of(shipped);
    if (!identity || copy.find_first_of("\t\n") != std::string::npos) return;
    try {
        make_folder_of_copies(state);
        const FolderLock lock(folder_of_copies(state).string(), {});
        auto copies = noted_copies(state);
        copies[copy] = copy_of(shipped, *identity, state).string();
        std::string text;
        for (const auto &[path, version] : copies) {
            text.append(path).append("\t").append(version).append("\n");
        }
        replace_file(file_of_notes(state).string(),
                     {reinterpret_cast<const unsigned char *>(text.data()), text.size()}, 0600);
    } catch (const Failure &) {
        // An update takes the nearest version then.
    }
}

std::optional<std::string> noted_version(const std::string &copy, const std::string &state) {
    const auto copies = noted_copies(state);
    const auto noted = copies.find(copy);
    return noted == copies.end() ? std::nullopt : std::optional(noted->second);
}

bool is_version_of(const std::string &kept, const std::string &shipped) {
    return fs::path(kept).filename().string().starts_with(beginning_of_copies(shipped));
}

std::optional<SetFile> noted_origin(const std::string &copy, const Directories &directories,
                                    const std::string &state) {
    const auto noted = noted_version(copy, state);
    if (!noted) return std::nullopt;
    for (const std::string &shipped : shipped_files(directories)) {
        if (is_version_of(*noted, shipped) && identity_of(shipped)) {
            return SetFile{Snapshot(shipped).file(), shipped};
        }
    }
    return std::nullopt;
}

} // namespace kigou
