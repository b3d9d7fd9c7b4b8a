// session.h - the library as the front ends see it: typed results in UTF-8 and exceptions,
// with the request record and all its buffers inside. It is opened for edits; what is only
// looked at comes from a snapshot.
//
// The library keeps one open file and one list geometry per process and is called by one
// thread, so there is at most one Session at a time.
#ifndef KIGOU_PICKER_SESSION_H
#define KIGOU_PICKER_SESSION_H

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "accdata.h"
#include "picker/directories.h"
#include "picker/failure.h"
#include "picker/mending.h"
#include "picker/title.h"

namespace kigou {

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
                   std::vector<std::string> details = {}, std::vector<Advice> advice = {});

    int result() const { return result_; }
    std::optional<int> message() const { return message_; }

  private:
    int result_;
    std::optional<int> message_;
};

class Session {
  public:
    explicit Session(const Directories &directories);

    /** Closes the open file; its working file is gone then. */
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

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

    /**
     * Makes a new, empty file the open one; it is not on disk until it is saved.
     * @throws LibraryFailure when a file bears the title
     */
    void create(const Title &file);

    // Edits of the open file. Each is in the working file at once and on disk after a
    // save; one that fails changes nothing. All throw LibraryFailure.

    /** Adds an empty title below a title or below the file. */
    void add_title(const Title &parent, const Title &title);

    /** Renames a title or, when the path is the file's title, the file. */
    void rename_title(const Title &path, const Title &title);

    /** Deletes a title with all that lies below it. */
    void delete_title(const Title &path);

    /** Replaces the symbols of a title. @param data  lines of symbols, CR LF behind each */
    void set_data(const Title &path, const Sjis &data);

    /**
     * Saves the open file. A title that no file bears makes a new file in the common
     * directory and becomes the open file's; otherwise that file is replaced, and what it
     * calls itself afterwards is the open file's title.
     */
    void save(const Title &file);

    /** Deletes a symbol file, the first of that title. @throws Failure */
    void delete_file(const Title &file);

    /** Path of the open file on disk; empty for a new one. */
    const std::string &opened() const { return opened_; }

  private:
    struct ListBuffers {
        std::vector<unsigned char> level, list, attributes, item_info;
    };

    void set_string(std::size_t index, std::span<const unsigned char> bytes);
    int run(unsigned short command);
    int open_titled(std::span<const unsigned char> title);
    void show(const Title &path);
    void edit(unsigned short command, const std::string &action);
    [[noreturn]] void fail_to_write(const std::string &action, int result) const;
    void refuse_to_drop_titles(const Title &path, const std::string &action);
    void close();
    std::string message() const;
    bool cut_short() const;
    [[noreturn]] void fail(const std::string &action, int result) const;
    Listing<Title> display_list() const;

    Directories directories_;
    bool open_ = false;
    std::string opened_; /**< path of the open file on disk; empty for a new one */
    std::optional<std::vector<SwallowedTitle>> swallowed_; /**< of that file, once it was asked */
    Accdata record_{};
    std::array<Sjis, 4> strings_;
    std::vector<unsigned char> result_, display_, message_, status_;
    std::array<ListBuffers, ACC_LISTBOX_MAX> lists_;
};

} // namespace kigou

#endif
