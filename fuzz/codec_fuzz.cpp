// The input as text of each code, through every conversion, between buffers that are not a
// byte larger than they must be.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "common/acccom.h"
#include "fuzz/holds.h"

namespace {

using Bytes = std::vector<unsigned char>;

/** Heap copy of exactly these bytes, so that a sanitizer sees a read behind them. */
std::unique_ptr<unsigned char[]> exactly(const Bytes &bytes) {
    std::unique_ptr<unsigned char[]> copy(new unsigned char[bytes.size()]);
    std::copy(bytes.begin(), bytes.end(), copy.get());
    return copy;
}

/** One of the EUC-JP/Shift_JIS conversions; input without its NUL. */
Bytes converted(unsigned char *(*convert)(const unsigned char *), Bytes input) {
    const std::size_t input_bytes = input.size();
    input.push_back(0);
    unsigned char *const output = convert(exactly(input).get());
    HOLDS(output != nullptr);
    const std::size_t output_bytes = std::strlen(reinterpret_cast<char *>(output));
    HOLDS(output_bytes <= 2 * input_bytes);
    Bytes result(output, output + output_bytes);
    CM_free(output);
    return result;
}

using Units = short (*)(unsigned char *, unsigned short, const unsigned char *, unsigned short);

/** One of the Unicode conversions; what it wrote, without the NUL. */
template <typename Convert>
Bytes converted_units(Convert convert, const Bytes &input) {
    const std::size_t even = (input.size() + 1) / 2 * 2;
    constexpr unsigned char untouched = 0xA5;
    Bytes output(even + 1, untouched);
    const auto target = exactly(output);
    const auto consumed = convert(target.get(), static_cast<unsigned short>(even + 1),
                                  exactly(input).get(), static_cast<unsigned short>(input.size()));
    HOLDS(static_cast<std::size_t>(consumed) == even);
    // The NUL is the last byte written: the one before what is still untouched.
    std::size_t end = even + 1;
    while (end > 0 && target[end - 1] == untouched) --end;
    HOLDS(end % 2 == 1 && target[end - 1] == 0);
    return {target.get(), target.get() + end - 1};
}

bool is_lead(unsigned char byte) {
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xEF);
}

bool is_trail(unsigned char byte) {
    return byte >= 0x40 && byte <= 0xFC && byte != 0x7F;
}

struct Sjis {
    Bytes text;         // what of the input reads as Shift_JIS: characters, kana, ASCII, line ends
    Bytes double_bytes; // the double-byte characters of it
};

Sjis well_formed(const Bytes &input) {
    Sjis result;
    for (std::size_t i = 0; i < input.size(); ++i) {
        const unsigned char byte = input[i];
        if (is_lead(byte) && i + 1 < input.size() && is_trail(input[i + 1])) {
            for (Bytes *to : {&result.text, &result.double_bytes}) {
                to->insert(to->end(), {byte, input[i + 1]});
            }
            ++i;
        } else if (byte == '\n') {
            result.text.insert(result.text.end(), {'\r', '\n'});
        } else if ((byte >= 0xA1 && byte <= 0xDF) || (byte >= ' ' && byte < 0x7F)) {
            result.text.push_back(byte);
        }
    }
    return result;
}

void show_codes(const Bytes &input) {
    for (std::size_t i = 0; i + 1 < input.size() && i < 64; ++i) {
        const auto code = static_cast<unsigned short>(input[i] << 8 | input[i + 1]);
        const auto jis = exactly(Bytes(5));
        HOLDS(CM_SjisToJis(code, jis.get()) == 4 && jis[4] == 0);
        const auto kuten = exactly(Bytes(7)); // up to three digits each
        const unsigned digits = static_cast<unsigned>(CM_SjisToKuten(code, kuten.get()));
        HOLDS(digits >= 4 && digits <= 6 && kuten[digits] == 0);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const Bytes input(data, data + std::min<std::size_t>(size, 32766));
    const Bytes text(input.begin(), std::find(input.begin(), input.end(), 0));

    // Whatever comes in: a text comes out.
    converted(CM_euc2sjis, converted(CM_sjis2euc, text));
    converted(CM_sjis2euc, converted(CM_euc2sjis, text));
    converted_units(CM_SjisToUnicode, input);
    converted_units(CM_UnicodeToSjis, input);
    show_codes(input);

    // What was text comes back.
    const Sjis sjis = well_formed(input);
    HOLDS(converted(CM_euc2sjis, converted(CM_sjis2euc, sjis.text)) == sjis.text);
    const Bytes units = converted_units(CM_SjisToUnicode, sjis.double_bytes);
    HOLDS(converted_units(CM_SjisToUnicode, converted_units(CM_UnicodeToSjis, units)) == units);
    return 0;
}
