// encoded_output.h - the standard output in another encoding.
#ifndef KIGOU_ENCODED_OUTPUT_H
#define KIGOU_ENCODED_OUTPUT_H

#include <ostream>
#include <streambuf>
#include <string>

#include "picker/encoding.h"

namespace kigou {

/** Encodes what is written to a stream, line by line, for as long as it lives. */
class EncodedOutput : private std::streambuf {
  public:
    EncodedOutput(std::ostream &stream, Encoding encoding);

    /** Writes what is left, and names on the error output what the encoding lacks. */
    ~EncodedOutput() override;

    EncodedOutput(const EncodedOutput &) = delete;
    EncodedOutput &operator=(const EncodedOutput &) = delete;

  private:
    int_type overflow(int_type byte) override;
    bool write_line();

    std::ostream &stream_;
    std::streambuf *const plain_;
    const Encoding encoding_;
    TextEncoder encoder_;
    std::string line_;
};

} // namespace kigou

#endif
