// code_range.cpp - see code_range.h.
#include "picker/code_range.h"

#include <algorithm>

#include "picker/codes.h"
#include "picker/failure.h"

namespace kigou {
namespace {

constexpr std::string_view between = "..";
constexpr unsigned most_unicode = 0xFFFF; // no code of Shift_JIS stands for more

[[noreturn]] void refuse(const std::string &text) {
    throw Failure(FailureKind::refused, text,
                  {"a range is 1-1..1-37, 13 (a row), U+2190..U+2199 or one code"});
}

TypedCode end_of(const std::string &range, const std::string &word) {
    std::vector<TypedCode> meanings = meanings_of(word);
    if (meanings.size() != 1 || meanings.front().label.empty()) refuse("what is " + range + "?");
    if (!meanings.front().refusal.empty()) refuse(meanings.front().refusal);
    return std::move(meanings.front());
}

unsigned number(const Sjis &symbol) {
    return symbol.size() == 2 ? code_of(std::span(symbol).first<2>()) : symbol.front();
}

std::vector<Sjis> of_unicode(unsigned first, unsigned last) {
    std::vector<Sjis> codes;
    for (unsigned character = first; character <= std::min(last, most_unicode); ++character) {
        auto symbol = sjis_of(character);
        if (symbol && symbol->size() == 2) codes.push_back(std::move(*symbol));
    }
    return codes;
}

} // namespace

std::vector<Sjis> codes_in(const std::string &range) {
    const auto cut = range.find(between);
    std::string first = range.substr(0, cut);
    std::string last = cut == std::string::npos ? first : range.substr(cut + between.size());
    if (cut == std::string::npos && number_of(range, 10) && range.size() <= 2) {
        first += "-1";
        last += "-94";
    }
    const auto unicode = [](const std::string &word) -> std::optional<unsigned> {
        const bool marked = word.size() > 2 && (word[0] == 'U' || word[0] == 'u') && word[1] == '+';
        return marked ? number_of(std::string_view(word).substr(2), 16) : std::nullopt;
    };
    const auto from = unicode(first), to = unicode(last);
    if (from && to && cut != std::string::npos) {
        if (*from > *to) refuse(range + " ends before it begins");
        return of_unicode(*from, *to);
    }
    const TypedCode begin = end_of(range, first), end = end_of(range, last);
    if (begin.label.substr(0, 2) != end.label.substr(0, 2)) refuse("what is " + range + "?");
    std::vector<Sjis> codes;
    for (unsigned code = number(begin.symbol); code <= number(end.symbol); ++code) {
        codes.push_back(pair_of(static_cast<unsigned short>(code)));
    }
    if (codes.empty() && number(begin.symbol) > number(end.symbol)) {
        refuse(range + " ends before it begins");
    }
    return codes;
}

} // namespace kigou
