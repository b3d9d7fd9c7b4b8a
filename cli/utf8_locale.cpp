// utf8_locale.cpp - see utf8_locale.h.
#include "cli/utf8_locale.h"

#include <langinfo.h>
#include <locale.h>

#include <cstdlib>
#include <string>
#include <string_view>

#include "picker/failure.h"

namespace kigou {
namespace {

/** What a charset is called, without what names differ in: UTF-8, utf8. */
bool is_utf8(std::string_view charset) {
    std::string letters;
    for (const char character : charset) {
        if (character == '-') continue;
        letters += character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                        : character;
    }
    return letters == "utf8";
}

/** The charset in a name such as ja_JP.UTF-8@modifier. */
std::string_view charset_in(std::string_view name) {
    const auto point = name.find('.');
    if (point == std::string_view::npos) return {};
    name.remove_prefix(point + 1);
    return name.substr(0, name.find('@'));
}

bool has_utf8(const char *name) {
    if (is_utf8(charset_in(name))) return true;
    const locale_t locale = newlocale(LC_CTYPE_MASK, name, nullptr);
    if (!locale) return false;
    const bool utf8 = is_utf8(nl_langinfo_l(CODESET, locale));
    freelocale(locale);
    return utf8;
}

} // namespace

void require_utf8_locale() {
    std::string said = "LC_ALL, LC_CTYPE and LANG are not set";
    for (const char *const variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char *const name = std::getenv(variable);
        if (!name || *name == '\0') continue;
        if (has_utf8(name)) return;
        said = std::string(variable) + "=" + name;
        break;
    }
    throw Failure(FailureKind::refused,
                  "the locale (" + said + ") is not UTF-8, so symbols cannot be shown",
                  {"in a UTF-8 terminal try: LC_ALL=C.UTF-8 kigou"});
}

} // namespace kigou
