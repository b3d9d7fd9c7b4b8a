// Symbol files, old-format files, titles and data, from well-formed to anything but.
#ifndef FUZZ_ODD_FILES_H
#define FUZZ_ODD_FILES_H

#include <string>
#include <string_view>
#include <vector>

#include "fuzz/choice.h"

/** The text form (Shift_JIS, CR LF) of bytes in the disk form, as the library reads them. */
std::string text_form(const std::string &disk);

class OddFiles {
  public:
    explicit OddFiles(Choice &choice) : choice_(choice) {}

    /** A file title in the disk form; few of them, so that files share one. */
    std::string file_title();

    /** A symbol file in the disk form. */
    std::string symbol_file(const std::string &title);

    /** An old-format file, Shift_JIS. */
    std::string old_file();

    /** A title as an edit takes it, Shift_JIS; mostly one that it accepts. */
    std::string new_title();

    /** Symbols as an edit takes them, Shift_JIS; mostly some that it accepts. */
    std::string new_data();

    /** Any bytes. */
    std::string noise(std::size_t most);

  private:
    bool odd() { return choice_.below(100) < odd_percent_; }
    std::string title();
    std::string next_path();
    std::string line_end();
    std::string hyphens();
    std::string symbols(std::size_t count);
    std::string data();
    std::string head(const std::string &title);
    std::string block();
    void damage(std::string &bytes);

    Choice &choice_;
    std::size_t odd_percent_ = 0;   // how often a piece of the file in the making is odd
    std::vector<std::string> path_; // titles of the block written last, the top level's first
};

#endif
