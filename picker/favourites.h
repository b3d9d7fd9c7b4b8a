// favourites.h - the symbols that a person keeps at hand: a symbol file of their own, which they
// may change like any other. Each symbol counts once, in file order, whatever titles there are.
#ifndef KIGOU_PICKER_FAVOURITES_H
#define KIGOU_PICKER_FAVOURITES_H

#include <cstddef>
#include <string_view>
#include <vector>

#include "picker/editing.h"

namespace kigou {

/** File title of the favourites, and the title in it that a new file has. */
inline constexpr std::string_view favourites_title = "お気に入り";
inline constexpr std::string_view favourites_block = "記号";

class Favourites {
  public:
    explicit Favourites(Directories directories) : directories_(std::move(directories)) {}

    /**
     * All of them; none before the first one was added.
     * @throws Failure, with advice, for a file that is there and cannot be read
     */
    std::vector<Sjis> read() const;

    /** Whether a symbol is one. It reads the file: for many symbols read it once. */
    bool has(const Sjis &symbol) const;

    // Each of these is an edit, which waits for others and makes the backups of one: what they
    // throw and return is what Edit::finish does. Nothing to do is an edit without changes.

    /**
     * Adds a symbol behind those of the first title, which is made when there is none, as is the
     * file.
     * @throws Failure: refused for what a file cannot keep; failed when a file that cannot be read
     *         may be that of the favourites, of which there is to be one
     */
    EditReport add(const Sjis &symbol, const EditHooks &hooks) const;

    /**
     * The same within an edit that has opened nothing yet.
     * @param edit  of the same directories, that may make a file; its finish is the caller's
     */
    void add(const std::vector<Sjis> &symbols, Edit &edit) const;

    /** Takes a symbol out of every title that has it. */
    EditReport remove(const Sjis &symbol, const EditHooks &hooks) const;

    /**
     * Moves a symbol, into the title of those that it comes to stand between if need be.
     * @param place  among all, from 0; behind the last one is the end
     */
    EditReport move(const Sjis &symbol, std::size_t place, const EditHooks &hooks) const;

  private:
    Directories directories_;
};

} // namespace kigou

#endif
