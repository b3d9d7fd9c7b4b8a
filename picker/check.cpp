// check.cpp - see check.h. The blocks are those that the library's own reader
// finds; their lines are then looked at one by one.
#include "picker/check.h"

#include <algorithm>
#include <map>

#include "picker/disk_form.h"
#include "picker/title.h"
#include "sym/format.h"

namespace kigou {
namespace {

constexpr std::size_t most_data_of_a_file = 65534;
constexpr std::size_t remark_shown = 20; // characters
constexpr std::size_t most_named = 20;   // symbols of a line

/** Some of what was found in a line, which may be long. */
struct Named {
    std::string text;
    std::size_t count = 0;

    void add(const std::string &one) {
        if (++count <= most_named) text += one;
    }
    std::string told() const {
        if (count <= most_named) return text;
        return text + " and " + std::to_string(count - most_named) + " more";
    }
};

class Checker {
  public:
    CheckedFile check(Sjis bytes) {
        check_bytes(bytes);
        text_ = text_form(bytes);
        for (std::size_t i = 0; i < text_.size(); ++i) {
            if (text_[i] == '\n') line_starts_.push_back(i + 1);
        }
        acc::Range title;
        if (!acc::has_symbol_header(text_)) find(0, "head", "the first line is not 〈記号〉");
        const auto limit = static_cast<std::uint32_t>(bytes.size());
        if (!acc::find_file_title(text_, limit, title)) {
            find(0, "head", "no line begins with 名称=");
        } else {
            check_file_title(title);
            check_blocks(title);
        }
        std::stable_sort(file_.findings.begin(), file_.findings.end(),
                         [](const Finding &a, const Finding &b) { return a.line < b.line; });
        return std::move(file_);
    }

  private:
    std::size_t line_of(std::size_t offset) const {
        const auto after = std::upper_bound(line_starts_.begin(), line_starts_.end(), offset);
        return static_cast<std::size_t>(after - line_starts_.begin()) + 1;
    }

    void find_unsafe(std::size_t line, const char *kind, std::string text) {
        keep({line, kind, std::move(text), true});
    }
    void find(std::size_t offset, const char *kind, std::string text) {
        keep({line_of(offset), kind, std::move(text)});
    }
    void keep(Finding finding) {
        if (file_.findings.size() < CheckedFile::most_findings) {
            file_.findings.push_back(std::move(finding));
        } else {
            ++file_.more;
        }
    }

    std::string text_of(acc::Range range) const {
        return to_utf8(std::span(text_).subspan(range.offset, range.length));
    }

    /** What only shows on disk; takes it out, so that the rest can be read. */
    void check_bytes(Sjis &bytes) {
        const auto nul = std::find(bytes.begin(), bytes.end(), 0);
        const auto behind = bytes.end() - nul - 1;
        bytes.erase(nul, bytes.end());
        std::size_t number = 0, first_cr_lf = 0, cr_lfs = 0;
        for (auto begin = bytes.begin(); begin != bytes.end();) {
            const auto line_end = std::find(begin, bytes.end(), '\n');
            const auto end = line_end == bytes.end() ? line_end : line_end + 1;
            ++number;
            if (check_disk_line(number, Sjis(begin, end)) && ++cr_lfs == 1) first_cr_lf = number;
            begin = end;
        }
        if (behind >= 0) {
            const bool starts_line = bytes.empty() || bytes.back() == '\n';
            find_unsafe(number + starts_line, "nul",
                        "a NUL byte ends the file here; " + std::to_string(behind) +
                            " bytes behind it are not read");
        }
        if (cr_lfs != 0) {
            find_unsafe(first_cr_lf, "cr",
                        std::to_string(cr_lfs) +
                            " lines from here on end in CR LF: line ends must be LF alone (tr -d "
                            "'\\r' repairs)");
        }
        std::erase(bytes, '\r');
    }

    /** @return whether it ends in CR LF, which is reported once for all lines */
    bool check_disk_line(std::size_t number, Sjis line) {
        const bool cr_lf = line.size() > 1 && line.back() == '\n' && line[line.size() - 2] == '\r';
        if (const auto stray = std::erase(line, '\r') - cr_lf; stray != 0) {
            find_unsafe(number, "cr",
                        std::to_string(stray) +
                            " CR within the line: a save drops it and damages what follows; take "
                            "it out or make it a line end (LF)");
        }
        if (disk_form(text_form(line)) != line) {
            find_unsafe(number, "encoding",
                        "not EUC-JP of JIS X 0208: a save would change this line");
        }
        return cr_lf;
    }

    void check_file_title(acc::Range range) {
        file_.title = text_of(range);
        if (range.length == 0) return; // can be saved under a title
        const Sjis bytes(text_.begin() + range.offset, text_.begin() + range.offset + range.length);
        if (const auto reason = file_title_refusal({bytes, file_.title})) {
            find(range.offset, "title", "the file title " + file_.title + ": " + *reason);
        }
    }

    void check_blocks(acc::Range title) {
        acc::BlockWalk walk(text_, title);
        acc::Block block{};
        std::size_t end = title.offset + title.length;
        while (walk.next(block)) {
            ++file_.blocks;
            file_.symbols += block.symbols;
            check_between(end, block.title_line);
            end = block.end;
            check_path(block, title.length);
            if (block.cut == acc::Cut::before_start_line) {
                find(block.title_line, "unterminated", text_of(block.path) + " has no start line");
            } else if (block.cut != acc::Cut::nowhere && block.cut != acc::Cut::in_end_line) {
                find(block.title_line, "unterminated", text_of(block.path) + " has no end line");
            }
            check_data(block);
        }
        check_between(end, text_.size());
        if (file_.blocks > 32766) find(end, "too_many", "more than 32766 titles");
        const std::string rest = to_utf8(std::span(text_).subspan(end));
        if (const auto bracket = rest.find("［"); bracket != std::string::npos) {
            const auto above =
                std::count(rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(bracket), '\n');
            find_unsafe(line_of(end) + static_cast<std::size_t>(above), "unterminated",
                        "this title line has no ］ or no line end, and so it is none");
        }
    }

    void check_path(const acc::Block &block, std::size_t file_title_bytes) {
        const std::string path = text_of(block.path);
        if (const auto line_end = path.find('\r'); line_end != std::string::npos) {
            find_unsafe(line_of(block.title_line), "unterminated",
                        "the title line ［" + path.substr(0, line_end) +
                            " has no ］: what stands below it down to the next ］ is its title");
            return;
        }
        if (block.level > most_levels) {
            find(block.title_line, "too_deep",
                 path + " stands on level " + std::to_string(block.level) + " of at most 10");
        }
        if (block.title.length > acc::max_title) {
            find(block.title_line, "title",
                 "the title has " + std::to_string(block.title.length) + " bytes of at most 256");
        }
        if (file_title_bytes + 2 + block.path.length > acc::max_path) {
            find(block.title_line, "title",
                 "the path has " + std::to_string(file_title_bytes + 2 + block.path.length) +
                     " bytes of at most 514, the file title counted");
        }
        if (std::any_of(path.begin(), path.end(),
                        [](unsigned char byte) { return byte < 0x20 || byte == 0x7F; })) {
            find(block.title_line, "title", "the title holds a control character");
        }
        if (block.path.length == 0) find(block.title_line, "title", "the title is empty");
        if (const auto [same, fresh] = paths_.emplace(path, line_of(block.title_line)); !fresh) {
            find(block.title_line, "duplicate_title",
                 path + " stands on line " + std::to_string(same->second) +
                     " already; only that one is shown");
            return;
        }
        const auto cut = path.rfind("／");
        const std::string parent = cut == std::string::npos ? "" : path.substr(0, cut);
        if (!parent.empty() && paths_.count(parent) == 0) {
            find(block.title_line, "no_parent", path + " has no block " + parent + " before it");
        }
        check_siblings(block, path, children_[parent]);
    }

    /** Of each path that begins like another one of the same parent one is named. */
    void check_siblings(const acc::Block &block, const std::string &path,
                        std::map<std::string, std::size_t> &siblings) {
        if (path.empty()) return;
        const auto named = [](const auto &sibling) {
            return sibling.first + " (line " + std::to_string(sibling.second) + ")";
        };
        const auto after = siblings.lower_bound(path);
        if (after != siblings.end() && after->first.starts_with(path)) {
            find(block.title_line, "prefix", path + " is how its sibling begins: " + named(*after));
        }
        const std::size_t own = path.rfind("／") == std::string::npos ? 0 : path.rfind("／") + 3;
        for (std::size_t bytes = path.size() - 1; bytes > own; --bytes) {
            const auto shorter = siblings.find(path.substr(0, bytes));
            if (shorter == siblings.end()) continue;
            find(block.title_line, "prefix", path + " begins like its sibling " + named(*shorter));
            break;
        }
        siblings.emplace(path, line_of(block.title_line));
    }

    /** Lines between two blocks: nothing shows them. */
    void check_between(std::size_t begin, std::size_t end) {
        while (begin < end) {
            const auto line_end = std::find(text_.begin() + static_cast<std::ptrdiff_t>(begin),
                                            text_.begin() + static_cast<std::ptrdiff_t>(end), '\n');
            const auto next = static_cast<std::size_t>(line_end - text_.begin()) + 1;
            std::string line =
                to_utf8(std::span(text_).subspan(begin, std::min(next, end) - begin));
            std::erase_if(line, [](char sign) { return sign == '\r' || sign == '\n'; });
            const bool hyphens = line.find_first_not_of("- \t") == std::string::npos;
            if (!hyphens && line.find("［") == std::string::npos) {
                const std::u32string characters = to_characters(line);
                std::string shown;
                for (const char32_t character : characters.substr(0, remark_shown)) {
                    shown += to_utf8(character);
                }
                if (characters.size() > remark_shown) shown += "...";
                find(begin, "outside_titles",
                     "stands outside of all titles, where nothing shows it: " + shown);
            }
            begin = next;
        }
    }

    /** Lines of the data, as far as they are on the grid. */
    void check_data(const acc::Block &block) {
        const std::size_t end = block.data + 2 * std::size_t{block.data_units};
        if (end - block.data > most_data_of_a_file) {
            find(block.data, "too_long",
                 text_of(block.path) + " has " + std::to_string(end - block.data) +
                     " bytes of symbols of at most 65534");
        }
        std::map<Sjis, std::size_t> seen;
        for (std::size_t begin = block.data; begin < end;) {
            static constexpr unsigned char line_end[] = {'\r', '\n'};
            const auto from = text_.begin() + static_cast<std::ptrdiff_t>(begin);
            const auto stop = text_.begin() + static_cast<std::ptrdiff_t>(end);
            // The last line may lack its end; then the hyphens of the end line follow it.
            const auto line_stop = std::search(from, text_.end(), line_end, line_end + 2);
            const Sjis line(from, std::min(line_stop, stop));
            if (line.size() % 2 != 0) {
                find(begin, "off_grid",
                     to_utf8(line) + " has an odd number of bytes: the symbols of " +
                         text_of(block.path) + " are read wrong from here to line " +
                         std::to_string(line_of(end)));
                return;
            }
            check_line(begin, line, seen);
            begin += line.size() + 2;
        }
    }

    void check_line(std::size_t offset, const Sjis &line, std::map<Sjis, std::size_t> &seen) {
        const std::string text = to_utf8(line);
        if (text.starts_with("［") && text.ends_with("］")) {
            find(offset, "unterminated",
                 text + " stands among symbols: an end line is missing above");
        }
        Named outside, single, repeated;
        for (std::size_t i = 0; i + 1 < line.size(); i += 2) {
            const Sjis symbol{line[i], line[i + 1]};
            const std::string shown = to_utf8(symbol);
            const Repertoire repertoire = repertoire_of(symbol);
            if (line[i] < 0x80 || (line[i] >= 0xA0 && line[i] <= 0xDF)) {
                single.add(shown);
            } else if (repertoire != Repertoire::jis_x_0208) {
                outside.add(shown);
            }
            const auto [first, fresh] = seen.emplace(symbol, line_of(offset));
            if (!fresh) {
                repeated.add((repeated.text.empty() ? "" : " ") + shown + " (line " +
                             std::to_string(first->second) + ")");
            }
        }
        if (single.count != 0) {
            find(offset, "off_grid",
                 "single-byte characters, two of them read as one symbol: " + single.told());
        }
        if (outside.count != 0) find(offset, "outside", "not in JIS X 0208: " + outside.told());
        if (repeated.count != 0) {
            find(offset, "duplicate", "stands in this title already: " + repeated.told());
        }
    }

    Sjis text_;
    std::vector<std::size_t> line_starts_;
    std::map<std::string, std::size_t> paths_;
    std::map<std::string, std::map<std::string, std::size_t>> children_; /**< with their lines */
    CheckedFile file_;
};

} // namespace

CheckedFile check_symbol_file(const Sjis &bytes) {
    return Checker().check(bytes);
}

} // namespace kigou
