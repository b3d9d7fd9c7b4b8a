#include "fuzz/rough_sender.h"

#include <algorithm>

#include "fuzz/walk_log.h"

namespace {

// Opens, edits and saves come often.
constexpr struct {
    int command, weight;
} weights[] = {{ACC_VKEY_FILE_OPEN, 5},    {ACC_VKEY_FILE_CLOSE, 2},   {ACC_VKEY_FILE_NEW, 1},
               {ACC_VKEY_FILE_SAVE, 5},    {ACC_VKEY_FILE_DELETE, 1},  {ACC_VKEY_FILE_CHECK, 1},
               {ACC_VKEY_FILE_TITLES, 1},  {ACC_VKEY_FILE_CONVERT, 2}, {ACC_VKEY_TITLE_ADD, 3},
               {ACC_VKEY_TITLE_CHANGE, 3}, {ACC_VKEY_TITLE_DELETE, 1}, {ACC_VKEY_DATA_REGISTER, 3},
               {ACC_VKEY_SET_POSITION, 4}, {ACC_VKEY_RIGHT_ITEM, 2},   {ACC_VKEY_LEFT_ITEM, 1},
               {ACC_VKEY_NEXT_ITEM, 2},    {ACC_VKEY_BEFORE_ITEM, 1},  {ACC_VKEY_NEXT_BLOCK, 1},
               {ACC_VKEY_BEFORE_BLOCK, 1}, {ACC_VKEY_DECISION, 2},     {ACC_VKEY_GET_INFO, 2},
               {ACC_VKEY_TREE_TITLES, 1},  {ACC_VKEY_GET_EDIT, 1},     {ACC_VKEY_SET_ATTRIBUTE, 1}};

/** Every command as often as it weighs. */
const std::vector<int> weighted_commands = [] {
    std::vector<int> commands;
    for (const auto &[command, weight] : weights) {
        commands.insert(commands.end(), static_cast<std::size_t>(weight), command);
    }
    return commands;
}();

constexpr unsigned short odd_numbers[] = {0,  1,  2,  3,   4,    5,     8,     9,    10,
                                          11, 20, 32, 300, 9000, 65533, 65534, 65535};

} // namespace

/** Mostly one that a file has. */
std::string RoughSender::file_title(const Seen &seen) {
    if (seen.open && choice_.one_in(3)) return text(seen.open->records[0].ucTitle);
    if (!listed.empty() && choice_.one_in(2)) return choice_.of(listed);
    if (!folders_.titles.empty() && !choice_.one_in(6)) return choice_.of(folders_.titles);
    return choice_.one_in(2) ? files_.new_title() : text_form(files_.file_title());
}

/** Mostly one that the open file has. */
std::string RoughSender::path(const Seen &seen) {
    std::string path = seen.open ? text(choice_.of(seen.open->records).ucPath) : file_title(seen);
    if (choice_.one_in(12)) path += "\x81\x5E" + files_.new_title();
    if (choice_.one_in(20)) path.resize(choice_.below(path.size() + 1));
    if (choice_.one_in(40)) path = std::string(510 + choice_.below(8), 'x');
    return path;
}

std::string RoughSender::operand(int command, const Seen &seen) {
    static const std::string old_files[] = {"old.ini",      "old.ini",      "two.INI",
                                            "sub\\old.ini", "pipe.ini",     "folder.ini",
                                            "none.ini",     "work/old.ini", "./old.ini"};
    switch (command) {
        case ACC_VKEY_FILE_OPEN:
        case ACC_VKEY_FILE_SAVE:
        case ACC_VKEY_FILE_NEW:
        case ACC_VKEY_FILE_DELETE:
        case ACC_VKEY_FILE_CHECK:
            return file_title(seen);
        case ACC_VKEY_SET_POSITION:
            return path(seen);
        case ACC_VKEY_TITLE_ADD:
        case ACC_VKEY_TITLE_CHANGE:
            if (seen.open && choice_.one_in(6)) return text(choice_.of(seen.open->records).ucTitle);
            return files_.new_title();
        case ACC_VKEY_DATA_REGISTER:
            return files_.new_data();
        case ACC_VKEY_FILE_CONVERT:
            return choice_.of(old_files);
        default:
            return files_.new_title();
    }
}

Sent RoughSender::with_directories(int command, const std::string &string1) const {
    return {command, {string1, folders_.user, folders_.program, folders_.common}};
}

Sent RoughSender::next(const Seen &seen) {
    int command = choice_.of(weighted_commands);
    if (!seen.open && choice_.one_in(2)) command = ACC_VKEY_FILE_OPEN;
    if (seen.open && seen.list == 1 && choice_.one_in(4)) command = ACC_VKEY_SET_POSITION;
    if (choice_.one_in(100)) command = static_cast<int>(choice_.below(65536));
    Sent sent = with_directories(command, operand(command, seen).c_str());
    auto &strings = sent.strings;
    if (command == ACC_VKEY_SET_ATTRIBUTE) {
        strings[0]->resize(std::min(strings[0]->size(), CanaryHost::caption_bytes - 1));
        const auto number = [this](unsigned usual) {
            return CanaryHost::two_bytes(choice_.one_in(2) ? usual : choice_.of(odd_numbers));
        };
        strings[1] = number(9);
        strings[2] = number(4);
        strings[3] = number(64);
    } else if (choice_.one_in(4)) {
        *strings[2] += "/";
        *strings[3] += "/";
    } else if (choice_.one_in(20)) {
        strings[1] = choice_.one_in(2) ? "" : std::string(1023, 'x'); // what an open refuses
    }
    if (choice_.one_in(60)) strings[choice_.below(4)].reset();
    return sent;
}

std::string RoughSender::disturb(Accdata &record, const Seen &seen) {
    ListBox &list = record.tListBox[choice_.below(ACC_LISTBOX_MAX)];
    const std::string name = "list " + std::to_string(&list - record.tListBox + 1);
    const unsigned short number = choice_.of(odd_numbers);
    switch (choice_.below(9)) {
        case 0:
        case 1:
            record.wCurrentList =
                choice_.one_in(8) ? number : static_cast<unsigned short>(1 + choice_.below(10));
            return "current list " + std::to_string(record.wCurrentList);
        case 2:
            list.cchLBItemNum = number;
            return name + " cursor " + std::to_string(number);
        case 3:
            list.cchLBItemPageFirst = number;
            return name + " page first " + std::to_string(number);
        case 4:
            list.cchLBItemNumMax = number;
            return name + " items per page " + std::to_string(number);
        case 5:
            list.cchLBItemHead = number;
            return name + " header " + std::to_string(number);
        case 6: { // a path that is another list's, or none, and perhaps without an end
            std::string level = path(seen) + '\0';
            if (choice_.one_in(4)) level = std::string(ACC_SIZE_LB_LEVEL, 'x');
            level.resize(std::min<std::size_t>(level.size(), ACC_SIZE_LB_LEVEL));
            std::copy(level.begin(), level.end(), list.lpchLBLevel);
            return name + " shows " + printable(level);
        }
        case 7: { // the contents of another list
            const ListBox &from = choice_.of(record.tListBox);
            list.cchLBItemTotal = from.cchLBItemTotal;
            list.cchLBListLen = from.cchLBListLen;
            std::memmove(list.lpchLBList, from.lpchLBList, ACC_SIZE_LB_LIST);
            std::memmove(list.lpchLBListInfo, from.lpchLBListInfo, ACC_SIZE_LB_LISTINFO);
            return name + " as list " + std::to_string(&from - record.tListBox + 1);
        }
        default:
            std::fill_n(record.lpchResult, ACC_SIZE_RESULT, static_cast<unsigned char>(number | 1));
            return "old bytes in the result";
    }
}
