// set_text.h - the text of a whole symbol file, changed in memory: for changes of many titles
// at once, each of which would rewrite the file if the library made them one by one. What is
// not changed stays byte for byte.
#ifndef KIGOU_PICKER_SET_TEXT_H
#define KIGOU_PICKER_SET_TEXT_H

#include <list>
#include <span>
#include <string>
#include <unordered_map>

#include "picker/snapshot.h"
#include "picker/title.h"

namespace kigou {

class SetText {
  public:
    /** The text of a file. */
    explicit SetText(const Snapshot &snapshot);

    /** The text of a file without titles. */
    explicit SetText(const Title &file);

    /** How many titles there are, the file itself not counted. */
    std::size_t titles() const { return pieces_.size() - 1; }

    /** Whether there is a title of that full path; the file itself is one. */
    bool has(std::span<const unsigned char> path) const;

    /** Data of a title that is there; of several with that path the first. */
    const Sjis &data(std::span<const unsigned char> path) const;
    void set_data(std::span<const unsigned char> path, Sjis data);

    /**
     * Adds a title behind all that lies below its parent, as the library does.
     * @param path  full path, of which the parent is there; of two that are the same the first
     * counts
     */
    void add(const Title &parent, std::span<const unsigned char> path, Sjis data);

    /** The text form. */
    Sjis text() const;

  private:
    struct Piece {
        Sjis before, data, after;
    };
    using Place = std::list<Piece>::iterator;
    struct Node {
        Place own, last; /**< its block, and the last one of it and of what lies below it */
    };

    void note(std::span<const unsigned char> path, Place place);

    std::size_t file_bytes_;
    std::list<Piece> pieces_; /**< the first one is the head */
    Sjis rest_;               /**< what stands behind the last block */
    std::unordered_map<std::string, Node> nodes_;
};

/** Whether the data of a title is read back as it was written. */
bool reads_back(std::span<const unsigned char> data);

} // namespace kigou

#endif
