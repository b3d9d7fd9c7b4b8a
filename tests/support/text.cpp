#include "tests/support/text.h"

#include <iconv.h>

#include <stdexcept>

namespace {

std::string convert(const char *to, const char *from, const std::string &input) {
    iconv_t codec = iconv_open(to, from);
    if (codec == reinterpret_cast<iconv_t>(-1)) throw std::runtime_error("no codec");
    std::string output(input.size() * 4 + 4, '\0');
    char *in = const_cast<char *>(input.data());
    char *out = output.data();
    std::size_t in_left = input.size(), out_left = output.size();
    const std::size_t result = iconv(codec, &in, &in_left, &out, &out_left);
    iconv_close(codec);
    if (result == static_cast<std::size_t>(-1)) throw std::runtime_error("not convertible: " + input);
    output.resize(output.size() - out_left);
    return output;
}

} // namespace

std::string to_sjis(const std::string &utf8) {
    return convert("CP932", "UTF-8", utf8);
}
std::string to_euc(const std::string &utf8) {
    return convert("EUC-JP", "UTF-8", utf8);
}
std::string to_utf8(const std::string &sjis) {
    return convert("UTF-8", "CP932", sjis);
}
