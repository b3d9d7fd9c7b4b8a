// index.h - which titles of all sets hold which symbols, in memory, and brought up to date from
// the files themselves. It keeps no file open and makes none.
#ifndef KIGOU_PICKER_SEARCH_INDEX_H
#define KIGOU_PICKER_SEARCH_INDEX_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "picker/set_files.h"

namespace kigou {

/** A title of a set that is in the index; the number holds until the next refresh. */
using TitleNumber = std::uint32_t;

/** A title and what stands under it, until the next refresh. */
struct HeldTitle {
    TitleNumber number;
    std::string_view folded_path;
    std::span<const unsigned short> symbols; /**< in their order; one may stand twice */
};

class SearchIndex {
  public:
    SearchIndex();
    ~SearchIndex();
    SearchIndex(SearchIndex &&other) noexcept;
    SearchIndex &operator=(SearchIndex &&other) noexcept;

    /**
     * Makes it what is on disk now: reads the files that are new or were changed, in time that
     * grows as their bytes, and drops those that are gone. Of files with the same title only the
     * first is in it, as it hides the others.
     */
    void refresh(const SetFiles &sets);

    /**
     * Reads one set before a refresh, which need not read it then; nothing else changes. One that
     * cannot be read is left to the refresh.
     */
    void read_ahead(const SetFile &set);

    /** Sets that could not be read, and why. The others are in it all the same. */
    const std::vector<SpoiltFile> &not_searched() const { return not_searched_; }

    /** Number of titles in all sets; a set's own title is none of them. */
    TitleNumber size() const { return start_.back(); }

    /** Full path of a title, UTF-8. */
    std::string path(TitleNumber title) const;

    /** The same folded for comparing, with "/" between the titles. */
    std::string_view folded_path(TitleNumber title) const;

    /** Whether a title has that full path, in Shift_JIS, or lies below it. */
    bool is_within(TitleNumber title, std::span<const unsigned char> path) const;

    /** Titles that hold a symbol, in the order of the sets and of the titles in them. */
    std::span<const TitleNumber> titles_with(unsigned short code) const;

    /** Gives out the titles whose path holds a text that is folded too, in their order. */
    void titles_holding(std::string_view part,
                        const std::function<void(const HeldTitle &)> &take) const;

    /** All symbols, each once, in the order in which they come in the sets. */
    std::span<const unsigned short> all_symbols() const { return in_order_; }

  private:
    struct File;

    void index_symbols();
    /** The file of a title, and its number there. */
    std::pair<const File *, std::size_t> file_of(TitleNumber title) const;

    std::vector<std::unique_ptr<File>> files_, ahead_;
    std::vector<TitleNumber> start_{0}; /**< of the titles of each file, and behind the last */
    std::vector<std::uint32_t> posted_; /**< for each code where its titles begin, and an end */
    std::vector<TitleNumber> titles_;
    std::vector<unsigned short> in_order_;
    std::vector<SpoiltFile> not_searched_;
};

} // namespace kigou

#endif
