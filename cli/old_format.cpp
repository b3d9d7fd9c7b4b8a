// old_format.cpp - see old_format.h. A title is a line that begins with "［" and holds "］"
// at most 14 bytes on; below it count the keys sel1= to sel11= with ten symbols each.
#include "cli/old_format.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <span>

#include "cli/storable.h"

namespace kigou {
namespace {

using Bytes = std::span<const unsigned char>;

constexpr std::size_t most_title = 14;
constexpr std::size_t most_titles = 99;
constexpr std::size_t most_bytes = 32767;
constexpr std::size_t symbols_per_key = 10;

bool stands_at(Bytes line, std::size_t at, unsigned char lead, unsigned char trail) {
    return at + 1 < line.size() && line[at] == lead && line[at + 1] == trail;
}

std::string quoted(Bytes bytes) {
    return "'" + to_utf8(bytes) + "'";
}

/** Whether there is nothing to report: blanks, or a line of hyphens. */
bool is_decoration(Bytes bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](unsigned char byte) {
        return byte == ' ' || byte == '\t' || byte == '-';
    });
}

struct Key {
    std::size_t begin = 0, end = 0;
};

/** The next of "sel1=" to "sel11=" in any case. */
std::optional<Key> find_key(Bytes line, std::size_t from) {
    for (std::size_t at = from; at < line.size(); ++at) {
        for (int number = 1; number <= 11; ++number) {
            const std::string key = "sel" + std::to_string(number) + "=";
            if (line.size() - at < key.size()) continue;
            const bool same =
                std::equal(key.begin(), key.end(), line.data() + at,
                           [](char a, unsigned char b) { return a == std::tolower(b); });
            if (same) return Key{at, at + key.size()};
        }
    }
    return std::nullopt;
}

class Examiner {
  public:
    OldFile examine(Bytes bytes) {
        if (bytes.size() > most_bytes) {
            fatal("the file has " + std::to_string(bytes.size()) + " bytes of at most " +
                  std::to_string(most_bytes) + "; divide it");
        }
        while (!bytes.empty()) {
            const auto end = static_cast<std::size_t>(std::find(bytes.begin(), bytes.end(), '\n') -
                                                      bytes.begin());
            Bytes line = bytes.first(end);
            if (!line.empty() && line.back() == '\r') line = line.first(line.size() - 1);
            ++number_;
            read_line(line);
            bytes = bytes.subspan(std::min(end + 1, bytes.size()));
        }
        if (file_.titles.empty()) fatal("no line begins with a title such as ［矢印］");
        if (file_.titles.size() > most_titles) {
            fatal("the file has " + std::to_string(file_.titles.size()) + " titles of at most " +
                  std::to_string(most_titles) + "; divide it");
        }
        return std::move(file_);
    }

  private:
    std::string place() const { return "line " + std::to_string(number_); }
    void leave_out(std::string reason) { file_.left_out.push_back({place(), std::move(reason)}); }
    void fatal(std::string reason) { file_.fatal.push_back({place(), std::move(reason)}); }

    void read_line(Bytes line) {
        std::size_t at = 0;
        if (stands_at(line, 0, 0x81, 0x6D)) at = read_title(line);
        while (at < line.size()) {
            const auto key = file_.titles.empty() ? std::nullopt : find_key(line, at);
            const Bytes before = line.subspan(at, (key ? key->begin : line.size()) - at);
            if (!is_decoration(before)) {
                leave_out(quoted(before) + (file_.titles.empty() ? " stands before the first title"
                                                                 : " is none of sel1= to sel11="));
            }
            if (!key) return;
            at = read_symbols_of_key(line, key->end);
        }
    }

    /** @return where the rest of the line begins */
    std::size_t read_title(Bytes line) {
        std::size_t end = 2;
        while (end <= 2 + most_title && !stands_at(line, end, 0x81, 0x6E)) ++end;
        if (end == 2 || end > 2 + most_title) {
            leave_out(quoted(line) +
                      (end == 2 ? " is a title without a name"
                                : " is no title: ］ must follow within 14 bytes") +
                      "; keys below it go to the title before");
            return line.size();
        }
        const Bytes name = line.subspan(2, end - 2);
        const Title title{Sjis(name.begin(), name.end()), to_utf8(name)};
        if (const auto reason = title_refusal(title)) {
            fatal(quoted(name) + " cannot be a title: " + *reason);
        }
        file_.titles.push_back({title.sjis, place()});
        return end + 2;
    }

    /** @return where the rest of the line begins: behind ten symbols, or the end */
    std::size_t read_symbols_of_key(Bytes line, std::size_t at) {
        for (std::size_t taken = 0; taken < symbols_per_key; ++taken) {
            while (at < line.size() && line[at] == ' ') ++at;
            if (at == line.size()) return at;
            const Bytes symbol = line.subspan(at, std::min<std::size_t>(2, line.size() - at));
            at += symbol.size();
            const std::string where = " at byte " + std::to_string(at - symbol.size() + 1);
            if (symbol.size() == 1 || !survives_saving(symbol)) {
                fatal(quoted(symbol) + where + " is no symbol of two bytes that a file can keep");
            } else if (repertoire_of(symbol) == Repertoire::none) {
                leave_out(quoted(symbol) + where +
                          " is no double-byte character; it is taken as one");
            }
        }
        const auto key = find_key(line, at);
        const Bytes rest = line.subspan(at, (key ? key->begin : line.size()) - at);
        if (!is_decoration(rest))
            leave_out(quoted(rest) + " comes behind the ten symbols of a key");
        return key ? key->begin : line.size();
    }

    OldFile file_;
    std::size_t number_ = 0;
};

} // namespace

OldFile examine_old_file(const Sjis &bytes) {
    return Examiner().examine(bytes);
}

} // namespace kigou
