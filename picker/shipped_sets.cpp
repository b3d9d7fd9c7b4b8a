// shipped_sets.cpp - see shipped_sets.h. The state is a text file of lines "directory TAB name
// of a set".
#include "picker/shipped_sets.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>

#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/snapshot.h"
#include "picker/symbol_data.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t most_state_bytes = 1 << 20;

std::set<std::string> lines_of_file(const std::string &path) {
    std::set<std::string> lines;
    try {
        const Sjis bytes = read_file(path, most_state_bytes).bytes;
        std::string line;
        for (const unsigned char byte : bytes) {
            if (byte != '\n')
                line += static_cast<char>(byte);
            else
                lines.insert(std::exchange(line, {}));
        }
    } catch (const Failure &) {
        // There is none yet, or it cannot be read: a copy too many does no harm.
    }
    return lines;
}

void remember(const std::string &path, const std::set<std::string> &lines) {
    std::string text;
    for (const std::string &line : lines) {
        std::error_code error;
        if (fs::exists(line.substr(0, line.find('\t')), error)) text += line + "\n";
    }
    replace_file(path, {reinterpret_cast<const unsigned char *>(text.data()), text.size()}, 0600);
}

std::vector<fs::path> shipped_sets(const Directories &directories) {
    std::error_code error;
    std::vector<fs::path> sets;
    for (fs::directory_iterator set(fs::path(directories.program) / "sets", error), end;
         !error && set != end; set.increment(error)) {
        if (set->path().extension() == ".kig") sets.push_back(set->path());
    }
    std::sort(sets.begin(), sets.end());
    return sets;
}

/** Copies one set. @return its title; nothing when a set has that title or that name */
std::optional<std::string> provide(const fs::path &shipped, const Directories &directories) {
    const Snapshot snapshot(shipped.string());
    if (find_sets(directories).find(snapshot.path_of(0))) return std::nullopt;
    const fs::path own = fs::path(directories.common) / shipped.filename();
    if (!write_new(own.string(), read_file(shipped.string()).bytes)) return std::nullopt;
    return snapshot.file().text;
}

} // namespace

std::vector<std::string> provide_shipped_sets(const Directories &directories,
                                              const std::string &state, const EditHooks &hooks) {
    std::vector<std::string> titles;
    std::error_code error;
    const std::vector<fs::path> sets = shipped_sets(directories);
    const std::string memory = (fs::path(state) / "shipped-sets").string();
    const auto line_of = [&](const fs::path &set) {
        return fs::absolute(directories.common, error).string() + "\t" + set.filename().string();
    };
    std::set<std::string> known = lines_of_file(memory);
    if (std::all_of(sets.begin(), sets.end(),
                    [&](const fs::path &set) { return known.contains(line_of(set)); })) {
        return titles;
    }
    try {
        make_common_directory(directories);
        const FolderLock lock(directories.common, hooks);
        known = lines_of_file(memory);
        for (const fs::path &set : sets) {
            if (!known.insert(line_of(set)).second) continue;
            if (auto title = provide(set, directories)) titles.push_back(std::move(*title));
        }
        make_private_directory(state);
        remember(memory, known);
    } catch (const Failure &) {
        // A home that cannot be written gets no copies; what is asked for goes on.
    }
    return titles;
}

std::vector<std::string> shipped_files(const Directories &directories) {
    std::vector<std::string> files{(fs::path(directories.program) / "default.kig").string()};
    for (const fs::path &set : shipped_sets(directories)) files.push_back(set.string());
    return files;
}

std::optional<SetFile> shipped_set_titled(const Directories &directories, const Title &title) {
    for (const std::string &path : shipped_files(directories)) {
        try {
            const Snapshot snapshot(path);
            if (snapshot.file().sjis == title.sjis) return SetFile{title, path};
        } catch (const Failure &) {
            // Another one may have it.
        }
    }
    return std::nullopt;
}

std::optional<SetFile> shipped_set_with(const Directories &directories, const Sjis &symbol) {
    for (const fs::path &path : shipped_sets(directories)) {
        try {
            const Snapshot snapshot(path.string());
            for (std::size_t number = 1; number < snapshot.size(); ++number) {
                if (!missing_from(snapshot.data(number), {symbol}).empty()) continue;
                return SetFile{snapshot.file(), path.string()};
            }
        } catch (const Failure &) {
            // Another one may have it.
        }
    }
    return std::nullopt;
}

} // namespace kigou
