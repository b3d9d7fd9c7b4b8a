// word_list.h - several words as one text.
#ifndef KIGOU_PICKER_WORD_LIST_H
#define KIGOU_PICKER_WORD_LIST_H

#include <string>
#include <vector>

namespace kigou {

/** The words with a comma and a blank between, or what a translation has there. */
std::string word_list(const std::vector<std::string> &words);

} // namespace kigou

#endif
