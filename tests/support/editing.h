// A host with one open file that is edited, and what lies in the working temp file.
#ifndef TESTS_SUPPORT_EDITING_H
#define TESTS_SUPPORT_EDITING_H

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/host.h"
#include "sym/temp_index.h"

/** The working temp file taken apart. */
struct Temp {
    TempIndex header;
    std::vector<TempInfo> records;
    std::string text; // Shift_JIS
};

Temp read_temp();

/** Title path and data of every block, UTF-8 path and raw data, in file order. */
using Blocks = std::vector<std::pair<std::string, std::string>>;

/** Takes the blocks from a temp file by its index, having held index and text together. */
Blocks blocks_of(const Temp &temp);

/** A workspace with the file "a.kig" in the common directory, opened. */
class Editing {
  public:
    explicit Editing(const std::string &disk_bytes, const std::string &utf8_title = "例");

    /** Shows a title in its list, and its parent in the list before. */
    void focus(const std::string &utf8_path);

    /** Runs an editing command with this operand on the title in focus. */
    int edit(int command, const std::string &utf8_operand);

    /** Saves under a title. */
    int save(const std::string &utf8_title);

    /** The working text in UTF-8. */
    std::string text() const;

    Workspace ws;
    Host host;
};

/** What a command that is refused or fails must leave alone. Taking it clears the message. */
struct State {
    explicit State(Editing &e);
    bool operator==(const State &) const = default;

    std::string text;                         // of the open file
    std::map<std::string, std::string> files; // of the common directory
    std::vector<std::string> lists;
    int current_list, edited, marks;
};

#endif
