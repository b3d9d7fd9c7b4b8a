// symbol_format.h - how a line about a symbol is written: -f FORMAT.
#ifndef KIGOU_SYMBOL_FORMAT_H
#define KIGOU_SYMBOL_FORMAT_H

#include <string>
#include <vector>

#include "cli/json.h"
#include "picker/codes.h"

namespace kigou {

/** All that is told of a symbol. */
struct ToldSymbol {
    /** @param paths  full paths of the titles that hold it */
    ToldSymbol(const Sjis &bytes, std::vector<std::string> paths);

    SymbolCodes codes;
    std::string written;       /**< the symbol, or "{8540}" for what is no character */
    std::string name, english; /**< empty where it has none */
    std::vector<std::string> readings, lookalikes, paths;
    std::string code; /**< that it was asked for by, where it may be one of several */
};

/** Keys of json_of(SymbolCodes), and readings, name, english and paths. */
nlohmann::ordered_json json_of(const ToldSymbol &symbol);

/** A format such as "%(symbol) %(kuten)\t%(name)". */
class SymbolFormat {
  public:
    /** @throws Failure (refused) for a field that does not exist, naming those that do */
    explicit SymbolFormat(const std::string &format);

    /** The line, without its end. Control characters in a field become U+FFFD. */
    std::string line(const ToldSymbol &symbol) const;

    /** The fields, for the help. */
    static std::string fields();

  private:
    struct Part {
        std::string text; /**< in front of the field */
        std::string (*field)(const ToldSymbol &) = nullptr;
    };
    std::vector<Part> parts_;
};

} // namespace kigou

#endif
