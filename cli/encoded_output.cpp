// encoded_output.cpp - see encoded_output.h.
#include "cli/encoded_output.h"

#include <utility>

#include "cli/output.h"

namespace kigou {

EncodedOutput::EncodedOutput(std::ostream &stream, Encoding encoding)
    : stream_(stream), plain_(stream.rdbuf(this)), encoding_(encoding), encoder_(encoding) {}

EncodedOutput::~EncodedOutput() {
    const bool written = write_line();
    stream_.rdbuf(plain_); // which makes it a good stream again
    if (!written) stream_.setstate(std::ios::badbit);
    for (const auto &[line, characters] : encoder_.lacking()) {
        complain("line " + std::to_string(line) + ": not in " + name_of(encoding_) +
                 " and written as codes in braces: " + characters);
    }
}

EncodedOutput::int_type EncodedOutput::overflow(int_type byte) {
    if (traits_type::eq_int_type(byte, traits_type::eof())) return traits_type::not_eof(byte);
    line_ += traits_type::to_char_type(byte);
    if (line_.back() == '\n' && !write_line()) return traits_type::eof();
    return byte;
}

bool EncodedOutput::write_line() {
    const std::string bytes = encoder_.encode(std::exchange(line_, {}));
    const auto size = static_cast<std::streamsize>(bytes.size());
    return plain_->sputn(bytes.data(), size) == size;
}

} // namespace kigou
