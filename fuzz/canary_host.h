// A host whose every buffer has the documented least size and a canary behind it, which
// each command checks.
#ifndef FUZZ_CANARY_HOST_H
#define FUZZ_CANARY_HOST_H

#include <algorithm>
#include <array>
#include <string>

#include "accsym.h"
#include "fuzz/holds.h"

class CanaryHost {
  public:
    /** @param directory  user, program and common directory in one */
    explicit CanaryHost(const std::string &directory) : directory_(directory) {
        record.lpchResult = take(ACC_SIZE_RESULT);
        record.lpchDisplay = take(ACC_SIZE_DISPLAY);
        record.lpchMessage = take(ACC_SIZE_MESSAGE);
        record.lpchStatus = take(ACC_SIZE_MESSAGE);
        for (ListBox &list : record.tListBox) {
            list.lpchLBLevel = take(ACC_SIZE_LB_LEVEL);
            list.lpchLBList = take(ACC_SIZE_LB_LIST);
            list.lpchLBListInfo = take(ACC_SIZE_LB_LISTINFO);
            list.lpchLBItemInfo = take(ACC_SIZE_LB_ITEMINFO);
        }
    }
    CanaryHost(const CanaryHost &) = delete;
    CanaryHost &operator=(const CanaryHost &) = delete;

    Accdata record{};
    ListBox &current() { return record.tListBox[record.wCurrentList - 1]; }

    int run(int command) {
        record.wVkey = static_cast<unsigned short>(command);
        const int result = AccSym(&record);
        for (std::size_t i = 0; i < taken_; ++i) {
            HOLDS(std::all_of(ends_[i], ends_[i] + canary_bytes,
                              [](unsigned char byte) { return byte == canary; }));
        }
        return result;
    }

    int run(int command, std::string string1) {
        strings_[0] = std::move(string1);
        for (int i = 1; i < 4; ++i) strings_[i] = directory_;
        return run_with_strings(command);
    }

    /** The three numbers of the set-attribute command. */
    int set_attribute(unsigned items_per_page, unsigned header, unsigned item_length) {
        strings_[0] = "";
        const unsigned values[] = {items_per_page, header, item_length};
        for (int i = 0; i < 3; ++i) {
            strings_[i + 1] = {static_cast<char>(values[i] >> 8), static_cast<char>(values[i])};
        }
        return run_with_strings(ACC_VKEY_SET_ATTRIBUTE);
    }

  private:
    static constexpr std::size_t canary_bytes = 32;
    static constexpr unsigned char canary = 0xA5;

    int run_with_strings(int command) {
        unsigned char **const fields[] = {&record.lpchString1, &record.lpchString2,
                                          &record.lpchString3, &record.lpchString4};
        for (int i = 0; i < 4; ++i) {
            *fields[i] = reinterpret_cast<unsigned char *>(strings_[i].data());
        }
        return run(command);
    }

    unsigned char *take(std::size_t size) {
        unsigned char *const buffer = new unsigned char[size + canary_bytes]; // never freed
        std::fill_n(buffer, size + canary_bytes, canary);
        buffer[0] = 0;
        ends_[taken_++] = buffer + size;
        return buffer;
    }

    std::string directory_;
    std::string strings_[4];
    std::array<unsigned char *, 4 + 4 * ACC_LISTBOX_MAX> ends_{};
    std::size_t taken_ = 0;
};

#endif
