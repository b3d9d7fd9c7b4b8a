// plain.h - the plain mode of the browser: a line for an item, for screen readers and for terminals
// that cannot show columns.
#ifndef KIGOU_BROWSER_PLAIN_H
#define KIGOU_BROWSER_PLAIN_H

#include <string>
#include <vector>

#include "browser/browse_start.h"
#include "picker/picking/shelf.h"

namespace kigou {

/**
 * Runs until the person has taken symbols or leaves. Only lines of text are written, and the
 * terminal stays as it is.
 * @param terminal  descriptor to read from and write to
 * @param greeting  the first line
 * @return          what was taken, in its order; none when the person left with nothing
 * @throws Failure: failed when the terminal is gone; interrupted when a signal asked to end
 */
std::vector<Sjis> browse_plain(Shelf &shelf, int terminal, const BrowseStart &start,
                               const std::string &greeting);

} // namespace kigou

#endif
