// word_list.cpp - see word_list.h.
#include "picker/word_list.h"

#include "picker/sentence.h"

namespace kigou {

std::string word_list(const std::vector<std::string> &words) {
    std::string text;
    for (const std::string &word : words) {
        text = text.empty() ? word : sentence("{1}, {2}", text, word);
    }
    return text;
}

} // namespace kigou
