// utf8_locale.h - whether the terminal is one that shows UTF-8, as far as the locale tells.
#ifndef KIGOU_UTF8_LOCALE_H
#define KIGOU_UTF8_LOCALE_H

namespace kigou {

/**
 * A name that says UTF-8 is believed, also when the system has no such locale. The locale of the
 * process stays as it is.
 * @throws Failure (refused) for a locale of another character set, naming the variable that says so
 */
void require_utf8_locale();

} // namespace kigou

#endif
