// set_text.cpp - see set_text.h.
#include "picker/set_text.h"

#include <algorithm>

#include "sym/format.h"

namespace kigou {
namespace {

using Bytes = std::span<const unsigned char>;

std::string key_of(Bytes path) {
    return {reinterpret_cast<const char *>(path.data()), path.size()};
}

template <typename Literal>
void append(Sjis &text, const Literal &bytes) {
    text.insert(text.end(), bytes.data(), bytes.data() + bytes.size());
}

Sjis hyphen_line() {
    Sjis line;
    append(line, acc::m_ucSymHaihun);
    append(line, acc::m_ucSymReturn);
    return line;
}

Sjis head_of(Bytes file_title) {
    Sjis head;
    append(head, acc::m_ucSymHeader);
    append(head, acc::m_ucSymReturn);
    append(head, acc::m_ucSymNameHeader);
    append(head, file_title);
    append(head, acc::m_ucSymReturn);
    return head;
}

Sjis title_line(Bytes path_in_file) {
    Sjis line{0x81, 0x6D};
    append(line, path_in_file);
    line.insert(line.end(), {0x81, 0x6E, '\r', '\n'});
    return line;
}

} // namespace

SetText::SetText(const Title &file) : file_bytes_(file.sjis.size()) {
    pieces_.push_back({head_of(file.sjis), {}, {}});
    nodes_.emplace(key_of(file.sjis), Node{pieces_.begin(), pieces_.begin()});
}

SetText::SetText(const Snapshot &snapshot) : file_bytes_(snapshot.path_of(0).size()) {
    const Bytes text = snapshot.text();
    std::size_t end = 0;
    for (std::size_t i = 0; i < snapshot.size(); ++i) {
        const Bytes data = snapshot.data(i);
        const auto data_at = static_cast<std::size_t>(data.data() - text.data());
        const Bytes before = text.subspan(end, data_at - end);
        const std::size_t data_end = data_at + data.size();
        const Bytes after = text.subspan(data_end, snapshot.end(i) - data_end);
        pieces_.push_back({Sjis(before.begin(), before.end()), Sjis(data.begin(), data.end()),
                           Sjis(after.begin(), after.end())});
        end = snapshot.end(i);
        const Place place = std::prev(pieces_.end());
        note(snapshot.path_of(i), place);
    }
    rest_.assign(text.begin() + static_cast<std::ptrdiff_t>(end), text.end());
}

/** A block that stands behind all others of its parent. */
void SetText::note(Bytes path, Place place) {
    nodes_.emplace(key_of(path), Node{place, place});
    for (Bytes parent = path; parent.size() > file_bytes_;) {
        parent = above(parent, file_bytes_);
        if (const auto node = nodes_.find(key_of(parent)); node != nodes_.end()) {
            node->second.last = place;
        }
    }
}

bool SetText::has(Bytes path) const {
    return nodes_.contains(key_of(path));
}

const Sjis &SetText::data(Bytes path) const {
    return nodes_.at(key_of(path)).own->data;
}

void SetText::set_data(Bytes path, Sjis data) {
    nodes_.at(key_of(path)).own->data = std::move(data);
}

void SetText::add(const Title &parent, Bytes path, Sjis data) {
    Sjis before = title_line(path.subspan(file_bytes_ + 2));
    append(before, hyphen_line());
    const Place behind = std::next(nodes_.at(key_of(parent.sjis)).last);
    const Place place = pieces_.insert(behind, {std::move(before), std::move(data), hyphen_line()});
    note(path, place);
}

Sjis SetText::text() const {
    Sjis text;
    for (const Piece &piece : pieces_) {
        for (const Sjis *part : {&piece.before, &piece.data, &piece.after}) append(text, *part);
    }
    append(text, rest_);
    return text;
}

bool reads_back(Bytes data) {
    Sjis text = head_of({});
    const acc::Range title{acc::title_offset_as_written, 0};
    append(text, title_line(Bytes{}));
    append(text, hyphen_line());
    append(text, data);
    append(text, hyphen_line());
    acc::BlockWalk walk(text, title);
    acc::Block block{};
    return walk.next(block) && 2 * std::size_t{block.data_units} == data.size() &&
           block.cut == acc::Cut::nowhere && !walk.next(block);
}

} // namespace kigou
