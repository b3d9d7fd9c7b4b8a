// disk_form.cpp - see disk_form.h.
#include "picker/disk_form.h"

#include <algorithm>
#include <memory>
#include <new>

#include "common/acccom.h"

namespace kigou {
namespace {

Sjis converted(std::span<const unsigned char> bytes,
               unsigned char *(*convert)(const unsigned char *)) {
    Sjis ended(bytes.begin(), bytes.end());
    ended.push_back(0);
    const std::unique_ptr<unsigned char, decltype(&CM_free)> text(convert(ended.data()), &CM_free);
    if (!text) throw std::bad_alloc();
    return Sjis(text.get(), text.get() + CM_lstrlen(text.get()));
}

} // namespace

Sjis text_form(std::span<const unsigned char> disk) {
    return converted(disk, CM_euc2sjis);
}

Sjis disk_form(std::span<const unsigned char> text) {
    return converted(text, CM_sjis2euc);
}

bool survives_saving(std::span<const unsigned char> sjis) {
    if (std::find(sjis.begin(), sjis.end(), 0) != sjis.end()) return false;
    const Sjis again = text_form(disk_form(sjis));
    return std::equal(sjis.begin(), sjis.end(), again.begin(), again.end());
}

} // namespace kigou
