// editing.cpp - see editing.h.
#include "picker/editing.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <utility>

#include "picker/backup.h"
#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/library_messages.h"
#include "picker/mending.h"
#include "picker/sentence.h"
#include "picker/writable.h"
#include "sym/format.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t clock_doubt = 1000000000; // nanoseconds

/** File titles for a while, as short as can be, so that every path fits that fitted before. */
constexpr const char *stand_ins[] = {"仮", "替", "代", "写"};

Title stand_in(const SetFiles &sets, const Title &title) {
    for (const char *name : stand_ins) {
        Title free = typed_title(name);
        if (free.sjis != title.sjis && !sets.find(free.sjis)) return free;
    }
    return typed_title("仮の題");
}

Sjis with_title(Sjis text, const Title &title) {
    acc::Range range;
    acc::find_file_title(text, static_cast<std::uint32_t>(text.size()), range);
    const auto begin = text.begin() + range.offset;
    const auto behind = text.erase(begin, begin + range.length);
    text.insert(behind, title.sjis.begin(), title.sjis.end());
    return text;
}

[[noreturn]] void refuse_taken_title(const Title &title) {
    throw Failure(FailureKind::refused, sentence("there is a symbol file {1} already", title.text),
                  {}, {{Remedy::choose_free_title}});
}

} // namespace

bool is_stand_in(const Title &title) {
    return std::find(std::begin(stand_ins), std::end(stand_ins), title.text) != std::end(stand_ins);
}

std::string counted(std::size_t count, const std::string &noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

Edit::Edit(Directories directories, EditOptions options, EditHooks hooks, bool may_make_file)
    : directories_(std::move(directories)), options_(std::move(options)), hooks_(std::move(hooks)) {
    if (options_.as) as_ = new_file_title(*options_.as);
    if (!options_.dry_run) {
        if (as_ || may_make_file) make_common_directory(directories_);
        locks_.emplace_back(directories_.common, hooks_);
    }
    sets_ = find_sets(directories_);
    if (as_) refuse_taken(*as_);
}

/** Takes the lock of a set's folder, when it is not the one that is taken first. @return if so */
bool Edit::lock_folder_of(const Located &located) {
    const std::string folder = fs::path(located.snapshot.path()).parent_path().string();
    std::error_code error;
    if (options_.dry_run || as_ || locks_.size() > 1 ||
        fs::equivalent(folder, directories_.common, error)) {
        return false;
    }
    locks_.emplace_back(folder, hooks_);
    sets_ = find_sets(directories_);
    return true;
}

void Edit::refuse_taken(const Title &title) const {
    if (sets_.find(title.sjis)) refuse_taken_title(title);
}

void Edit::refuse_standard_set() const {
    if (as_ || title_.text != standard_title) return;
    throw Failure(FailureKind::refused, sentence("{1} cannot be changed", title_.text), {},
                  {{Remedy::keep_as_new_set}, {Remedy::edit_another_set}});
}

void Edit::keep_as(const std::string &title) {
    Title fresh = new_file_title(title);
    refuse_taken(fresh);
    as_ = std::move(fresh);
}

const Located &Edit::locate(const std::string &path) {
    located_.emplace(kigou::locate(sets_, path, options_.file));
    if (lock_folder_of(*located_)) located_.emplace(kigou::locate(sets_, path, options_.file));
    open_session();
    return *located_;
}

const Located &Edit::open(const Title &file) {
    const Title title{file.sjis, file.text}; // it may be one of the files looked at anew
    located_.emplace(Located{Snapshot(sets_.get(title).path), 0});
    if (lock_folder_of(*located_)) located_.emplace(Located{Snapshot(sets_.get(title).path), 0});
    open_session();
    return *located_;
}

/** Opens the located file in the library, and makes sure that it is the same. */
void Edit::open_session() {
    const Snapshot &snapshot = located_->snapshot;
    saved_under_ = title_ = snapshot.file();
    opened_at_ = std::chrono::duration_cast<std::chrono::nanoseconds>(
                     std::chrono::system_clock::now().time_since_epoch())
                     .count();
    refuse_standard_set();
    if (snapshot.size() - 1 > most_titles) {
        throw Failure(
            FailureKind::refused,
            sentence("{1} cannot be changed: it has {2} titles of at most {3}", title_.text,
                     std::to_string(snapshot.size() - 1), std::to_string(most_titles)));
    }
    if (!is_writable(snapshot.path()) && title_.text != standard_title) {
        // The library opens for update alone. What is kept as another set can be a copy.
        if (as_) return replace_text(snapshot.text(), {});
        throw Failure(FailureKind::refused, sentence("{1} cannot be changed", title_.text),
                      why_not_written(fs::path(snapshot.path()).parent_path(), snapshot.path()),
                      {{Remedy::keep_as_new_set}});
    }
    session_.emplace(directories_);
    session_->open(title_);
    if (identity_of(session_->opened()) != snapshot.identity()) {
        throw Failure(FailureKind::changed,
                      sentence("{1} was changed by another program just now", snapshot.path()), {},
                      {{Remedy::try_again}});
    }
    stop_if_asked(hooks_);
}

void Edit::create(const Title &file) {
    refuse_taken(file);
    session_.emplace(directories_);
    session_->create(file);
    saved_under_ = title_ = file;
    new_ = true;
    did({ChangeKind::made, file.text});
}

/** The library refuses such files by itself, but it will have the text as it is on disk. */
void Edit::refuse_loss(const Sjis &text) const {
    if (!located_ || as_) return;
    const Sjis bytes = read_file(located_->snapshot.path()).bytes;
    const auto titles = Snapshot::of_text(text, title_.text);
    const auto saved = Snapshot::of_text(text_form(disk_form(text)), title_.text);
    bool same = titles.size() == saved.size() && std::ranges::count(bytes, 0) == 0;
    for (std::size_t i = 0; same && i < titles.size(); ++i) {
        same = std::ranges::equal(titles.path_of(i), saved.path_of(i)) &&
               std::ranges::equal(titles.data(i), saved.data(i));
    }
    if (same) return;
    const std::string &path = located_->snapshot.path();
    throw Failure(FailureKind::failed, sentence("{1} cannot be changed", title_.text),
                  lines_to_mend(path, check_symbol_file(bytes)), {{Remedy::mend_file, path}});
}

void Edit::replace_text(const Sjis &text, std::vector<Change> changes, bool takes_away) {
    refuse_loss(text);
    // The library opens a copy of the text and is given the file's title and place for the save.
    // The folder that it takes for the program's holds that copy and the files of the real one.
    session_.reset();
    scratch_.emplace();
    const fs::path folder = scratch_->path();
    const Title title = stand_in(sets_, title_);
    write_new((folder / scratch_file).string(), disk_form(with_title(text, title)), 0600);
    std::error_code error;
    for (const fs::directory_entry &file : fs::directory_iterator(directories_.program, error)) {
        const std::string name = file.path().filename().string();
        if (name.find(".kig") == std::string::npos || name == scratch_file) continue;
        fs::create_symlink(fs::absolute(file.path()), folder / name, error);
    }
    session_.emplace(Directories{folder.string(), directories_.common, directories_.user});
    try {
        session_->open(title);
        session_->rename_title(title, title_);
    } catch (const LibraryFailure &failure) {
        if (failure.message() == message_not_opened) throw;
        throw Failure(FailureKind::refused,
                      sentence("the library does not take what {1} would be", title_.text),
                      {"a set holds at most " + std::to_string(most_titles) +
                       " titles, ten levels deep, with paths of at most " +
                       std::to_string(most_path) + " bytes"});
    }
    for (Change &change : changes) did(std::move(change));
    takes_away_ = takes_away_ || takes_away;
    stop_if_asked(hooks_);
}

/** @throws Failure (changed) when what is on disk is not what was opened, or not free any more */
void Edit::refuse_changed() const {
    if (as_ || new_) {
        const Title &title = as_ ? *as_ : saved_under_;
        if (find_sets(directories_).find(title.sjis)) refuse_taken_title(title);
        return;
    }
    const Snapshot &opened = located_->snapshot;
    const auto now = identity_of(opened.path());
    // Two changes within one tick of the file system's clock have the same time.
    const bool in_doubt = opened.identity().changed + clock_doubt > opened_at_;
    if (now == opened.identity() && !in_doubt) return;
    try {
        if (now && Snapshot(opened.path()).text() == opened.text()) return;
    } catch (const Failure &) {
        // It is no symbol file any more.
    }
    throw Failure(
        FailureKind::changed,
        now ? sentence(
                  "{1} was changed by another program since it was opened, so nothing is saved",
                  opened.path())
            : sentence("{1} is gone since it was opened, so nothing is saved", opened.path()),
        {}, {{Remedy::try_again}, {Remedy::keep_as_new_set}});
}

/** Saves, and says what keeps it from being done. */
void Edit::save() {
    const std::string path = located_ && !as_ ? located_->snapshot.path() : "";
    const std::string folder =
        path.empty() ? directories_.common : fs::path(path).parent_path().string();
    try {
        session_->save(as_ ? *as_ : saved_under_);
    } catch (const LibraryFailure &failure) {
        const bool writing = !failure.message() || failure.message() == message_not_opened;
        if (!writing) throw;
        throw Failure(FailureKind::failed, failure.what(), why_not_written(folder, path));
    }
}

EditReport Edit::finish(const std::function<void(const EditReport &)> &saved) {
    stop_if_asked(hooks_);
    EditReport report;
    report.dry_run = options_.dry_run;
    report.saved = !options_.dry_run && (!changes_.empty() || as_);
    report.as_new_set = as_.has_value();
    report.file = (as_ ? *as_ : title_).text;
    if (located_ && !as_) report.path = located_->snapshot.path();
    if (report.saved) {
        if (as_ || new_) make_common_directory(directories_);
        refuse_changed();
        std::optional<Backup> backup;
        if (takes_away_ && !as_) backup.emplace(report.path, located_->snapshot.file().text);
        save();
        if (backup) report.backup = backup->keep();
    }
    report.changes = std::move(changes_);
    if (report.saved && saved) saved(report);
    session_.reset();
    scratch_.reset();
    locks_.clear();
    return report;
}

EditReport delete_set(const Directories &directories, const Title &title,
                      const EditOptions &options, const EditHooks &hooks,
                      const std::function<void(const std::string &)> &look) {
    std::vector<FolderLock> locks;
    if (!options.dry_run) {
        locks.emplace_back(directories.common, hooks);
        std::error_code error;
        const fs::path folder = fs::path(find_sets(directories).get(title).path).parent_path();
        if (!fs::equivalent(folder, directories.common, error)) {
            locks.emplace_back(folder.string(), hooks);
        }
    }
    const SetFiles sets = find_sets(directories);
    const SetFile &set = sets.get(title);
    if (title.text == standard_title) {
        throw Failure(FailureKind::refused, "the standard set cannot be deleted");
    }
    EditReport report;
    report.file = title.text;
    report.dry_run = options.dry_run;
    report.path = set.path;
    report.changes.push_back({ChangeKind::deleted, title.text});
    report.uncovers = std::count_if(sets.sets.begin(), sets.sets.end(), [&](const SetFile &other) {
                          return other.title.sjis == title.sjis;
                      }) > 1;
    if (options.dry_run) return report;
    const std::string folder = fs::path(set.path).parent_path().string();
    if (!is_writable(folder) || !is_writable(set.path)) {
        throw Failure(FailureKind::failed, "cannot delete " + title.text,
                      why_not_written(folder, set.path));
    }
    stop_if_asked(hooks);
    if (look) look(set.path);
    Backup backup(set.path, title.text);
    Session session(directories);
    session.delete_file(title);
    if (identity_of(set.path)) {
        throw Failure(FailureKind::failed, "the system refused to delete " + set.path,
                      why_not_written(folder));
    }
    report.saved = true;
    report.backup = backup.keep();
    return report;
}

} // namespace kigou
