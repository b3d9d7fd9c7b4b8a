#include "support/host.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/text.h"

namespace {

constexpr std::size_t canary_bytes = 64;
constexpr unsigned char canary = 0xA5;

} // namespace

unsigned char *Host::Buffer::make(std::size_t size) {
    bytes.assign(size + canary_bytes, canary); // whatever a host left there before
    bytes[0] = 0;
    return bytes.data();
}

bool Host::Buffer::intact() const {
    return std::all_of(bytes.end() - canary_bytes, bytes.end(), [](unsigned char byte) { return byte == canary; });
}

Host::Host() : buffers_(4 + 5 * ACC_LISTBOX_MAX) {
    auto buffer = buffers_.begin();
    const auto make = [&](std::size_t size) { return (buffer++)->make(size); };
    record.lpchResult = make(ACC_SIZE_RESULT);
    record.lpchDisplay = make(ACC_SIZE_DISPLAY);
    record.lpchMessage = make(ACC_SIZE_MESSAGE);
    record.lpchStatus = make(ACC_SIZE_MESSAGE);
    for (ListBox &list : record.tListBox) {
        list.lpchLBTitle = make(64);
        list.lpchLBLevel = make(ACC_SIZE_LB_LEVEL);
        list.lpchLBList = make(ACC_SIZE_LB_LIST);
        list.lpchLBListInfo = make(ACC_SIZE_LB_LISTINFO);
        list.lpchLBItemInfo = make(ACC_SIZE_LB_ITEMINFO);
    }
    for (int number = 1; number <= 5; ++number) string(number, "");
}

Host::Host(const Workspace &workspace) : Host() {
    string(2, workspace.user);
    string(3, workspace.program);
    string(4, workspace.common);
}

Host::~Host() {
    run(ACC_VKEY_FILE_CLOSE);
    SYM_SetBlockLength(9); // the geometry would outlive the record
    SYM_SetHeaderLength(4);
    SYM_SetItemLength(64);
}

unsigned char *&Host::field(int number) {
    unsigned char **const fields[] = {&record.lpchString1, &record.lpchString2, &record.lpchString3, &record.lpchString4,
                                      &record.lpchString5};
    return *fields[number - 1];
}

void Host::string(int number, const std::string &bytes) {
    strings_[number - 1] = bytes;
    field(number) = reinterpret_cast<unsigned char *>(strings_[number - 1].data());
}

void Host::null_string(int number) {
    field(number) = nullptr;
}

int Host::run(int command) {
    record.wVkey = static_cast<unsigned short>(command);
    const int result = AccSym(&record);
    for (std::size_t i = 0; i < buffers_.size(); ++i) {
        EXPECT_TRUE(buffers_[i].intact()) << "command " << command << " wrote past buffer " << i;
    }
    return result;
}

int Host::open(const std::string &utf8_title) {
    string(1, to_sjis(utf8_title));
    return run(ACC_VKEY_FILE_OPEN);
}

int Host::position(const std::string &utf8_path) {
    string(1, to_sjis(utf8_path));
    return run(ACC_VKEY_SET_POSITION);
}

int Host::geometry(int items_per_page, int header, int item_length, const std::string &utf8_caption) {
    const std::string kept[] = {strings_[1], strings_[2], strings_[3]};
    string(1, to_sjis(utf8_caption));
    const int values[] = {items_per_page, header, item_length};
    for (int i = 0; i < 3; ++i) {
        string(i + 2, {static_cast<char>(values[i] >> 8), static_cast<char>(values[i] & 0xFF)});
    }
    const int result = run(ACC_VKEY_SET_ATTRIBUTE);
    for (int i = 0; i < 3; ++i) string(i + 2, kept[i]);
    return result;
}

std::string Host::message() const {
    EXPECT_EQ(text(record.lpchMessage).size(), record.cchMessage);
    return to_utf8(text(record.lpchMessage));
}

std::string Host::shown(int number) const {
    const ListBox &list = record.tListBox[number - 1];
    std::string result;
    const unsigned char *item = list.lpchLBList;
    for (int i = 0; i < list.cchLBItemTotal; ++i) {
        const std::string bytes = text(item);
        if (i > 0) result += ' ';
        result += to_utf8(bytes) + '<' + static_cast<char>('0' + list.lpchLBListInfo[i]) + '>';
        item += bytes.size() + 1;
        if (item < list.lpchLBList + list.cchLBListLen && *item == 0) ++item;
    }
    EXPECT_EQ(item - list.lpchLBList, list.cchLBListLen);
    return result;
}

std::string Host::displayed() const {
    std::string result;
    const unsigned char *at = record.lpchDisplay;
    while (at < record.lpchDisplay + record.cchDisplay) {
        const std::string bytes = text(at);
        result += to_utf8(bytes) + '|';
        at += bytes.size() + 1;
    }
    EXPECT_EQ(at - record.lpchDisplay, record.cchDisplay);
    EXPECT_EQ(*at, 0);
    return result;
}

std::string Host::codes(int number) const {
    const unsigned char *info = record.tListBox[number - 1].lpchLBItemInfo;
    return text(info) + ' ' + text(info + 5) + ' ' + text(info + 10);
}
