// manual_page.h - a manual page in the language of troff and man.
#ifndef KIGOU_MANUAL_PAGE_H
#define KIGOU_MANUAL_PAGE_H

#include <string>
#include <string_view>

namespace kigou {

// A text as the page shows it, to the letter: what is copied from it can be typed.
std::string escaped(std::string_view text);
std::string bold(std::string_view text);
std::string italic(std::string_view text);

class ManualPage {
  public:
    /** @param name  of the command, which the page is named for */
    ManualPage(const std::string &name, const std::string &summary, const std::string &version);

    void section(std::string_view heading);

    /** A line that is escaped already. */
    void line(const std::string &roff);

    /** Paragraphs with an empty line between them. */
    void text(std::string_view text);

    /** A heading that is escaped already, and a text that stands below it, indented. */
    void item(const std::string &roff_heading, std::string_view text);

    /** A line that is a command, such as PP for a new paragraph. */
    void request(std::string_view name);

    const std::string &roff() const { return roff_; }

  private:
    std::string roff_;
};

} // namespace kigou

#endif
