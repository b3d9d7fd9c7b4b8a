#include "fuzz/shown_record.h"

#include <algorithm>
#include <vector>

namespace {

/** The items of a list with their headers, as a host walks them. */
std::vector<std::string> items_of(const ListBox &list) {
    walk(list);
    std::vector<std::string> items;
    std::size_t at = 0;
    for (unsigned i = 0; i < list.cchLBItemTotal; ++i) {
        items.push_back(text(list.lpchLBList + at));
        at += items.back().size() + 1;
        if (at < list.cchLBListLen && list.lpchLBList[at] == 0) ++at;
    }
    return items;
}

/** The titles and symbols that a list is to show for a title. */
std::vector<std::string> contents_of(const TempFile &file, const TempInfo &node) {
    const std::string path = text(node.ucPath);
    std::vector<std::string> contents;
    for (const TempInfo &record : file.records) {
        const std::string other = text(record.ucPath);
        const std::size_t common = std::min(path.size(), other.size());
        if (record.usLevel == node.usLevel + 1 && path.compare(0, common, other, 0, common) == 0) {
            contents.push_back(other);
        }
    }
    const std::string data = file.data_of(node);
    for (std::size_t at = 0; at < data.size(); at += 2) {
        if (data.compare(at, 2, "\r\n") != 0) contents.push_back(data.substr(at, 2));
    }
    return contents;
}

/** The current list shows what lies under its path, each item behind a header. */
void check_list(const ListBox &list, const Seen &after, bool cut_short) {
    const auto &records = after.open->records;
    const auto node = std::find_if(records.begin(), records.end(), [&](const TempInfo &one) {
        return text(one.ucPath) == after.shown;
    });
    HOLDS(node != records.end());
    const std::vector<std::string> items = items_of(list);
    const std::vector<std::string> contents = contents_of(*after.open, *node);
    HOLDS(cut_short ? items.size() <= contents.size() : items.size() == contents.size());
    for (std::size_t i = 0; i < items.size(); ++i) HOLDS(items[i].ends_with(contents[i]));
}

bool refills_lists(int command) {
    return is_edit(command) || command == ACC_VKEY_FILE_OPEN || command == ACC_VKEY_FILE_NEW ||
           command == ACC_VKEY_SET_POSITION || command == ACC_VKEY_SET_ATTRIBUTE ||
           command == ACC_VKEY_NEXT_BLOCK || command == ACC_VKEY_BEFORE_BLOCK;
}

} // namespace

void check_shown(const Accdata &record, const Sent &sent, const Seen &after) {
    const bool cut_short = message_number(record) == 9;
    const bool in_range = after.list >= 1 && after.list <= ACC_LISTBOX_MAX;
    const ListBox &list = record.tListBox[in_range ? after.list - 1 : 0];
    if (refills_lists(sent.command) && after.open) check_list(list, after, cut_short);
    switch (sent.command) {
        case ACC_VKEY_FILE_OPEN:
            HOLDS(after.list == 1 && after.shown == text(after.open->records[0].ucTitle));
            for (std::size_t i = 0; i < after.open->records.size(); ++i) {
                HOLDS(after.open->records[i].usBlockNo == i + 1);
                HOLDS(after.open->records[i].usLevel <= ACC_LISTBOX_MAX);
            }
            break;
        case ACC_VKEY_SET_POSITION:
            HOLDS(after.shown == sent.strings[0]);
            break;
        case ACC_VKEY_TREE_TITLES: {
            const std::vector<std::string> paths = displayed(record);
            HOLDS(cut_short || paths.size() == after.open->records.size());
            for (std::size_t i = 0; i < paths.size(); ++i) {
                HOLDS(paths[i] == text(after.open->records[i].ucPath));
            }
            break;
        }
        case ACC_VKEY_FILE_TITLES:
            displayed(record);
            break;
        case ACC_VKEY_DECISION:
            HOLDS(text(record.lpchResult).size() == 2 && record.cchResult == 2);
            break;
        case ACC_VKEY_GET_INFO: {
            const std::size_t kuten_digits = text(list.lpchLBItemInfo + 10).size();
            HOLDS(text(list.lpchLBItemInfo).size() == 4);
            HOLDS(text(list.lpchLBItemInfo + 5).size() == 4);
            HOLDS(kuten_digits == 4 || kuten_digits == 5);
            HOLDS(kuten_digits == 5 || list.lpchLBItemInfo[15] == CanaryHost::old_info);
            break;
        }
        case ACC_VKEY_GET_EDIT:
            HOLDS(after.edited);
            break;
        default:
            break;
    }
}
