// recents.cpp - see recents.h.
#include "picker/recents.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>

#include "picker/codes.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/folder_lock.h"
#include "picker/recovery.h"
#include "picker/sentence.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds patience{250};
constexpr std::size_t most_file = 65536; // bytes; all picks take a fiftieth of them
constexpr std::size_t code_digits = 4;

const std::string damaged_suffix = ".damaged";

std::string line_of(const Sjis &symbol) {
    const SymbolCodes codes = codes_of(symbol);
    const bool is_character = codes.repertoire != Repertoire::none;
    return codes.sjis + (is_character ? " " + codes.symbol : "");
}

/** The symbol of a line, by its code alone; none for a line that has no code. */
Sjis symbol_of(const std::string &line) {
    const auto code = number_of(std::string_view(line).substr(0, code_digits), 16);
    const bool ends = line.size() == code_digits || (line.size() > code_digits && line[4] == ' ');
    if (!code || !ends) return {};
    Sjis symbol = pair_of(static_cast<unsigned short>(*code));
    if (symbol[0] == 0 || symbol[1] == 0) return {};
    return symbol;
}

void take_out(std::vector<Sjis> &symbols, const Sjis &symbol) {
    symbols.erase(std::remove(symbols.begin(), symbols.end(), symbol), symbols.end());
}

RecentPicks not_done(const Failure &failure, std::vector<Sjis> symbols = {}) {
    const bool busy = failure.kind() == FailureKind::busy;
    return {std::move(symbols), false,
            busy ? sentence("another program held the recent picks for too long") : failure.what()};
}

bool is_utf8(std::string_view text) {
    return to_characters(text).find(replacement_character) == std::u32string::npos;
}

} // namespace

Recents::Recents(std::string folder, std::size_t limit)
    : folder_(std::move(folder)),
      path_((fs::path(folder_) / "recents").string()),
      limit_(std::min(limit, most)) {}

/** The file as it is. @throws Failure when that cannot be known now */
Recents::File Recents::look() const {
    struct stat status {};
    if (lstat(path_.c_str(), &status) != 0) {
        if (errno == ENOENT || errno == ENOTDIR) return {};
        throw Failure(FailureKind::failed,
                      sentence("cannot read {1}: {2}", path_, std::strerror(errno)));
    }
    // A link could lead to any file, and what is no file has no lines.
    if (S_ISLNK(status.st_mode)) return {{}, sentence("it was a link")};
    if (!S_ISREG(status.st_mode)) return {{}, sentence("it was no file")};
    if (access(path_.c_str(), R_OK) != 0 && errno == EACCES)
        return {{}, sentence("it could not be read")};
    const Sjis bytes = read_head(path_, most_file);
    File file;
    std::string line;
    for (const unsigned char byte : bytes) {
        if (byte != '\n') {
            line += static_cast<char>(byte);
            continue;
        }
        if (line.ends_with('\r')) line.pop_back();
        Sjis symbol = symbol_of(line);
        if (!line.empty() && (symbol.empty() || !is_utf8(line))) {
            file.damage = sentence("it held lines that are no symbols");
        }
        const bool known = std::ranges::find(file.symbols, symbol) != file.symbols.end();
        if (!symbol.empty() && !known) file.symbols.push_back(std::move(symbol));
        line.clear();
    }
    if (!line.empty()) file.damage = sentence("its last line was cut off");
    if (static_cast<std::size_t>(status.st_size) > most_file)
        file.damage = sentence("it was too large");
    if (file.symbols.size() > limit_) file.symbols.resize(limit_);
    return file;
}

/** Gives the damaged file another name. @return a line for people */
std::string Recents::put_aside(const std::string &damage) const {
    const std::string aside = path_ + damaged_suffix;
    unlink(aside.c_str()); // an earlier one, which may be of another kind
    // What can be read of it stays until the new file is written. A folder has but one name.
    if (link(path_.c_str(), aside.c_str()) != 0 && std::rename(path_.c_str(), aside.c_str()) != 0) {
        throw Failure(FailureKind::failed,
                      sentence("{1} is damaged ({2}) and cannot be renamed: {3}", path_, damage,
                               std::strerror(errno)));
    }
    return sentence("the file of the recent picks was damaged ({1}) and is {2} now", damage, aside);
}

/** Removes what killed processes began to write. */
void Recents::sweep() const {
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with(unfinished_prefix)) remove_leftover(entry->path().string());
    }
}

/** Reads, changes and writes under the lock; writes nothing that is there already. */
RecentPicks Recents::change(const std::function<void(Symbols &)> &edit) const {
    RecentPicks picks;
    try {
        make_private_directory(folder_);
        const FolderLock lock(folder_, {.patience = patience});
        sweep();
        File file = look();
        picks.symbols = file.symbols;
        edit(file.symbols);
        if (file.symbols.size() > limit_) file.symbols.resize(limit_);
        if (!file.damage.empty()) picks.trouble = put_aside(file.damage);
        if (file.damage.empty() && file.symbols == picks.symbols) return picks;
        std::string text;
        for (const Sjis &symbol : file.symbols) text += line_of(symbol) + "\n";
        replace_file(path_, {reinterpret_cast<const unsigned char *>(text.data()), text.size()},
                     0600);
        picks.symbols = std::move(file.symbols);
    } catch (const Failure &failure) {
        const std::string told = std::exchange(picks.trouble, {});
        picks = not_done(failure, std::move(picks.symbols));
        if (!told.empty()) picks.trouble = sentence("{1}; {2}", told, picks.trouble);
    }
    return picks;
}

/** Removes the file and what was put aside of it; an empty folder goes as well. */
RecentPicks Recents::forget() const {
    RecentPicks picks;
    for (const std::string &path : {path_, path_ + damaged_suffix}) {
        if (std::remove(path.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR) continue;
        picks.done = false;
        picks.trouble = sentence("cannot remove {1}: {2}", path, std::strerror(errno));
    }
    sweep();
    return picks;
}

RecentPicks Recents::read() const {
    if (limit_ == 0) return forget();
    Symbols readable;
    try {
        File file = look();
        readable = std::move(file.symbols);
        if (file.damage.empty()) return {std::move(readable)};
    } catch (const Failure &failure) {
        return not_done(failure);
    }
    RecentPicks picks = change([](Symbols &) {});
    if (!picks.done) picks.symbols = std::move(readable);
    return picks;
}

RecentPicks Recents::add(const Sjis &symbol) const {
    if (limit_ == 0) return forget();
    return change([&](Symbols &symbols) {
        if (symbol_of(line_of(symbol)) != symbol) return;
        take_out(symbols, symbol);
        symbols.insert(symbols.begin(), symbol);
    });
}

RecentPicks Recents::remove(const Sjis &symbol) const {
    if (limit_ == 0) return forget();
    return change([&](Symbols &symbols) { take_out(symbols, symbol); });
}

RecentPicks Recents::clear() const {
    RecentPicks picks;
    try {
        const FolderLock lock(folder_, {.patience = patience});
        picks = forget();
    } catch (const Failure &failure) {
        picks = not_done(failure);
    }
    if (!picks.done) picks.symbols = read().symbols;
    return picks;
}

} // namespace kigou
