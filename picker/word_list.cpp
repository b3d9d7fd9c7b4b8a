// word_list.cpp - see word_list.h.
#include "picker/word_list.h"

namespace kigou {

std::string word_list(const std::vector<std::string> &words) {
    std::string text;
    for (const std::string &word : words) text += (text.empty() ? "" : ", ") + word;
    return text;
}

} // namespace kigou
