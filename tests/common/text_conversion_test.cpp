// The conversions at every level of vector code against the portable one, which the pairs of
// bytes of codes_test.cpp hold: random and broken texts between two pages that cannot be touched.
#include "common/text_conversion.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>

namespace {

constexpr std::size_t page = 4096, room = 8 * page;

/** Memory with a page before and one behind it that end the program when they are touched. */
class Fenced {
  public:
    Fenced() {
        mprotect(all_, page, PROT_NONE);
        mprotect(all_ + page + room, page, PROT_NONE);
    }
    ~Fenced() { munmap(all_, room + 2 * page); }
    unsigned char *begin() const { return all_ + page; }
    unsigned char *end() const { return all_ + page + room; }

  private:
    unsigned char *const all_ =
        static_cast<unsigned char *>(mmap(nullptr, room + 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
};

/** Bytes that begin, end or change something, in runs of one kind or mixed. */
std::string random_text(std::mt19937 &random, std::size_t length) {
    static constexpr unsigned char telling[] = {0x8E, 0x0A, 0x0D, 0xA1, 0xFE, 0xFF, 0x80, 0x81,
                                                0x9F, 0xA0, 0xDF, 0xE0, 0xFC, 0xFD, 0x7F, 0x01};
    const auto kind = random() % 4, odd = random() % 40;
    std::string text;
    while (text.size() < length) {
        if (random() % 40 < odd) {
            text += static_cast<char>(telling[random() % std::size(telling)]);
        } else if (kind == 0) {
            text += static_cast<char>(1 + random() % 255);
        } else if (kind == 1) {
            text += static_cast<char>(0xA1 + random() % 94);
        } else {
            text += static_cast<char>(kind == 2 ? 0x20 + random() % 0x5F : telling[random() % std::size(telling)]);
        }
    }
    return text.substr(0, length);
}

TEST(TextConversion, every_level_gives_the_same_and_touches_nothing_else) {
    const Fenced in, out, expected;
    std::mt19937 random(1);
    const acc::TextConversions conversions = acc::text_conversions();
    EXPECT_STREQ(conversions.levels[conversions.count - 1].level, "portable");
    for (int round = 0; round < 400000; ++round) {
        const std::size_t length = round % 500 == 0 ? random() % 12000 : random() % 200;
        const std::string text = random_text(random, length);
        const bool at_end = round % 2 == 0; // where the NUL is the last byte that can be read
        unsigned char *const from = at_end ? in.end() - length - 1 : in.begin() + random() % 64 * (random() % 2);
        std::copy(text.begin(), text.end(), from);
        from[length] = 0;
        for (const auto convert : {&acc::TextConversion::euc_to_sjis, &acc::TextConversion::sjis_to_euc}) {
            const unsigned char *const end = (acc::portable_conversion.*convert)(from, length, expected.begin());
            const auto size = static_cast<std::size_t>(end - expected.begin());
            for (std::size_t level = 0; level + 1 < conversions.count; ++level) {
                const acc::TextConversion &one = conversions.levels[level];
                unsigned char *const to = at_end ? out.end() - 2 * length : out.begin();
                std::memset(to, 0xCC, 2 * length);
                ASSERT_EQ((one.*convert)(from, length, to), to + size) << one.level << ' ' << round;
                ASSERT_EQ(std::memcmp(to, expected.begin(), size), 0) << one.level << ' ' << round;
                ASSERT_EQ(std::count(to + size, to + 2 * length, 0xCC), static_cast<std::ptrdiff_t>(2 * length - size))
                    << one.level << ' ' << round;
            }
        }
    }
}

} // namespace
