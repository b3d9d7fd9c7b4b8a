// A host of the library: one record with buffers of the documented least sizes, each with
// a canary behind it that every command checks.
#ifndef TESTS_SUPPORT_HOST_H
#define TESTS_SUPPORT_HOST_H

#include <string>
#include <vector>

#include "accsym.h"
#include "support/workspace.h"

class Host {
  public:
    Host();
    explicit Host(const Workspace &workspace);
    ~Host(); // closes what is open, and leaves the default geometry

    Accdata record{};
    ListBox &list(int number) { return record.tListBox[number - 1]; }

    /** Points lpchString<number> at a copy of these bytes, or at nothing. */
    void string(int number, const std::string &bytes);
    void null_string(int number);

    /** Runs a command and fails the test when a byte behind a buffer has changed. */
    int run(int command);

    int open(const std::string &utf8_title);
    int close() { return run(ACC_VKEY_FILE_CLOSE); }
    int position(const std::string &utf8_path);
    int geometry(int items_per_page, int header, int item_length = 64, const std::string &utf8_caption = "");

    /** The message in UTF-8. */
    std::string message() const;

    /** A list's items in UTF-8, header included, as "1: 例／矢印<2>", joined by blanks. */
    std::string shown(int number) const;

    /** The strings of lpchDisplay in UTF-8, each ended by "|". */
    std::string displayed() const;

    /** The three code strings of a list's current symbol, joined by blanks. */
    std::string codes(int number) const;

  private:
    unsigned char *&field(int number);

    struct Buffer {
        std::vector<unsigned char> bytes;
        unsigned char *make(std::size_t size);
        bool intact() const;
    };
    std::vector<Buffer> buffers_;
    std::string strings_[5];
};

#endif
