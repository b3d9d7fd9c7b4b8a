#include "sym/read_back.h"

#include <algorithm>
#include <cstring>

#include "sym/tree.h"

namespace acc {
namespace {

Text bytes_of(const unsigned char *text) {
    return {text, std::strlen(reinterpret_cast<const char *>(text))};
}

bool is_same(Text a, Text b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin());
}

Text part(Text text, std::uint32_t offset, std::uint32_t length) {
    const bool inside = offset <= text.size() && length <= text.size() - offset;
    return inside ? text.subspan(offset, length) : Text{};
}

} // namespace

bool reads_as(Text text, Records records, Text described) {
    Range title;
    const Text file_title = bytes_of(records[0].ucTitle);
    if (!has_symbol_header(text) ||
        !find_file_title(text, static_cast<std::uint32_t>(text.size()) + 6, title) ||
        !is_same(part(text, title.offset, title.length), file_title)) {
        return false;
    }
    BlockWalk walk(text, title);
    Block block;
    for (const TempInfo &record : records.subspan(1)) {
        if (!walk.next(block) || block.level != record.usLevel ||
            block.data_units != record.ulDataLen) {
            return false;
        }
        const std::uint32_t data_bytes = 2 * record.ulDataLen;
        if (!is_same(part(text, block.path.offset, block.path.length),
                     bytes_of(title_path(record, file_title.size()))) ||
            !is_same(part(text, block.data, data_bytes),
                     part(described, record.ulDataPos, data_bytes))) {
            return false;
        }
    }
    return !walk.next(block);
}

} // namespace acc
