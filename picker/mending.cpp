// mending.cpp - see mending.h.
#include "picker/mending.h"

#include <algorithm>

#include "picker/disk_form.h"
#include "sym/format.h"

namespace kigou {
namespace {

constexpr std::size_t lines_told = 20;

} // namespace

std::vector<SwallowedTitle> swallowed_titles(const Sjis &bytes) {
    static constexpr unsigned char line_and_bracket[] = {'\n', 0x81, 0x6D};
    const Sjis text = text_form(bytes);
    acc::Range title;
    std::vector<SwallowedTitle> titles;
    if (!acc::find_file_title(text, static_cast<std::uint32_t>(text.size()), title)) return titles;
    const auto at = [&](std::size_t offset) {
        return text.begin() + static_cast<std::ptrdiff_t>(offset);
    };
    acc::BlockWalk walk(text, title);
    acc::Block block{};
    bool more = walk.next(block);
    while (more) {
        const auto begin = at(block.data), end = at(block.data + 2 * std::size_t{block.data_units});
        const std::string own =
            to_utf8(std::span(text).subspan(block.path.offset, block.path.length));
        const std::size_t behind = block.end;
        more = walk.next(block);
        // Its own end line is one; another one in the data or before the next title is that of
        // a block of which nothing is known.
        const auto next = at(more ? block.title_line : text.size());
        const Sjis hyphens(acc::hyphen_line, '-');
        const auto in_data = std::search(begin, end, hyphens.begin(), hyphens.end());
        const auto stray = std::search(at(behind), next, hyphens.begin(), hyphens.end());
        if (in_data == end && stray == next) continue;
        for (auto found = begin - 1;; ++found) {
            found = std::search(found, end, line_and_bracket, line_and_bracket + 3);
            if (found == end) break;
            titles.push_back(
                {own, static_cast<std::size_t>(std::count(text.begin(), found, '\n')) + 2});
        }
    }
    return titles;
}

std::vector<std::string> lines_to_mend(const std::string &path, const CheckedFile &file) {
    std::vector<std::string> lines;
    std::size_t more = 0;
    for (const Finding &finding : file.findings) {
        if (!finding.unsafe) continue;
        if (lines.size() < lines_told) {
            lines.push_back(path + ":" + std::to_string(finding.line) + ": " + finding.text);
        } else {
            ++more;
        }
    }
    if (lines.empty()) return lines;
    lines.insert(
        lines.begin(),
        "nothing was written and the edit is not made: with these lines of the file, titles "
        "or symbols would be lost");
    if (more != 0) lines.push_back(std::to_string(more) + " more lines are not shown");
    return lines;
}

} // namespace kigou
