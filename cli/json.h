// json.h - how kigou writes JSON.
#ifndef KIGOU_JSON_H
#define KIGOU_JSON_H

#include <nlohmann/json.hpp>

#include "picker/codes.h"

/** Made once, in json.cpp. */
extern template class nlohmann::basic_json<nlohmann::ordered_map>;

namespace kigou {

/** Writes one object to the standard output. Bytes that are no UTF-8 become U+FFFD. */
void write(const nlohmann::ordered_json &json);

/** The same as text, with its line end. */
std::string text_of(const nlohmann::ordered_json &json);

/** Keys symbol, sjis, jis, kuten, unicode (null where empty) and vendor (true or false). */
nlohmann::ordered_json json_of(const SymbolCodes &codes);

} // namespace kigou

#endif
