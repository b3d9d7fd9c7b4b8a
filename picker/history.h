// history.h - undo and redo, for a front end that shows sets for a long time. An undo is an edit
// like any other: under the locks, of the file as it is on disk, saved whole or not at all.
//
// Of each edit the change of the text is kept and not the text. A file that another program or
// another edit has changed since is left alone. There is to be no Edit while a history works, as
// each opens the one file that the library can have open.
#ifndef KIGOU_PICKER_HISTORY_H
#define KIGOU_PICKER_HISTORY_H

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "picker/editing.h"

namespace kigou {

/** What an undo or a redo would do, as far as is known without a look at the disk. */
struct HistoryStep {
    std::vector<Change> changes;          /**< of the edit; none for a copy that was kept --as */
    std::vector<std::string> differences; /**< what will not be as it was: lines for people */
    bool loses = false;  /**< something in the file, and not only its name, is among these */
    std::string refusal; /**< why it will fail, as a line for people; empty when it should not */
    bool joined = false; /**< the edit is one with the edit before it */
};

class History {
  public:
    static constexpr std::size_t usual_steps = 200;
    static constexpr std::size_t usual_bytes = 16 << 20;

    /** Keeps so many edits and so many bytes of changes at most; the oldest edits go first. */
    explicit History(Directories directories, std::size_t most_steps = usual_steps,
                     std::size_t most_bytes = usual_bytes)
        : directories_(std::move(directories)), most_steps_(most_steps), most_bytes_(most_bytes) {}

    /**
     * Finishes an edit, of the same directories, and remembers it; what could be redone is
     * forgotten. When the file cannot be read again, all is forgotten.
     * @param joined  for people it is one with the edit before it, so both are undone together
     * @throws Failure as Edit::finish
     */
    EditReport finish(Edit &edit, bool joined = false);

    /** Deletes a symbol file and remembers it. @param look @throws Failure as kigou::delete_set */
    EditReport delete_set(const Title &title, const EditOptions &options, const EditHooks &hooks,
                          const std::function<void(const std::string &)> &look = {});

    /** The step that undo and redo would take; nothing when there is none. */
    std::optional<HistoryStep> to_undo() const;
    std::optional<HistoryStep> to_redo() const;

    /**
     * Takes back the last edit, or makes again the one that was taken back last. When something
     * of the file goes with it, a backup is kept.
     * @return what became of the file, with the changes of the edit as they were
     * @throws Failure: changed when the file is not as the edit left it; refused when there is no
     *         step, or its title is taken by now; else as an edit. Then the step stays.
     */
    EditReport undo(const EditHooks &hooks);
    EditReport redo(const EditHooks &hooks);

    /** Forgets the step that undo, or redo, would take, with those that it is one with. */
    void pass_over(bool redo);

    void clear();

  private:
    /** Knows bytes again. */
    struct Print {
        std::size_t bytes = 0, hash = 0;
        bool operator==(const Print &) const = default;
    };

    /** A file as it was before or after an edit. */
    struct State {
        std::optional<Title> file; /**< nothing: there was no such file */
        std::string path;          /**< where it was then */
        Print disk, text;          /**< of its bytes, and of its text as a save would leave it */
        std::vector<std::string> differences; /**< between it and what a save of its text writes */
        std::string refusal;                  /**< why the library would not take its text */
    };

    struct Seen {
        State state;
        Sjis text; /**< as it is after a save */
    };

    struct Step {
        std::vector<Change> changes;
        State before, after;
        std::size_t begin = 0; /**< of what differs, in either text */
        Sjis removed, inserted;
        std::string refusal; /**< of an undo */
        bool joined = false;

        std::size_t size() const;
    };

    static Print print_of(const Sjis &bytes);
    static Seen seen(const std::string &path);
    static HistoryStep step_to(const Step &step, const State &from, const State &to);
    void note(std::vector<Change> changes, const std::optional<Seen> &before, const Seen &after,
              bool joined);
    EditReport change(const Step &step, const State &from, const State &to, const Sjis &out,
                      const Sjis &in, State &now, const EditHooks &hooks) const;
    void replace(const State &old, const State &now);

    Directories directories_;
    std::size_t most_steps_, most_bytes_;
    std::deque<Step> undo_; /**< the last one is the next to be undone */
    std::deque<Step> redo_; /**< the same */
};

} // namespace kigou

#endif
