// The table of messages against the library's own.
#include "picker/library_messages.h"

#include <gtest/gtest.h>

#include "accsym.h"
#include "picker/text.h"

namespace kigou {
namespace {

TEST(messages, every_message_of_the_library_is_known_by_its_text) {
    unsigned char buffer[ACC_SIZE_MESSAGE];
    for (int i = 0; i < static_cast<int>(library_messages.size()); ++i) {
        const std::size_t length = ACC_Sym_SetErrMsgProc(i, buffer);
        const std::string text = to_utf8(std::span(buffer, length));
        EXPECT_EQ(message_number(text), i) << text;
    }
    EXPECT_EQ(message_number(""), std::nullopt);
}

} // namespace
} // namespace kigou
