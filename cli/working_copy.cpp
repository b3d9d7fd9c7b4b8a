// working_copy.cpp - see working_copy.h.
#include "cli/working_copy.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "sym/temp_index.h"

namespace kigou {
namespace {

/** Text of a NUL-ended field; nothing when it has no end. */
template <std::size_t Size>
std::optional<Title> field(const unsigned char (&bytes)[Size]) {
    const auto end = std::find(bytes, bytes + Size, 0);
    if (end == bytes + Size) return std::nullopt;
    const Sjis sjis(bytes, end);
    return Title{sjis, to_utf8(sjis)};
}

} // namespace

std::optional<WorkingCopy> parse_working_copy(std::span<const unsigned char> bytes) {
    TempIndex header;
    if (bytes.size() < sizeof header) return std::nullopt;
    std::memcpy(&header, bytes.data(), sizeof header);
    const std::size_t text_at = sizeof header + sizeof(TempInfo) * header.usCount;
    if (header.usCount == 0 || header.reserved != 0 || header.ulTextPos != text_at ||
        text_at > bytes.size()) {
        return std::nullopt;
    }
    WorkingCopy copy;
    const auto text = bytes.subspan(text_at);
    copy.text.assign(text.begin(), text.end());
    if (!acc::has_symbol_header(copy.text)) return std::nullopt;
    for (std::size_t i = 0; i < header.usCount; ++i) {
        TempInfo record;
        std::memcpy(&record, bytes.data() + sizeof header + i * sizeof record, sizeof record);
        auto path = field(record.ucPath);
        const std::uint64_t data_end = record.ulDataPos + 2 * std::uint64_t{record.ulDataLen};
        if (!path || data_end > text.size()) return std::nullopt;
        if (i == 0) {
            copy.file = std::move(*path);
            continue;
        }
        const auto data = text.subspan(record.ulDataPos, 2 * std::size_t{record.ulDataLen});
        copy.blocks.push_back({std::move(*path), Sjis(data.begin(), data.end())});
    }
    return copy;
}

WorkingCopy working_copy(const Host &host) {
    auto copy = parse_working_copy(bytes_of_file(host.working_file()));
    if (!copy)
        throw Failure(Status::failed, "the working file " + host.working_file() + " is damaged");
    return std::move(*copy);
}

Sjis bytes_of_file(const std::string &path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(std::fopen(path.c_str(), "rb"),
                                                                &std::fclose);
    const auto fail = [&] {
        throw Failure(Status::failed, "cannot read " + path + ": " + std::strerror(errno));
    };
    if (!file) fail();
    Sjis bytes;
    unsigned char piece[16384];
    while (const std::size_t count = std::fread(piece, 1, sizeof piece, file.get())) {
        bytes.insert(bytes.end(), piece, piece + count);
    }
    if (std::ferror(file.get())) fail();
    return bytes;
}

} // namespace kigou
