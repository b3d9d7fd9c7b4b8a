// sentence.cpp - see sentence.h.
#include "picker/sentence.h"

namespace kigou {
namespace {

Translator translator = nullptr;

} // namespace

void translate_sentences(Translator chosen) {
    translator = chosen;
}

std::string filled(const char *english, std::initializer_list<std::string_view> parts) {
    const std::string_view text = translator ? translator(english) : english;
    std::string whole;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool place = text[at] == '{' && at + 2 < text.size() && text[at + 2] == '}';
        const auto part = place ? static_cast<std::size_t>(text[at + 1] - '1') : parts.size();
        if (part < parts.size()) {
            whole += parts.begin()[part];
            at += 2;
        } else {
            whole += text[at];
        }
    }
    return whole;
}

} // namespace kigou
