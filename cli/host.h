// host.h - the library as the commands of kigou see it: typed results in UTF-8 and
// exceptions, with the request record and all its buffers inside.
//
// The library keeps one open file and one list geometry per process, so there is at
// most one Host at a time.
#ifndef KIGOU_HOST_H
#define KIGOU_HOST_H

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "accdata.h"
#include "cli/directories.h"
#include "cli/failure.h"
#include "cli/text_codec.h"

namespace kigou {

/** File title of the set that comes with the program. */
inline constexpr std::string_view standard_title = "標準の記号";

/** A file title or the full path of a title, as the library has it and decoded. */
struct Title {
    Sjis sjis; /**< names the title to the library, also when it cannot be decoded */
    std::string text;
};

/** A list that the library may have had to end early for want of room. */
template <typename Item>
struct Listing {
    std::vector<Item> items;
    bool cut_short = false;
};

/** What stands directly below a title. */
struct Contents {
    std::vector<Title> titles; /**< full paths */
    std::vector<Sjis> symbols; /**< two bytes each, whatever they are */
    bool cut_short = false;
};

/** A command that the library refused. The message is absent when it gave none. */
class LibraryFailure : public Failure {
  public:
    LibraryFailure(const std::string &action, int result, const std::string &japanese,
                   std::vector<std::string> hints = {});

    int result() const { return result_; }
    std::optional<int> message() const { return message_; }

  private:
    int result_;
    std::optional<int> message_;
};

class Host {
  public:
    explicit Host(const Directories &directories);

    /** Closes the open file; its working file is gone then. */
    ~Host();
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    /** Titles of all symbol files, in the order in which a title is searched for. */
    Listing<Title> file_titles();

    /**
     * Opens a symbol file, closing the one that was open.
     * @throws Failure (nothing found) when no file bears the title; LibraryFailure
     */
    void open(const Title &file);

    /** The file's own title and every full path of the open file, in file order. */
    Listing<Title> tree();

    /**
     * Children and symbols of a title of the open file; the file's own title is one.
     * Of two blocks with the same path the first is meant.
     * @throws Failure (nothing found) when there is no such title; LibraryFailure
     */
    Contents contents(const Title &path);

  private:
    struct ListBuffers {
        std::vector<unsigned char> level, list, attributes, item_info;
    };

    void set_string(std::size_t index, std::span<const unsigned char> bytes);
    int run(unsigned short command);
    int open_titled(std::span<const unsigned char> title);
    void close();
    std::string message() const;
    bool cut_short() const;
    [[noreturn]] void fail(const std::string &action, int result) const;
    Listing<Title> display_list() const;

    Directories directories_;
    bool open_ = false;
    Accdata record_{};
    std::array<Sjis, 4> strings_;
    std::vector<unsigned char> result_, display_, message_, status_;
    std::array<ListBuffers, ACC_LISTBOX_MAX> lists_;
};

} // namespace kigou

#endif
