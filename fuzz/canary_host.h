// A host whose every buffer has the documented least size and a canary behind it, which
// each command checks. What a host hands in lies in blocks that are exactly as long and are
// gone after the command, so that an address sanitizer sees a byte too many, and later use.
#ifndef FUZZ_CANARY_HOST_H
#define FUZZ_CANARY_HOST_H

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "accsym.h"
#include "fuzz/choice.h"
#include "fuzz/holds.h"

#if defined(__SANITIZE_ADDRESS__)
#define FUZZ_POISONS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define FUZZ_POISONS 1
#endif
#endif
#ifdef FUZZ_POISONS
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size) static_cast<void>(address)
#define ASAN_UNPOISON_MEMORY_REGION(address, size) static_cast<void>(address)
#endif

class CanaryHost {
  public:
    /** What one command reads, bytes and a NUL or null, lpchString1 first. */
    using Strings = std::array<std::optional<std::string>, 4>;

    /** Bytes of a caption, its NUL included; every second list has none. */
    static constexpr std::size_t caption_bytes = 40;

    /** What the last byte of every lpchLBItemInfo holds before a command. */
    static constexpr unsigned char old_info = 0xB7;

    /** The directories that run() hands over. */
    CanaryHost(std::string user, std::string program, std::string common)
        : directories_{std::move(user), std::move(program), std::move(common)} {
        record.lpchResult = take(ACC_SIZE_RESULT);
        record.lpchDisplay = take(ACC_SIZE_DISPLAY);
        record.lpchMessage = take(ACC_SIZE_MESSAGE);
        record.lpchStatus = take(0);
        for (ListBox &list : record.tListBox) {
            if ((&list - record.tListBox) % 2 == 0) list.lpchLBTitle = take(caption_bytes);
            list.lpchLBLevel = take(ACC_SIZE_LB_LEVEL);
            list.lpchLBList = take(ACC_SIZE_LB_LIST);
            list.lpchLBListInfo = take(ACC_SIZE_LB_LISTINFO);
            list.lpchLBItemInfo = take(ACC_SIZE_LB_ITEMINFO);
        }
    }

    /** The same with one directory for all three. */
    explicit CanaryHost(const std::string &directory)
        : CanaryHost(directory, directory, directory) {}

    CanaryHost(const CanaryHost &) = delete;
    CanaryHost &operator=(const CanaryHost &) = delete;
    ~CanaryHost() {
        for (std::size_t i = 0; i < taken_; ++i) {
            ASAN_UNPOISON_MEMORY_REGION(buffers_[i].end, canary_bytes);
            delete[] buffers_[i].begin;
        }
    }

    Accdata record{};
    ListBox &current() { return record.tListBox[record.wCurrentList - 1]; }

    /** Fills every buffer with what something else left there, hardly a NUL among it. */
    void soil(Choice &choice) {
        for (std::size_t i = 0; i < taken_; ++i) {
            unsigned char *byte = buffers_[i].begin;
            for (int k = 0; k < 600 && byte < buffers_[i].end; ++k) *byte++ = odd_byte(choice);
            std::fill(byte, buffers_[i].end, odd_byte(choice));
        }
    }

    /** Runs a command with what the string fields point to at the moment. */
    int run(int command) {
        for (ListBox &list : record.tListBox) list.lpchLBItemInfo[15] = old_info;
        record.wVkey = static_cast<unsigned short>(command);
        const int result = AccSym(&record);
        for (std::size_t i = 0; i < taken_; ++i) {
            unsigned char *const end = buffers_[i].end;
            ASAN_UNPOISON_MEMORY_REGION(end, canary_bytes);
            HOLDS(std::all_of(end, end + canary_bytes,
                              [](unsigned char byte) { return byte == canary; }));
            ASAN_POISON_MEMORY_REGION(end, canary_bytes);
        }
        return result;
    }

    /** Runs a command with these strings, which are gone afterwards. */
    int run(int command, const Strings &strings) {
        unsigned char **const fields[] = {&record.lpchString1, &record.lpchString2,
                                          &record.lpchString3, &record.lpchString4};
        std::unique_ptr<unsigned char[]> copies[4];
        for (std::size_t i = 0; i < 4; ++i) {
            if (strings[i]) {
                copies[i].reset(new unsigned char[strings[i]->size() + 1]());
                std::copy(strings[i]->begin(), strings[i]->end(), copies[i].get());
            }
            *fields[i] = copies[i].get();
        }
        const int result = run(command);
        for (unsigned char **field : fields) *field = nullptr;
        return result;
    }

    int run(int command, std::string string1) {
        return run(command,
                   {std::move(string1), directories_[0], directories_[1], directories_[2]});
    }

    /** The three numbers of the set-attribute command. */
    int set_attribute(unsigned items_per_page, unsigned header, unsigned item_length,
                      const std::string &caption = "") {
        return run(ACC_VKEY_SET_ATTRIBUTE,
                   {caption, two_bytes(items_per_page), two_bytes(header), two_bytes(item_length)});
    }

    /** A number as the set-attribute command reads it. */
    static std::string two_bytes(unsigned number) {
        return {static_cast<char>(number >> 8), static_cast<char>(number)};
    }

  private:
    static constexpr std::size_t canary_bytes = 32;
    static constexpr unsigned char canary = 0xA5;

    static unsigned char odd_byte(Choice &choice) {
        return static_cast<unsigned char>(choice.one_in(500) ? 0 : 1 + choice.below(255));
    }

    unsigned char *take(std::size_t size) {
        unsigned char *const buffer = new unsigned char[size + canary_bytes];
        std::fill_n(buffer, size + canary_bytes, canary);
        if (size > 0) buffer[0] = 0;
        buffers_[taken_++] = {buffer, buffer + size};
        ASAN_POISON_MEMORY_REGION(buffer + size, canary_bytes);
        return buffer;
    }

    struct Buffer {
        unsigned char *begin, *end;
    };
    std::string directories_[3];
    std::array<Buffer, 4 + 5 * ACC_LISTBOX_MAX> buffers_{};
    std::size_t taken_ = 0;
};

#endif
