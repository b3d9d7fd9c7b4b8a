// symbol_places.h - which titles of which sets hold a symbol.
#ifndef KIGOU_PICKER_SYMBOL_PLACES_H
#define KIGOU_PICKER_SYMBOL_PLACES_H

#include <string>
#include <vector>

#include "picker/set_files.h"

namespace kigou {

struct SymbolPlaces {
    /** For each symbol that was asked for: full paths of the titles that hold it, UTF-8. */
    std::vector<std::vector<std::string>> paths;

    /** Sets that could not be searched, and why. */
    std::vector<SpoiltFile> not_searched;
};

/**
 * Looks through sets in time that grows with their bytes. Of files with the same title the
 * first is searched, as it hides the others.
 * @param symbols  two bytes each
 */
SymbolPlaces places_of(const std::vector<Sjis> &symbols, const std::vector<SetFile> &sets);

} // namespace kigou

#endif
