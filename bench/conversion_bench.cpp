// The conversions of Japanese codes, measured against those of the platform and of ICU.
//
//   conversion_bench [--quick]
#include <iconv.h>
#include <unicode/ucnv.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "bench/ratios.h"
#include "common/acccom.h"

namespace {

using Bytes = std::vector<unsigned char>;

constexpr const char *skk_dictionary = "/usr/share/skk/SKK-JISYO.L";

/** A symbol file: titles, rules, lines of ten symbols. @param katakana  half-width, in 100 */
Bytes symbol_file(std::size_t size, unsigned katakana) {
    std::mt19937 random(1);
    std::string text = "\xA1\xD2\xB5\xAD\xB9\xE6\xA1\xD3\n\xCC\xBE\xBE\xCE=\xCE\xE3\n";
    const std::string rule = std::string(40, '-') + "\n";
    const auto character = [&] {
        if (random() % 100 < katakana)
            return std::string{'\x8E', static_cast<char>(0xB1 + random() % 40)};
        return std::string{static_cast<char>(0xB0 + random() % 32),
                           static_cast<char>(0xA1 + random() % 94)};
    };
    while (text.size() < size) {
        text += "\xA1\xCE";
        for (int i = 0; i < 6; ++i) text += character();
        text += "\xA1\xCF\n" + rule;
        for (int line = 0; line < 3; ++line) {
            for (int i = 0; i < 10; ++i) text += character();
            text += "\n";
        }
        text += rule;
    }
    return {text.begin(), text.end()};
}

Bytes file(const char *path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

Bytes ended(Bytes text) {
    text.push_back(0);
    return text;
}

class Iconv {
  public:
    Iconv(const char *to, const char *from) : handle_(iconv_open(to, from)) {}

    void convert(const Bytes &text, Bytes &output) const {
        char *in = reinterpret_cast<char *>(const_cast<unsigned char *>(text.data()));
        char *out = reinterpret_cast<char *>(output.data());
        std::size_t in_left = text.size(), out_left = output.size();
        while (iconv(handle_, &in, &in_left, &out, &out_left) == static_cast<std::size_t>(-1)) {
            if (in_left == 0 || out_left == 0) std::abort();
            ++in; // one that it lacks
            --in_left;
        }
    }

  private:
    iconv_t handle_;
};

void of_texts(Ratios &ratios) {
    const Iconv to_sjis("SHIFT_JIS", "EUC-JP");
    UErrorCode error = U_ZERO_ERROR;
    UConverter *const euc = ucnv_open("EUC-JP", &error);
    UConverter *const sjis = ucnv_open("Shift_JIS", &error);
    const struct {
        const char *name;
        Bytes text;
        double to_sjis, to_euc;
    } rows[] = {{"1 MB symbol file", symbol_file(1 << 20, 0), 16, 30},
                {"64 MB symbol file", symbol_file(64 << 20, 0), 16, 30},
                {"1 MB, 5 in 100 half-width katakana", symbol_file(1 << 20, 5), 16 * 0.7, 30 * 0.7},
                {"SKK-JISYO.L", file(skk_dictionary), 16, 30}};
    for (const auto &row : rows) {
        if (row.text.empty()) continue;
        const Bytes text = ended(row.text);
        Bytes output(2 * text.size());
        ratios.measure(
            std::string("CM_euc2sjis, ") + row.name, [&] { CM_free(CM_euc2sjis(text.data())); },
            [&] { to_sjis.convert(row.text, output); }, row.to_sjis);
        unsigned char *const other = CM_euc2sjis(text.data());
        const std::size_t length = CM_lstrlen(other);
        ratios.measure(
            std::string("CM_sjis2euc, ") + row.name, [&] { CM_free(CM_sjis2euc(other)); },
            [&] {
                UErrorCode status = U_ZERO_ERROR;
                char *out = reinterpret_cast<char *>(output.data());
                const char *in = reinterpret_cast<const char *>(other);
                UChar pivot[4096], *pivot_source = pivot, *pivot_target = pivot;
                ucnv_convertEx(euc, sjis, &out, out + output.size(), &in, in + length, pivot,
                               &pivot_source, &pivot_target, pivot + 4096, true, true, &status);
                if (U_FAILURE(status)) std::abort();
            },
            row.to_euc);
        CM_free(other);
    }
    for (const auto &[size, wanted] :
         {std::pair<std::size_t, double>{2, 13}, {40, 5.5}, {400, 9}}) {
        Bytes text = symbol_file(size + 200, 0);
        text.erase(text.begin(), text.begin() + 20);
        text.resize(size);
        const Bytes whole = ended(text);
        Bytes output(2 * whole.size());
        ratios.measure(
            "CM_euc2sjis, " + std::to_string(size) + " bytes",
            [&] { CM_free(CM_euc2sjis(whole.data())); }, [&] { to_sjis.convert(text, output); },
            wanted);
    }
    ucnv_close(euc);
    ucnv_close(sjis);
}

void of_characters(Ratios &ratios) {
    const Iconv to_sjis("SHIFT_JIS", "UTF-16BE"), to_unicode("UTF-16BE", "SHIFT_JIS");
    std::mt19937 random(1);
    Bytes sjis;
    while (sjis.size() < 20000) {
        for (const std::uint_fast32_t byte : {0x88 + random() % 8, 0x9F + random() % 94})
            sjis.push_back(static_cast<unsigned char>(byte));
        const bool assigned = sjis[sjis.size() - 2] != 0x88 || sjis.back() >= 0x9F;
        if (!assigned) sjis.resize(sjis.size() - 2);
    }
    Bytes unicode(2 * sjis.size()), output(2 * sjis.size());
    const auto bytes = static_cast<unsigned short>(sjis.size());
    CM_SjisToUnicode(unicode.data(), 0, sjis.data(), bytes);
    unicode.resize(sjis.size());
    ratios.measure(
        "CM_SjisToUnicode, 10,000 characters",
        [&] { CM_SjisToUnicode(output.data(), 0, sjis.data(), bytes); },
        [&] { to_unicode.convert(sjis, output); }, 7);
    ratios.measure(
        "CM_UnicodeToSjis, 10,000 characters",
        [&] { CM_UnicodeToSjis(output.data(), 0, unicode.data(), bytes); },
        [&] { to_sjis.convert(unicode, output); }, 9);
}

} // namespace

int main(int argc, char **argv) {
    Ratios ratios(CLOCK_THREAD_CPUTIME_ID, argc > 1 && std::strcmp(argv[1], "--quick") == 0);
    of_texts(ratios);
    of_characters(ratios);
    return 0;
}
