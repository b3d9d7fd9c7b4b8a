// favourites.cpp - see favourites.h. The lines of a title are kept as they are but for the
// symbols that come and go.
#include "picker/favourites.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>
#include <span>

#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/sentence.h"
#include "picker/set_text.h"
#include "picker/symbol_data.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

using Line = std::vector<Sjis>;

constexpr std::size_t symbols_in_line = 10; // that is added to
constexpr std::size_t head_bytes = 4096;    // in which the title of a spoilt file is looked for

Title title() {
    return typed_title(std::string(favourites_title));
}

/** The symbols of a title, line by line. */
struct Block {
    std::size_t number; /**< in the snapshot */
    std::vector<Line> lines;
    bool changed = false;
};

std::vector<Block> blocks_of(const Snapshot &snapshot) {
    std::vector<Block> blocks;
    for (std::size_t i = 1; i < snapshot.size(); ++i) {
        Block block{i, {{}}};
        const auto data = snapshot.data(i);
        for (std::size_t at = 0; at + 1 < data.size(); at += 2) {
            if (data[at] == '\r' && data[at + 1] == '\n') {
                block.lines.emplace_back();
            } else {
                block.lines.back().push_back({data[at], data[at + 1]});
            }
        }
        if (block.lines.back().empty()) block.lines.pop_back();
        blocks.push_back(std::move(block));
    }
    return blocks;
}

Sjis data_of(const std::vector<Line> &lines) {
    Sjis data;
    for (const Line &line : lines) {
        for (const Sjis &symbol : line) data.insert(data.end(), symbol.begin(), symbol.end());
        data.insert(data.end(), {'\r', '\n'});
    }
    return data;
}

std::vector<Sjis> symbols_of(const std::vector<Block> &blocks) {
    std::vector<Sjis> symbols;
    std::set<Sjis> seen;
    for (const Block &block : blocks) {
        for (const Line &line : block.lines) {
            for (const Sjis &symbol : line) {
                if (seen.insert(symbol).second) symbols.push_back(symbol);
            }
        }
    }
    return symbols;
}

void take_out(std::vector<Block> &blocks, const Sjis &symbol) {
    for (Block &block : blocks) {
        std::erase_if(block.lines, [&](Line &line) {
            if (std::erase(line, symbol) == 0) return false;
            block.changed = true;
            return line.empty();
        });
    }
}

/** Puts a symbol before or behind the first place of another one. */
void put_beside(std::vector<Block> &blocks, const Sjis &symbol, const Sjis &other, bool behind) {
    for (Block &block : blocks) {
        for (Line &line : block.lines) {
            const auto found = std::find(line.begin(), line.end(), other);
            if (found == line.end()) continue;
            line.insert(found + (behind ? 1 : 0), symbol);
            block.changed = true;
            return;
        }
    }
}

void append(Block &block, const Sjis &symbol) {
    if (block.lines.empty() || block.lines.back().size() >= symbols_in_line) {
        block.lines.emplace_back();
    }
    block.lines.back().push_back(symbol);
    block.changed = true;
}

/** @throws Failure (refused) when the data would not be read back as it is */
void refuse_odd(const std::string &path, const Sjis &data, std::vector<Advice> advice) {
    if (const auto reason = data_refusal(data)) {
        throw Failure(FailureKind::refused,
                      sentence("cannot change the symbols of {1}: {2}", path, *reason), {},
                      std::move(advice));
    }
}

/** Hands what was changed to the edit. */
void store(Edit &edit, const std::vector<Block> &blocks, ChangeKind kind) {
    const Snapshot &snapshot = edit.located()->snapshot;
    Sjis text = snapshot.text();
    std::vector<Change> changes;
    for (auto block = blocks.rbegin(); block != blocks.rend(); ++block) { // offsets stay
        if (!block->changed) continue;
        const auto held = snapshot.data(block->number);
        const Sjis data = data_of(block->lines);
        const std::string path = snapshot.title(block->number).text;
        refuse_odd(path, data, {{Remedy::mend_file, snapshot.path()}});
        const auto begin = text.begin() + (held.data() - snapshot.text().data());
        const auto behind = text.erase(begin, begin + static_cast<std::ptrdiff_t>(held.size()));
        text.insert(behind, data.begin(), data.end());
        const std::size_t before = symbols_in(held).size(), now = symbols_in(data).size();
        changes.insert(changes.begin(),
                       {.kind = kind,
                        .path = path,
                        .symbols = kind == ChangeKind::appended ? now - before : now,
                        .before = before});
    }
    edit.replace_text(text, std::move(changes), kind == ChangeKind::put);
}

bool holds(const Sjis &bytes, std::span<const unsigned char> piece) {
    return std::search(bytes.begin(), bytes.end(), piece.begin(), piece.end()) != bytes.end();
}

/** Whether a file has the title of the favourites, in whatever encoding somebody saved it. */
bool has_title(const std::string &path) {
    const Sjis head = read_head(path, head_bytes), sjis = title().sjis;
    const std::span<const unsigned char> utf8(
        reinterpret_cast<const unsigned char *>(favourites_title.data()), favourites_title.size());
    return holds(head, sjis) || holds(head, disk_form(sjis)) || holds(head, utf8);
}

/**
 * A file of the favourites that is not taken for one any more is to be mended and not replaced.
 * @param own  folder in which also a file that cannot be read may be it; empty for none
 */
void refuse_spoilt(const SetFiles &sets, const std::string &own) {
    for (const SpoiltFile &file : sets.spoilt) {
        std::error_code error;
        if (fs::is_directory(file.path, error) && file.path != own) continue;
        bool certain = true;
        try {
            if (!has_title(file.path)) continue;
        } catch (const Failure &) {
            const fs::path folder = fs::path(file.path).parent_path();
            const bool in_own = file.path == own || fs::equivalent(folder, own, error);
            if (own.empty() || !in_own) continue;
            certain = false;
        }
        throw Failure(FailureKind::failed,
                      certain
                          ? sentence("{1} is the file of the {2}, and is no symbol file: {3}",
                                     file.path, favourites_title, file.reason)
                          : sentence("{1} may be the file of the {2}, and is no symbol file: {3}",
                                     file.path, favourites_title, file.reason),
                      {}, {{Remedy::mend_file, file.path}});
    }
}

/** Opens the file for a change of what is there; without one nothing is there. */
std::vector<Block> opened(Edit &edit) {
    if (edit.sets().find(title().sjis)) return blocks_of(edit.open(title()).snapshot);
    refuse_spoilt(edit.sets(), {});
    return {};
}

} // namespace

std::vector<Sjis> Favourites::read() const {
    const SetFiles sets = find_sets(directories_);
    const SetFile *file = sets.find(title().sjis);
    if (file) return symbols_of(blocks_of(Snapshot(file->path)));
    refuse_spoilt(sets, {});
    return {};
}

bool Favourites::has(const Sjis &symbol) const {
    const std::vector<Sjis> symbols = read();
    return std::ranges::find(symbols, symbol) != symbols.end();
}

EditReport Favourites::add(const Sjis &symbol, const EditHooks &hooks) const {
    Edit edit(directories_, {}, hooks, true);
    add({symbol}, edit);
    return edit.finish();
}

void Favourites::add(const std::vector<Sjis> &symbols, Edit &edit) const {
    std::vector<Block> blocks;
    if (edit.sets().find(title().sjis)) {
        blocks = blocks_of(edit.open(title()).snapshot);
    } else {
        refuse_spoilt(edit.sets(), directories_.common);
    }
    std::vector<Sjis> held = symbols_of(blocks), fresh;
    for (const Sjis &symbol : symbols) {
        if (std::ranges::count(held, symbol) != 0) continue;
        held.push_back(symbol);
        fresh.push_back(symbol);
    }
    if (fresh.empty()) return;
    if (!blocks.empty()) {
        for (const Sjis &symbol : fresh) append(blocks.front(), symbol);
        return store(edit, blocks, ChangeKind::appended);
    }
    const Title path = joined(title(), typed_title(std::string(favourites_block)).sjis);
    const Sjis data = data_of({fresh});
    refuse_odd(path.text, data, {});
    if (!edit.located()) edit.create(title());
    SetText text = edit.located() ? SetText(edit.located()->snapshot) : SetText(title());
    text.add(title(), path.sjis, data);
    edit.replace_text(text.text(),
                      {{.kind = ChangeKind::added, .path = path.text, .symbols = fresh.size()}});
}

EditReport Favourites::remove(const Sjis &symbol, const EditHooks &hooks) const {
    Edit edit(directories_, {}, hooks);
    std::vector<Block> blocks = opened(edit);
    take_out(blocks, symbol);
    const bool was_there = std::ranges::any_of(blocks, &Block::changed);
    if (was_there) store(edit, blocks, ChangeKind::put);
    return edit.finish();
}

EditReport Favourites::move(const Sjis &symbol, std::size_t place, const EditHooks &hooks) const {
    Edit edit(directories_, {}, hooks);
    std::vector<Block> blocks = opened(edit);
    const std::vector<Sjis> before = symbols_of(blocks);
    take_out(blocks, symbol);
    const std::vector<Sjis> rest = symbols_of(blocks);
    if (rest.size() == before.size() || rest.empty()) return edit.finish();
    const auto held = static_cast<std::size_t>(std::ranges::find(before, symbol) - before.begin());
    const bool forth = place > held || place >= rest.size();
    put_beside(blocks, symbol, forth ? rest[std::min(place, rest.size()) - 1] : rest[place], forth);
    if (symbols_of(blocks) != before) store(edit, blocks, ChangeKind::put);
    return edit.finish();
}

} // namespace kigou
