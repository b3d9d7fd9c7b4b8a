// The one mechanism behind every edit: a changed copy of the index and a new temp file,
// built from pieces of the old text and a few new bytes, installed together at the end.
//
// Life: construct; add and drop records; begin(); any number of pieces, whose failure is
// remembered, and changes of the records; then exactly one install(). A rewrite that is not
// installed, for whatever reason, removes its temp file and leaves the open file, its index and its
// temp file as they were.
#ifndef ACCSYM_SYM_REWRITE_H
#define ACCSYM_SYM_REWRITE_H

#include "record/message.h"
#include "sym/engine.h"
#include "sym/working_state.h"

namespace acc {

class Rewrite {
  public:
    /**
     * Copies the open file's index.
     * @param no_memory  message to leave in the record when there is no memory
     * @param room       records that may be added
     */
    Rewrite(Accdata *record, Message no_memory, unsigned room = 0);
    Rewrite(const Rewrite &) = delete;
    Rewrite &operator=(const Rewrite &) = delete;

    /** False when there was no memory; the message is in the record. */
    explicit operator bool() const { return !failed_; }

    /** The copy's records. */
    std::span<TempInfo> records() const { return state_.records(); }

    /** Makes room for a record at an index; its content is what stood there before. */
    void insert_record(std::size_t index);

    /** Keeps that many records, the first ones. */
    void keep_records(std::size_t count) { state_.set_count(count); }

    /** Creates the new temp file, for the text of as many records as there are now. */
    void begin();

    /** Offset in the new text of what is written next. */
    std::uint32_t offset() const { return new_offset_; }

    /** Copies old text up to an offset. */
    void copy_up_to(std::uint32_t offset) { copy(offset - old_offset_); }

    /** Copies what is left of the old text. */
    void copy_rest();

    /** Moves on in the old text, or back, without copying. */
    void skip_to(std::uint32_t offset) { old_offset_ = offset; }

    /** Copies bytes of the old text. */
    void copy(std::uint32_t bytes);

    /** Writes new bytes. */
    void write(Text bytes);

    /** Writes a title line and a start line. */
    void write_block_head(const unsigned char *title_path);

    /** Writes a hyphen line. */
    void write_hyphen_line();

    /**
     * Holds the new text against the changed records: read as an open would, it must give
     * exactly their blocks. If it does not, the rewrite has failed, with message 8.
     */
    void check_blocks();

    /**
     * Makes the new temp file and the changed index the open file's and sets the edit flag.
     * @return 1; 0 with message 1, 8 or that for no memory in the record
     */
    [[nodiscard]] int install();

  private:
    bool seek_old_text();
    void fail_with(Message message) {
        if (!failed_) put_message(record_, message);
        failed_ = true;
    }

    Accdata *record_;
    Message no_memory_;
    WorkingState state_;
    std::uint32_t old_offset_ = 0; // where the old text stands
    std::uint32_t new_offset_ = 0; // bytes of the new text
    bool failed_ = false;
};

} // namespace acc

#endif
