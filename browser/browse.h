// browse.h - the full-screen browser: the one thing that the command line asks of it.
#ifndef KIGOU_BROWSER_BROWSE_H
#define KIGOU_BROWSER_BROWSE_H

#include <string>
#include <vector>

#include "browser/browse_start.h"
#include "picker/picking/shelf.h"

namespace kigou {

/**
 * Runs until the person has taken symbols or leaves.
 * @param terminal  descriptor to read from and draw on
 * @return          what was taken, in its order; none when the person left with nothing
 * @throws Failure: refused for a terminal that cannot be drawn on; failed when it is gone;
 *         interrupted when a signal asked to end
 */
std::vector<Sjis> browse(Shelf &shelf, int terminal, const BrowseStart &start);

} // namespace kigou

#endif
