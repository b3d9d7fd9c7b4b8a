// snapshot.h - a symbol file as it was at one moment: its tree and symbols in memory.
//
// It is read with the library's format reader, makes no working file, changes nothing and can
// be shown by several threads. Titles, their order, children and symbols are those that the
// library's lists have, but that no list ends early, no level is too deep, and a child lies
// below its parent, where the library's list has longer names of siblings too.
#ifndef KIGOU_PICKER_SNAPSHOT_H
#define KIGOU_PICKER_SNAPSHOT_H

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "picker/file_bytes.h"
#include "picker/title.h"

namespace kigou {

class Snapshot {
  public:
    /** Reads a symbol file. @throws Failure (failed) when it cannot be read or is none */
    explicit Snapshot(const std::string &path);

    /** The same of a text that is in memory, such as that of a working file. */
    static Snapshot of_text(Sjis text, const std::string &name);

    const std::string &path() const { return path_; }
    const FileIdentity &identity() const { return identity_; }
    Title file() const { return title(0); }

    // Titles go by number: 0 is the file itself, the others follow in file order.

    /** Number of titles, the file's own included. */
    std::size_t size() const { return entries_.size(); }

    /** Full path of a title. */
    std::span<const unsigned char> path_of(std::size_t number) const;
    Title title(std::size_t number) const { return title_of(path_of(number)); }

    /** 1 for the file itself, 2 for a title of the first level. */
    std::size_t level(std::size_t number) const { return entries_[number].level; }

    /** The title of a full path; of several the first. */
    std::optional<std::size_t> find(std::span<const unsigned char> full_path) const;

    /** Titles directly below a title, in file order; one that stands twice is there twice. */
    const std::vector<std::size_t> &children(std::size_t number) const {
        return entries_[number].children;
    }

    /** All that lies below a title, in file order. */
    std::vector<std::size_t> below(std::size_t number) const;

    std::size_t symbol_count(std::size_t number) const { return entries_[number].symbols; }

    /** Data of a title: its symbols, and CR LF between lines; none for the file itself. */
    std::span<const unsigned char> data(std::size_t number) const;

    /** Offset in the text behind a title's block; for the file itself behind its name line. */
    std::size_t end(std::size_t number) const { return entries_[number].end; }

    /** The text form, a last block that is cut short completed. */
    const Sjis &text() const { return text_; }

  private:
    Snapshot() = default;
    void parse();

    struct Entry {
        Sjis path;
        std::size_t level, data, data_bytes, symbols, end;
        std::vector<std::size_t> children;
    };

    std::optional<std::span<const unsigned char>> parent_in_file(
        std::span<const unsigned char> path) const;

    std::string path_;
    FileIdentity identity_;
    Sjis text_;
    std::vector<Entry> entries_;
    std::unordered_map<std::string, std::size_t> first_; /**< by the bytes of a full path */
};

} // namespace kigou

#endif
