// recovery.cpp - see recovery.h.
//
// The library holds a lock on each file of that kind for as long as its process lives, so a
// file that can be locked here has no owner any more. One that is a moment old may have an
// owner that has not come to its lock yet.
#include "picker/recovery.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>

#include "picker/backup.h"
#include "picker/disk_form.h"
#include "picker/editing.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/scratch_folder.h"
#include "picker/set_files.h"
#include "picker/snapshot.h"
#include "picker/symbol_data.h"
#include "sym/format.h"
#include "sym/temp_index.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;
using Bytes = std::span<const unsigned char>;

constexpr const char *working_prefix = "accsym";
constexpr std::size_t working_name = 12; // bytes of the whole name
constexpr int most_names = 10000000;     // that the library gives, "@" and seven digits

/** The text behind a sound header; nothing when the header is damaged. */
std::optional<Sjis> text_behind_header(Bytes bytes) {
    TempIndex header;
    if (bytes.size() < sizeof header) return std::nullopt;
    std::memcpy(&header, bytes.data(), sizeof header);
    const std::size_t text_at = sizeof header + sizeof(TempInfo) * header.usCount;
    if (header.usCount == 0 || header.reserved != 0 || header.ulTextPos != text_at ||
        text_at > bytes.size()) {
        return std::nullopt;
    }
    const Bytes text = bytes.subspan(text_at);
    if (!acc::has_symbol_header(text)) return std::nullopt;
    return Sjis(text.begin(), text.end());
}

acc::Range title_range(const Sjis &text) {
    acc::Range range;
    acc::find_file_title(text, static_cast<std::uint32_t>(text.size()), range);
    return range;
}

/** A file that this person's dead process left, held so that no other sweeper takes it. */
class DeadFile {
  public:
    explicit DeadFile(const fs::path &path)
        : file_(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)) {
        struct stat status {};
        if (file_ < 0 || fstat(file_, &status) != 0) return;
        dead_ = S_ISREG(status.st_mode) && status.st_uid == geteuid() && status.st_nlink == 1 &&
                status.st_mtime + youngest_leftover < std::time(nullptr) &&
                flock(file_, LOCK_EX | LOCK_NB) == 0;
        empty_ = status.st_size == 0;
    }
    ~DeadFile() {
        if (file_ >= 0) close(file_);
    }
    DeadFile(const DeadFile &) = delete;
    DeadFile &operator=(const DeadFile &) = delete;

    explicit operator bool() const { return dead_; }
    bool is_empty() const { return empty_; }

  private:
    int file_;
    bool dead_ = false, empty_ = false;
};

std::vector<fs::path> files_named(const std::string &directory, const std::string &prefix,
                                  std::size_t bytes) {
    std::vector<fs::path> paths;
    std::error_code error;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with(prefix) && (bytes == 0 || name.size() == bytes)) {
            paths.push_back(entry->path());
        }
    }
    return paths;
}

/** Whether a set has every title and every symbol of another one. */
bool holds(const Snapshot &set, const Snapshot &other) {
    for (std::size_t i = 1; i < other.size(); ++i) {
        const auto number = set.find(other.path_of(i));
        if (!number || !missing_from(set.data(*number), symbols_in(other.data(i))).empty()) {
            return false;
        }
    }
    return true;
}

/** What stands in a file of an unfinished save, which is in the disk form. */
Recovered recover_save(const std::string &path) {
    Sjis text = text_form(read_file(path).bytes);
    if (!acc::has_symbol_header(text)) throw Failure(FailureKind::refused, "nothing is in it");
    const acc::Range range = title_range(text);
    return {title_of(std::span(text).subspan(range.offset, range.length)), std::move(text)};
}

/** What is to become of a file: empty for one that goes. */
std::optional<Leftover> judge(const fs::path &path, const Recovered &found, const SetFiles &sets) {
    const Leftover left{path.string(), found.title.text, {}};
    const SetFile *set = sets.find(found.title.sjis);
    if (!set && is_stand_in(found.title)) return std::nullopt; // of an import, whose file is there
    if (!set) return left;
    const Snapshot saved(set->path);
    // The header is written last: without it the file was being opened, and not yet edited.
    const bool opening = found.header_damaged && found.text.size() <= saved.text().size();
    const auto first = std::span(saved.text()).first(opening ? found.text.size() : 0);
    if (saved.text() == found.text || (opening && std::ranges::equal(first, found.text)))
        return std::nullopt;
    const auto age = identity_of(path.string());
    if (!age || age->modified >= saved.identity().modified) return left;
    if (holds(saved, Snapshot::of_text(found.text, path.string()))) return std::nullopt;
    try {
        return Leftover{left.path, left.title,
                        keep_beside(set->path, found.title.text, disk_form(found.text))};
    } catch (const Failure &) {
        return left; // the disk may be full
    }
}

void sweep(const std::vector<fs::path> &paths, Recovered (*read)(const std::string &),
           const SetFiles &sets, std::vector<Leftover> &left) {
    for (const fs::path &path : paths) {
        const DeadFile file(path);
        if (!file) continue;
        try {
            std::optional<Leftover> stays;
            if (!file.is_empty()) stays = judge(path, read(path.string()), sets);
            if (!stays || !stays->kept.empty()) unlink(path.c_str());
            if (stays) left.push_back(std::move(*stays));
        } catch (const Failure &) {
            // Not ours, or nothing that could be recovered: whoever made it may know.
        }
    }
}

/** Ends what was begun in the folders of the backups. A copy in part is of what is there whole. */
void sweep_backups(const Directories &directories) {
    for (const std::string &folder : {directories.common, directories.program}) {
        for (const fs::path &path : files_named(backup_folder(folder), unfinished_prefix, 0)) {
            remove_leftover(path.string());
        }
    }
    try {
        settle_backups(directories);
    } catch (const Failure &) {
        // Another process edits the sets; the next look will do.
    }
}

} // namespace

void Recovered::rename(const Title &other) {
    const acc::Range range = title_range(text);
    const auto begin = text.begin() + static_cast<std::ptrdiff_t>(range.offset);
    const auto behind = text.erase(begin, begin + static_cast<std::ptrdiff_t>(range.length));
    text.insert(behind, other.sjis.begin(), other.sjis.end());
    title = other;
}

Recovered recover(const std::string &path) {
    if (fs::path(path).filename().string().starts_with(unfinished_prefix)) {
        return recover_save(path);
    }
    const Sjis bytes = read_file(path).bytes;
    Recovered recovered;
    if (auto text = text_behind_header(bytes)) {
        recovered.text = std::move(*text);
    } else {
        const auto start = std::search(bytes.begin(), bytes.end(), acc::m_ucSymHeader.data(),
                                       acc::m_ucSymHeader.data() + acc::m_ucSymHeader.size());
        if (start == bytes.end()) {
            throw Failure(
                FailureKind::refused, path + " is not a working file: no symbol file is in it",
                {"working files lie in the temporary directory (TMPDIR) and hold Shift_JIS"});
        }
        recovered.text.assign(start, bytes.end());
        recovered.header_damaged = true;
    }
    Sjis &text = recovered.text;
    text.erase(std::find(text.begin(), text.end(), 0), text.end());
    acc::Range range;
    if (!acc::find_file_title(text, static_cast<std::uint32_t>(text.size()), range)) {
        throw Failure(FailureKind::refused, path + " has no name line; it cannot be recovered");
    }
    recovered.title = title_of(std::span(text).subspan(range.offset, range.length));
    return recovered;
}

std::string keep_recovered(const Directories &directories, const Recovered &recovered,
                           const EditHooks &hooks) {
    make_common_directory(directories);
    const FolderLock lock(directories.common, hooks);
    if (find_sets(directories).find(recovered.title.sjis)) {
        throw Failure(FailureKind::refused,
                      "there is a symbol file " + recovered.title.text + " already", {},
                      {{Remedy::choose_free_title}});
    }
    const Sjis bytes = disk_form(recovered.text);
    for (int number = 0; number < most_names; ++number) {
        std::array<char, 24> name{};
        std::snprintf(name.data(), name.size(), "@%07d.kig", number);
        std::string path = (fs::path(directories.common) / name.data()).string();
        if (write_new(path, bytes)) return path;
    }
    throw Failure(FailureKind::failed, "no name is free in " + directories.common);
}

std::vector<Leftover> sweep_leftovers(const Directories &directories) {
    sweep_scratch_folders();
    sweep_backups(directories);
    const std::vector<fs::path> working =
        files_named(temporary_directory(), working_prefix, working_name);
    std::vector<fs::path> saves = files_named(directories.common, unfinished_prefix, 0);
    for (fs::path &path : files_named(directories.program, unfinished_prefix, 0)) {
        saves.push_back(std::move(path));
    }
    std::vector<Leftover> left;
    if (working.empty() && saves.empty()) return left;
    try {
        const SetFiles sets = find_sets(directories);
        sweep(working, recover, sets, left);
        sweep(saves, recover_save, sets, left);
    } catch (const Failure &) {
        // Without the sets nothing is known to be kept; the work that follows will say so.
    }
    return left;
}

void remove_leftover(const std::string &path) {
    const std::string name = fs::path(path).filename().string();
    if (!name.starts_with(working_prefix) && !name.starts_with(unfinished_prefix)) return;
    if (const DeadFile file(path); file) unlink(path.c_str());
}

} // namespace kigou
