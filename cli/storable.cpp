// storable.cpp - see storable.h.
#include "cli/storable.h"

#include <algorithm>
#include <memory>
#include <new>

#include "cli/title_path.h"
#include "common/acccom.h"

namespace kigou {
namespace {

constexpr std::size_t most_title = 256;
constexpr std::size_t most_file_title = 255;

using OwnedText = std::unique_ptr<unsigned char, decltype(&CM_free)>;

std::optional<std::string> refusal(const Title &title, std::size_t most_bytes) {
    if (title.sjis.empty()) return "it is empty";
    if (title.sjis.size() > most_bytes) {
        return "it has " + std::to_string(title.sjis.size()) + " bytes of at most " +
               std::to_string(most_bytes);
    }
    for (const char *sign : {"／", "/", "［", "］"}) {
        if (title.text.find(sign) != std::string::npos) {
            return "it holds '" + std::string(sign) + "', which separates or encloses titles";
        }
    }
    for (const unsigned char byte : title.sjis) {
        if (byte < 0x20 || byte == 0x7F) return "it holds a control character";
    }
    if (!survives_saving(title.sjis)) return "it holds a character that a file cannot keep";
    return std::nullopt;
}

Title accepted(const std::string &typed, std::optional<std::string> (*rule)(const Title &)) {
    Title title = typed_title(typed);
    if (const auto reason = rule(title)) {
        throw Failure(Status::failed, "'" + typed + "' cannot be a title: " + *reason);
    }
    return title;
}

} // namespace

bool survives_saving(std::span<const unsigned char> sjis) {
    if (std::find(sjis.begin(), sjis.end(), 0) != sjis.end()) return false;
    Sjis text(sjis.begin(), sjis.end());
    text.push_back(0);
    const OwnedText euc(CM_sjis2euc(text.data()), &CM_free);
    const OwnedText again(euc ? CM_euc2sjis(euc.get()) : nullptr, &CM_free);
    if (!again) throw std::bad_alloc();
    return std::equal(text.begin(), text.end(), again.get(),
                      again.get() + CM_lstrlen(again.get()) + 1);
}

std::optional<std::string> title_refusal(const Title &title) {
    return refusal(title, most_title);
}

std::optional<std::string> file_title_refusal(const Title &title) {
    return refusal(title, most_file_title);
}

Title new_file_title(const std::string &typed) {
    return accepted(typed, file_title_refusal);
}

Title new_title(const std::string &typed) {
    return accepted(typed, title_refusal);
}

} // namespace kigou
