// index.cpp - see index.h. Each file has its titles and symbols in a few long arrays; over all of
// them goes, for each code, the list of the titles that hold it.
#include "picker/search/index.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <set>
#include <unordered_map>
#include <utility>

#include "picker/codes.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/search/kana.h"
#include "picker/snapshot.h"

namespace kigou {
namespace {

constexpr std::size_t codes = 0x10000;
constexpr unsigned short line_end = '\r' << 8 | '\n';
constexpr std::int64_t clock_doubt = 1000000000; // nanoseconds

/** Pieces one after another, by number. */
template <typename Item>
class Pieces {
  public:
    void add(std::span<const Item> piece) {
        items_.insert(items_.end(), piece.begin(), piece.end());
        ends_.push_back(static_cast<std::uint32_t>(items_.size()));
    }
    std::size_t count() const { return ends_.size(); }
    std::size_t begin_of(std::size_t number) const { return number == 0 ? 0 : ends_[number - 1]; }
    std::span<const Item> operator[](std::size_t number) const {
        return std::span(items_).subspan(begin_of(number), ends_[number] - begin_of(number));
    }
    /** The piece that an item belongs to. */
    std::size_t piece_of(std::size_t item) const {
        return static_cast<std::size_t>(std::ranges::upper_bound(ends_, item) - ends_.begin());
    }
    std::span<const Item> all() const { return items_; }

  private:
    std::vector<Item> items_;
    std::vector<std::uint32_t> ends_;
};

std::string_view as_text(std::span<const char> characters) {
    return {characters.data(), characters.size()};
}

std::int64_t now() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::system_clock::now().time_since_epoch())
        .count();
}

} // namespace

struct SearchIndex::File {
    explicit File(const SetFile &set);

    /** Whether it still is what is on disk. */
    bool holds(const SetFile &set) const {
        // Two changes within one tick of the file system's clock have the same time.
        return title == set.title.sjis && !in_doubt && identity_of(path) == identity;
    }

    std::string path;
    FileIdentity identity;
    bool in_doubt;
    Sjis title;
    Pieces<unsigned char> paths; /**< full paths */
    Pieces<char> folded_paths;   /**< a line end behind each */
    Pieces<unsigned short> symbols;
};

SearchIndex::File::File(const SetFile &set) : path(set.path), title(set.title.sjis) {
    const Snapshot snapshot(path);
    identity = snapshot.identity();
    in_doubt = identity.changed + clock_doubt > now();
    std::vector<unsigned short> held;
    for (std::size_t number = 1; number < snapshot.size(); ++number) {
        const auto full = snapshot.path_of(number);
        paths.add(full);
        folded_paths.add(folded(to_utf8(full)) + '\n');
        held.clear();
        const auto data = snapshot.data(number);
        for (std::size_t i = 0; i + 1 < data.size(); i += 2) {
            const unsigned short code = code_of(data.subspan(i).first<2>());
            if (code != line_end) held.push_back(code);
        }
        symbols.add(held);
    }
}

SearchIndex::SearchIndex() = default;
SearchIndex::~SearchIndex() = default;
SearchIndex::SearchIndex(SearchIndex &&other) noexcept = default;
SearchIndex &SearchIndex::operator=(SearchIndex &&other) noexcept = default;

void SearchIndex::refresh(const SetFiles &sets) {
    std::vector<const File *> before, after;
    for (const auto &file : files_) before.push_back(file.get());
    // The old ones live to the end, so none of the new has the place of one.
    std::vector<std::unique_ptr<File>> old = std::exchange(files_, {});
    std::ranges::move(std::exchange(ahead_, {}), std::back_inserter(old));
    std::unordered_map<std::string, std::unique_ptr<File> *> known;
    for (auto &file : old) known.insert_or_assign(file->path, &file);
    not_searched_ = sets.spoilt;
    std::set<Sjis> seen;
    for (const SetFile &set : sets.sets) {
        if (!seen.insert(set.title.sjis).second) continue;
        const auto file = known.find(set.path);
        if (file != known.end() && *file->second && (*file->second)->holds(set)) {
            files_.push_back(std::move(*file->second));
            continue;
        }
        try {
            files_.push_back(std::make_unique<File>(set));
        } catch (const Failure &failure) {
            not_searched_.push_back({set.path, failure.what()});
        }
    }
    for (const auto &file : files_) after.push_back(file.get());
    if (after != before || posted_.empty()) index_symbols();
}

void SearchIndex::read_ahead(const SetFile &set) {
    const auto holds = [&](const auto &file) { return file->path == set.path && file->holds(set); };
    if (std::ranges::any_of(files_, holds)) return;
    try {
        ahead_.push_back(std::make_unique<File>(set));
    } catch (const Failure &) {
        // The refresh tells of it.
    }
}

void SearchIndex::index_symbols() {
    start_.assign(1, 0);
    for (const auto &file : files_) {
        start_.push_back(start_.back() + static_cast<TitleNumber>(file->paths.count()));
    }
    constexpr TitleNumber none = UINT32_MAX;
    std::vector<TitleNumber> last(codes);
    const auto for_each = [&](auto take) {
        std::ranges::fill(last, none);
        TitleNumber title = 0;
        for (const auto &file : files_) {
            for (std::size_t number = 0; number < file->symbols.count(); ++number, ++title) {
                for (const unsigned short code : file->symbols[number]) {
                    if (std::exchange(last[code], title) != title) take(code, title);
                }
            }
        }
    };
    posted_.assign(codes + 1, 0);
    in_order_.clear();
    for_each([&](unsigned short code, TitleNumber) {
        if (posted_[code + 1U]++ == 0) in_order_.push_back(code);
    });
    for (std::size_t code = 0; code < codes; ++code) posted_[code + 1] += posted_[code];
    titles_.resize(posted_.back());
    std::vector<std::uint32_t> next(posted_.begin(), posted_.end() - 1);
    for_each([&](unsigned short code, TitleNumber title) { titles_[next[code]++] = title; });
}

std::pair<const SearchIndex::File *, std::size_t> SearchIndex::file_of(TitleNumber title) const {
    const auto behind = std::ranges::upper_bound(start_, title);
    const auto number = static_cast<std::size_t>(behind - start_.begin()) - 1;
    return {files_[number].get(), title - start_[number]};
}

std::string SearchIndex::path(TitleNumber title) const {
    const auto [file, number] = file_of(title);
    return to_utf8(file->paths[number]);
}

std::string_view SearchIndex::folded_path(TitleNumber title) const {
    const auto [file, number] = file_of(title);
    const std::string_view line = as_text(file->folded_paths[number]);
    return line.substr(0, line.size() - 1);
}

bool SearchIndex::is_within(TitleNumber title, std::span<const unsigned char> path) const {
    const auto [file, number] = file_of(title);
    const auto own = file->paths[number];
    return std::ranges::equal(own, path) || lies_below(own, path);
}

std::span<const TitleNumber> SearchIndex::titles_with(unsigned short code) const {
    if (posted_.empty()) return {};
    return std::span(titles_).subspan(posted_[code], posted_[code + 1U] - posted_[code]);
}

void SearchIndex::titles_holding(std::string_view part,
                                 const std::function<void(const HeldTitle &)> &take) const {
    if (part.empty()) return;
    for (std::size_t i = 0; i < files_.size(); ++i) {
        const File &file = *files_[i];
        const std::string_view paths = as_text(file.folded_paths.all());
        for (auto at = paths.find(part); at != std::string_view::npos;) {
            const std::size_t number = file.folded_paths.piece_of(at);
            const auto line = file.folded_paths[number];
            take({start_[i] + static_cast<TitleNumber>(number),
                  as_text(line.first(line.size() - 1)), file.symbols[number]});
            at = paths.find(part, file.folded_paths.begin_of(number) + line.size());
        }
    }
}

} // namespace kigou
