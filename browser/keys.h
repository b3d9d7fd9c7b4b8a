// keys.h - what a terminal sends, as keys.
#ifndef KIGOU_BROWSER_KEYS_H
#define KIGOU_BROWSER_KEYS_H

#include <cstddef>
#include <optional>
#include <string>

namespace kigou {

enum class KeyName {
    text, /**< a character, or several that were pasted */
    up,
    down,
    left,
    right,
    page_up,
    page_down,
    home,
    end,
    insert,
    remove,
    enter,
    tab,
    back_tab,
    backspace,
    escape,
    f1,
    f2,
    f3,
    f4,
    f5,
    f6,
    f7,
    f8,
    f9,
    f10,
    f11,
    f12,
    control, /**< a letter with Ctrl; the letter is in text, lower case */
    click,
    wheel_up,
    wheel_down,
    other /**< nothing that is known */
};

struct Key {
    KeyName name = KeyName::other;
    std::string text{}; /**< UTF-8 of text and control; else empty */
    bool alt = false;
    std::size_t row = 0, column = 0; /**< of the mouse, from 0 */
};

/** Takes bytes as they come, and gives keys as they are whole. */
class KeyReader {
  public:
    void take(std::string bytes) { bytes_ += bytes; }

    /**
     * The next key; nothing when no whole one is there.
     * @param waited  nothing more came for a while, so an escape is one by itself
     */
    std::optional<Key> next(bool waited);

    /** What there is to wait for. */
    enum class Rest {
        nothing,
        escape,   /**< one by itself is a key, and soon known as one */
        sequence, /**< the rest of one comes, however slow the line is */
        paste     /**< likewise; none of it may be taken for keys */
    };
    Rest rest() const;

  private:
    std::optional<Key> sequence(std::size_t begin, std::size_t &end) const;
    std::optional<Key> key_at(std::size_t begin, std::size_t &end, bool waited) const;

    std::string bytes_;
};

/** A character as a command: full-width letters, digits and blanks as those of ASCII. */
std::string as_command(const std::string &text);

} // namespace kigou

#endif
