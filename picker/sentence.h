// sentence.h - what the core says to people, in their language where a front end has it.
#ifndef KIGOU_PICKER_SENTENCE_H
#define KIGOU_PICKER_SENTENCE_H

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace kigou {

/** Gives the text of a person's language for an English one, or that one itself. */
using Translator = const char *(*)(const char *);

/** Without one all is English. Set it before anything else is done: any thread may say something.
    What it gives must stay. */
void translate_sentences(Translator translator);

/**
 * A whole sentence in English. Each part has its place, {1}, {2} and so on, once: an order that is
 * made of pieces fits no other language.
 */
template <std::size_t Parts>
struct Wording {
    static_assert(Parts < 10);

    consteval Wording(const char *english) : text(english) {
        const std::string_view whole = text;
        bool all = std::ranges::count(whole, '{') == Parts;
        for (std::size_t part = 1; part <= Parts; ++part) {
            const char place[] = {'{', static_cast<char>('0' + part), '}'};
            all = all && whole.find(std::string_view(place, 3)) != std::string_view::npos;
        }
        if (!all) throw "the places are not those of the parts";
    }

    const char *text;
};

/** The translated text with the parts in their places. Braces in a part stay what they are. */
std::string filled(const char *english, std::initializer_list<std::string_view> parts);

/**
 * Says something. The text must stand here, as a literal: the check of the translations reads it
 * out of the sources.
 */
template <typename... Parts>
std::string sentence(Wording<sizeof...(Parts)> wording, const Parts &...parts) {
    return filled(wording.text, {parts...});
}

} // namespace kigou

#endif
