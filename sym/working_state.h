// An open file's working state, built aside: a temp file and the index of its text.
//
// Life: create the file, write the text, fill the index, finish(), and install() when nothing
// can fail any more. A state that is not installed removes its temp file and leaves the open
// file as it was.
#ifndef ACCSYM_SYM_WORKING_STATE_H
#define ACCSYM_SYM_WORKING_STATE_H

#include "sym/block_index.h"
#include "sym/temp_file.h"

namespace acc {

class WorkingState {
  public:
    /** Makes room for that many records; those that are there stay. @return false: no memory */
    bool reserve(std::size_t records);

    /** The records: count() of them. */
    std::span<TempInfo> records() const { return {records_.get(), header_.usCount}; }

    /** A record more behind the others, all zero; null without memory. */
    TempInfo *append();

    /** Sets how many records there are, within the room for them. */
    void set_count(std::size_t count) { header_.usCount = static_cast<std::uint16_t>(count); }

    /** Creates the temp file. @return false when that cannot be done */
    bool create_file() { return file_.create(); }
    int handle() const { return file_.handle(); }

    /** Moves to where the text begins behind that many records. @return false on failure */
    bool seek_text() const;

    enum class Finish { done, no_memory, write_failed };

    /** Writes header and records before the text, flushes, and computes the child flags. */
    Finish finish();

    /** Makes all of it the open file's, in place of what was. */
    void install();

  private:
    NewTempFile file_;
    TempIndex header_{};
    HeapBlock<TempInfo> records_;
    std::size_t room_ = 0;
    HeapBlock<unsigned char> child_flags_;
};

} // namespace acc

#endif
