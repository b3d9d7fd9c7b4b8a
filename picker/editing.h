// editing.h - one edit of one symbol file: under the lock of its folder, on the file as it is
// on disk, saved once at the end.
//
// Between the opening and the save nothing on disk changes. If another program that knows no
// lock has changed the file by then, nothing is saved, and the edit stays as it is.
#ifndef KIGOU_PICKER_EDITING_H
#define KIGOU_PICKER_EDITING_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "picker/folder_lock.h"
#include "picker/locate.h"
#include "picker/scratch_folder.h"
#include "picker/session.h"
#include "picker/set_files.h"

namespace kigou {

enum class ChangeKind { made, added, renamed, moved, removed, put, appended, deleted };

/** What an edit did, for a report. Paths begin with the title of the file that was opened. */
struct Change {
    ChangeKind kind;
    std::string path;
    std::string to{}; /**< renamed: the new path; moved: the same, or empty within its neighbours */
    std::optional<std::size_t> symbols{};       /**< how many went in, were taken away or moved */
    std::optional<std::size_t> before{};        /**< how many the title had */
    std::optional<std::size_t> there_already{}; /**< of those given, how many it had */
    bool above_others = false;                  /**< added because titles below it were */
};

struct EditReport {
    std::string file; /**< file title afterwards */
    bool saved = false, dry_run = false;
    bool as_new_set = false;     /**< the result is a file of its own, under that title */
    std::vector<Change> changes; /**< none: there was nothing to do */
    std::string path;            /**< on disk; empty for a new file */
    std::string backup;          /**< the file as it was; empty when nothing was taken away */
    bool uncovers = false;       /**< deleted: another file of the title shows now */
};

struct EditOptions {
    std::optional<std::string> file; /**< title of the file when a path does not begin with it */
    std::optional<std::string> as;   /**< keep the result under this new title */
    bool dry_run = false;            /**< save nothing */
};

class Edit {
  public:
    /**
     * Takes the lock of the person's own sets, and then looks which symbol files there are. The
     * folder of another set is locked when that is opened, and looked at again.
     * @param may_make_file  make the folder of the person's own sets when it is missing
     * @throws Failure: as FolderLock; refused when options.as is taken or cannot be a title
     */
    Edit(Directories directories, EditOptions options, EditHooks hooks, bool may_make_file = false);

    const SetFiles &sets() const { return sets_; }

    /** Opens the file that a path means and finds the path. @throws Failure */
    const Located &locate(const std::string &path);

    /** Opens a file. @throws Failure (refused) for the standard set without options.as */
    const Located &open(const Title &file);

    /** Makes a new file instead of opening one. @throws Failure (refused) when it is taken */
    void create(const Title &file);

    /** Title of the file that is opened or made. */
    const Title &file() const { return title_; }

    /** What was opened; null for a new file. */
    const Located *located() const { return located_ ? &*located_ : nullptr; }

    /** @throws Failure (refused) when a symbol file bears the title */
    void refuse_taken(const Title &title) const;

    // Edits of what was located. All throw Failure, and then nothing is changed.

    void add(const Title &title);
    void rename(const Title &title);
    void remove();

    /** The same, because it stands elsewhere now. @param to  its path there */
    void remove_moved(const std::string &to);

    /** Replaces the symbols, or adds behind them. @param data  lines of symbols */
    void put(const Sjis &data, bool append);

    /** Replaces the symbols by what one change of them left. @param change  what to report */
    void change(const Sjis &data, Change change);

    /** Adds the symbols that the title lacks. */
    void copy(const std::vector<Sjis> &symbols);

    /**
     * Takes a changed text of the whole file, in the text form, with what was changed in it.
     * @param takes_away  something of the file is not in the text, so a backup is kept
     * @throws Failure: failed, with the lines to mend, when titles or symbols of the text or the
     *         end of the file would be lost in the save
     */
    void replace_text(const Sjis &text, std::vector<Change> changes, bool takes_away = false);

    /**
     * Saves, unless it is a dry run or nothing was changed.
     * @param saved  told of a save, still under the locks; it must not throw
     * @throws Failure: changed when the file on disk is no longer the one that was opened. The
     *         edit stays, and can be saved under another title.
     */
    EditReport finish(const std::function<void(const EditReport &)> &saved = {});

    /** The title for the next finish, instead of options.as. @throws Failure as the constructor */
    void keep_as(const std::string &title);

  private:
    void did(Change change) { changes_.push_back(std::move(change)); }
    Title located_title() const; // and not the file itself
    bool lock_folder_of(const Located &located);
    void open_session();
    void refuse_standard_set() const;
    void refuse_changed() const;
    void refuse_loss(const Sjis &text) const;
    void store(const Title &path, const Sjis &data);
    void save();

    Directories directories_;
    EditOptions options_;
    EditHooks hooks_;
    std::vector<FolderLock> locks_;
    SetFiles sets_;
    std::optional<Located> located_;
    std::optional<ScratchFolder> scratch_; // outlives the session that uses it
    std::optional<Session> session_;
    std::optional<Title> as_;
    Title title_, saved_under_;
    bool new_ = false, takes_away_ = false;
    std::int64_t opened_at_ = 0; /**< nanoseconds since 1970 */
    std::vector<Change> changes_;
};

/**
 * Deletes a symbol file, the first of that title, under the lock; it is kept as a backup.
 * @param look  told of its path before that, under the lock; what it throws keeps the file
 * @throws Failure: nothing_found, or refused for the standard set
 */
EditReport delete_set(const Directories &directories, const Title &title,
                      const EditOptions &options, const EditHooks &hooks,
                      const std::function<void(const std::string &)> &look = {});

/** Whether a title is one that an import gives its working file at first. */
bool is_stand_in(const Title &title);

/** "1 symbol", "4 symbols". */
std::string counted(std::size_t count, const std::string &noun);

} // namespace kigou

#endif
