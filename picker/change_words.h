// change_words.h - what an edit did, in a sentence.
#ifndef KIGOU_PICKER_CHANGE_WORDS_H
#define KIGOU_PICKER_CHANGE_WORDS_H

#include <string>

#include "picker/editing.h"

namespace kigou {

/** "added 4 symbols to 私の記号／矢印". */
std::string sentence_of(const Change &change);

/** All changes of an edit in one sentence, which names the most telling. @param changes  one or
 * more */
std::string sentence_of(const std::vector<Change> &changes);

} // namespace kigou

#endif
