// old_format.cpp - see old_format.h. A title is a line that begins with "［" and holds "］" at
// most 14 bytes on; below it count the keys sel1= to sel11=, in any case and anywhere, with ten
// symbols each. What no title and no key takes is left out.
#include "picker/old_format.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "picker/disk_form.h"
#include "picker/symbol_data.h"
#include "picker/title.h"

namespace kigou {
namespace {

constexpr std::size_t most_title_bytes = 14;
constexpr std::size_t most_old_titles = 99;
constexpr std::size_t most_bytes = 32767;
constexpr std::size_t key_count = 11;
constexpr std::size_t symbols_per_key = 10;

/** What became of a byte. */
enum class Use : unsigned char { none, taken, behind_key };

class OldReader {
  public:
    explicit OldReader(std::span<const unsigned char> bytes)
        : bytes_(bytes), uses_(bytes.size(), Use::none) {}

    OldFile read() {
        if (bytes_.size() > most_bytes) {
            fatal(0, "the file has " + std::to_string(bytes_.size()) + " bytes of at most " +
                         std::to_string(most_bytes) + "; divide it");
            return std::move(file_);
        }
        find_titles();
        for (std::size_t i = 0; i < file_.titles.size(); ++i) {
            const bool last = i + 1 == file_.titles.size();
            gather(file_.titles[i], points_[i], last ? bytes_.size() : points_[i + 1]);
        }
        report_rest();
        if (file_.titles.empty()) fatal(0, "no line begins with a title such as ［矢印］");
        if (file_.titles.size() > most_old_titles) {
            fatal(0, "the file has " + std::to_string(file_.titles.size()) + " titles of at most " +
                         std::to_string(most_old_titles) + "; divide it");
        }
        return std::move(file_);
    }

  private:
    std::string place(std::size_t offset) const {
        const auto end = bytes_.begin() + static_cast<std::ptrdiff_t>(offset);
        return "line " + std::to_string(1 + std::count(bytes_.begin(), end, '\n'));
    }
    void fatal(std::size_t offset, std::string reason) {
        file_.fatal.push_back({place(offset), std::move(reason)});
    }
    std::string quoted(std::size_t begin, std::size_t end) const {
        return "'" + to_utf8(bytes_.subspan(begin, end - begin)) + "'";
    }

    bool stands_at(std::size_t at, unsigned char lead, unsigned char trail) const {
        return at + 1 < bytes_.size() && bytes_[at] == lead && bytes_[at + 1] == trail;
    }
    void take(std::size_t begin, std::size_t end) {
        std::fill(uses_.begin() + static_cast<std::ptrdiff_t>(begin),
                  uses_.begin() + static_cast<std::ptrdiff_t>(std::min(end, uses_.size())),
                  Use::taken);
    }

    void find_titles() {
        for (std::size_t at = 0; at < bytes_.size(); ++at) {
            if (!stands_at(at, 0x81, 0x6D)) continue;
            if (at != 0 && bytes_[at - 1] != '\n') {
                ++at;
                continue;
            }
            const std::size_t line = at;
            at += 2;
            std::size_t length = 0;
            while (length <= most_title_bytes && !stands_at(at + length, 0x81, 0x6E)) ++length;
            if (length == 0 || length > most_title_bytes) continue;
            const Title title = title_of(bytes_.subspan(at, length));
            if (const auto reason = title_refusal(title)) {
                fatal(line, quoted(at, at + length) + " cannot be a title: " + *reason);
            }
            at += length + 2;
            take(line, at);
            file_.titles.push_back({title.sjis, place(line)});
            points_.push_back(at);
        }
    }

    /** Bytes of a key that stands there; 0 when it does not. */
    std::size_t key_at(std::size_t at, std::size_t number) const {
        const std::string key = "sel" + std::to_string(number) + "=";
        if (bytes_.size() - at < key.size()) return 0;
        const bool same = std::equal(key.begin(), key.end(), bytes_.data() + at,
                                     [](char a, unsigned char b) { return a == std::tolower(b); });
        return same ? key.size() : 0;
    }

    /** The keys of a title go in by their numbers, a line each, wherever they stand. */
    void gather(OldTitle &title, std::size_t begin, std::size_t end) {
        for (std::size_t number = 1; number <= key_count; ++number) {
            Sjis line;
            for (std::size_t at = begin; at < end;) {
                const std::size_t key = key_at(at, number);
                if (key == 0) {
                    ++at;
                    continue;
                }
                take(at, at + key);
                at += key;
                if (at >= end || !gather_key(at, line)) break;
            }
            if (line.empty()) continue;
            title.data.insert(title.data.end(), line.begin(), line.end());
            title.data.insert(title.data.end(), {'\r', '\n'});
        }
        const auto reason = data_refusal(title.data);
        if (reason && suspects_.empty()) {
            suspects_.push_back({title.place, "the symbols of this title: " + *reason});
        }
        if (reason) file_.fatal.insert(file_.fatal.end(), suspects_.begin(), suspects_.end());
        suspects_.clear();
    }

    /** @return whether the key had all ten symbols; else no more keys of that number count */
    bool gather_key(std::size_t &at, Sjis &line) {
        for (std::size_t taken = 0; taken < symbols_per_key;) {
            if (at >= bytes_.size() || bytes_[at] == '\r' || bytes_[at] == '\n') return false;
            if (at + 1 >= bytes_.size()) return false; // half a symbol
            if (bytes_[at] == ' ') {
                take(at, at + 1);
                ++at;
                continue;
            }
            const auto symbol = bytes_.subspan(at, 2);
            check_symbol(at, symbol);
            line.insert(line.end(), symbol.begin(), symbol.end());
            take(at, at + 2);
            at += 2;
            ++taken;
        }
        for (std::size_t i = at; i < bytes_.size() && bytes_[i] != '\n' && bytes_[i] != '\r'; ++i) {
            if (uses_[i] == Use::none) uses_[i] = Use::behind_key;
        }
        ++at;
        return true;
    }

    void check_symbol(std::size_t at, std::span<const unsigned char> symbol) {
        const auto line_start =
            std::find(bytes_.rend() - static_cast<std::ptrdiff_t>(at), bytes_.rend(), '\n');
        const std::string where =
            " at byte " +
            std::to_string(at + 1 - static_cast<std::size_t>(bytes_.rend() - line_start));
        if (symbol[1] == '\n' || symbol[1] == '\r' || !survives_saving(symbol)) {
            // Not by itself: two halves of characters side by side may be one that is kept.
            const bool cut = symbol[1] == '\n' || symbol[1] == '\r';
            suspects_.push_back({place(at), quoted(at, at + (cut ? 1 : 2)) + where +
                                                " is no symbol of two bytes that a file can keep"});
        } else if (repertoire_of(symbol) == Repertoire::none) {
            file_.left_out.push_back({place(at), quoted(at, at + 2) + where +
                                                     " is no double-byte character; it is taken "
                                                     "as one"});
        }
    }

    /** What is neither taken nor blank, in runs of one line. */
    void report_rest() {
        for (std::size_t begin = 0; begin < bytes_.size();) {
            const auto is_rest = [&](std::size_t at) {
                return at < bytes_.size() && uses_[at] != Use::taken && bytes_[at] != '\n' &&
                       bytes_[at] != '\r';
            };
            std::size_t end = begin;
            while (is_rest(end) && uses_[end] == uses_[begin]) ++end;
            if (end > begin) report(begin, end);
            begin = std::max(end, begin + 1);
        }
        std::stable_sort(file_.left_out.begin(), file_.left_out.end(),
                         [](const auto &a, const auto &b) {
                             return std::stoul(a.place.substr(5)) < std::stoul(b.place.substr(5));
                         });
    }

    void report(std::size_t begin, std::size_t end) {
        const auto run = bytes_.subspan(begin, end - begin);
        const bool decoration = std::all_of(run.begin(), run.end(), [](unsigned char byte) {
            return byte == ' ' || byte == '\t' || byte == '-';
        });
        if (decoration) return;
        std::string reason = quoted(begin, end);
        const bool starts_line = begin == 0 || bytes_[begin - 1] == '\n';
        if (starts_line && stands_at(begin, 0x81, 0x6D)) {
            reason += stands_at(begin + 2, 0x81, 0x6E)
                          ? " is a title without a name"
                          : " is no title: ］ must follow within 14 bytes";
            reason += "; keys below it go to the title before";
        } else if (points_.empty() || begin < points_.front()) {
            reason += " stands before the first title";
        } else if (uses_[begin] == Use::behind_key) {
            reason += " comes behind the ten symbols of a key";
        } else {
            reason += " is none of sel1= to sel11=";
        }
        file_.left_out.push_back({place(begin), std::move(reason)});
    }

    std::span<const unsigned char> bytes_;
    std::vector<Use> uses_;
    OldFile file_;
    std::vector<std::size_t> points_; /**< offsets behind the titles */
    std::vector<LeftOut> suspects_;   /**< of a title, should its symbols be refused */
};

} // namespace

OldFile read_old_file(const Sjis &bytes) {
    return OldReader(bytes).read();
}

} // namespace kigou
