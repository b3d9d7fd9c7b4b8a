#include "fuzz/walk_checks.h"

#include <map>
#include <set>
#include <vector>

#include "fuzz/edit_model.h"
#include "fuzz/shown_record.h"

namespace fs = std::filesystem;

namespace {

/** The results that are documented for each command; any other code answers 2. */
const std::map<int, std::set<int>> documented = {
    {ACC_VKEY_DECISION, {1, 2}},         {ACC_VKEY_NEXT_BLOCK, {0, 1, 2}},
    {ACC_VKEY_RIGHT_ITEM, {1, 2}},       {ACC_VKEY_LEFT_ITEM, {1, 2}},
    {ACC_VKEY_FILE_OPEN, {0, 1, 4}},     {ACC_VKEY_FILE_CLOSE, {0, 1}},
    {ACC_VKEY_DATA_REGISTER, {0, 1, 2}}, {ACC_VKEY_BEFORE_BLOCK, {0, 1, 2}},
    {ACC_VKEY_BEFORE_ITEM, {1, 2}},      {ACC_VKEY_NEXT_ITEM, {1, 2}},
    {ACC_VKEY_GET_INFO, {1, 2}},         {ACC_VKEY_FILE_NEW, {-1, 0, 1}},
    {ACC_VKEY_FILE_SAVE, {-1, 0, 1}},    {ACC_VKEY_FILE_DELETE, {0, 1}},
    {ACC_VKEY_TITLE_ADD, {0, 1, 2}},     {ACC_VKEY_TITLE_CHANGE, {0, 1, 2}},
    {ACC_VKEY_TITLE_DELETE, {0, 1, 2}},  {ACC_VKEY_FILE_CHECK, {0, 1}},
    {ACC_VKEY_TREE_TITLES, {1, 2}},      {ACC_VKEY_GET_EDIT, {1, 2}},
    {ACC_VKEY_SET_ATTRIBUTE, {0, 1, 2}}, {ACC_VKEY_SET_POSITION, {-1, 0, 1, 2}},
    {ACC_VKEY_FILE_TITLES, {0, 1}},      {ACC_VKEY_FILE_CONVERT, {0, 1}}};

bool is_documented(int command, int result) {
    const auto row = documented.find(command);
    return row == documented.end() ? result == ACC_RET_NONE : row->second.contains(result);
}

/** Paths of the entries that are not the same in both, or that are other files now. */
std::vector<std::string> changed(const Entries &before, const Entries &after) {
    std::vector<std::string> paths;
    for (const auto &[path, entry] : before) {
        const auto now = after.find(path);
        if (now == after.end() || !(now->second == entry) ||
            now->second.status.st_ino != entry.status.st_ino) {
            paths.push_back(path);
        }
    }
    for (const auto &[path, entry] : after) {
        if (!before.contains(path)) paths.push_back(path);
    }
    return paths;
}

bool writes_files(int command) {
    return command == ACC_VKEY_FILE_NEW || command == ACC_VKEY_FILE_SAVE ||
           command == ACC_VKEY_FILE_DELETE || command == ACC_VKEY_FILE_CONVERT;
}

/** Whether the file that was opened last holds more behind a NUL byte. */
bool is_cut(const std::string &path) {
    const std::string bytes = content(path);
    const std::size_t nul = bytes.find('\0');
    return nul != std::string::npos && nul + 1 < bytes.size();
}

} // namespace

WalkChecks::WalkChecks(CanaryHost &host, const OddFolders &folders, fs::path temp)
    : host_(host),
      folders_(folders),
      temp_(std::move(temp)),
      reader_(host, temp_.parent_path() / "fresh"),
      descriptors_(descriptors_in_use()) {}

Seen WalkChecks::look(const Seen &last, int command) const {
    Seen seen{};
    seen.files = last.files;
    if (command == 0 || writes_files(command) || !are_untouched(*last.files)) {
        seen.files = std::make_shared<const Entries>(entries_below(folders_.root));
    }
    const bool is_open = g_tAccFile[1].hFile != 0;
    const std::vector<fs::path> working{fs::directory_iterator(temp_), fs::directory_iterator()};
    HOLDS(working.size() == (is_open ? 1 : 0));
    HOLDS(descriptors_in_use() == descriptors_ + (is_open ? 1 : 0));
    if (is_open) {
        seen.working = content(working[0]);
        seen.open = last.open;
        if (!last.open || seen.working != last.working) {
            seen.open = std::make_shared<const TempFile>(seen.working);
            check_records(*seen.open);
        }
        seen.cut = last.open ? last.cut : is_cut(text(g_tAccFile[0].ucFullName));
        if (command == ACC_VKEY_FILE_NEW) seen.cut = false;
    }
    seen.edited = SYM_GetEdit() == ACC_RET_OK;
    for (const ListBox &list : host_.record.tListBox) walk(list);
    look_at_record(seen);
    return seen;
}

void WalkChecks::look_at_record(Seen &seen) const {
    seen.list = host_.record.wCurrentList;
    seen.shown.clear();
    if (seen.list >= 1 && seen.list <= ACC_LISTBOX_MAX) {
        const auto *level = reinterpret_cast<const char *>(host_.current().lpchLBLevel);
        seen.shown.assign(level, strnlen(level, ACC_SIZE_LB_LEVEL));
    }
}

void WalkChecks::check(const Sent &sent, int result, const Seen &before, const Seen &after) const {
    const Accdata &record = host_.record;
    const int command = sent.command, message = message_number(record);
    HOLDS(is_documented(command, result));
    HOLDS(record.cchMessage == text(record.lpchMessage).size());
    HOLDS((record.cchMessage == 0) == (message < 0));
    HOLDS(result != ACC_RET_ERROR || message >= 0 || command == ACC_VKEY_FILE_TITLES ||
          command == ACC_VKEY_SET_POSITION);

    HOLDS(message != 1 || command == ACC_VKEY_FILE_SAVE || !fs::is_directory(getenv("TMPDIR")));

    const bool done = result == ACC_RET_OK;
    if (after.files != before.files &&
        !(done && (command == ACC_VKEY_FILE_SAVE || command == ACC_VKEY_FILE_DELETE))) {
        HOLDS(changed(*before.files, *after.files).empty());
    }
    if (command == ACC_VKEY_FILE_SAVE || command == ACC_VKEY_FILE_NEW) {
        HOLDS(message != 7 || !all_can_be_seen(after));
    }
    if (command == ACC_VKEY_FILE_NEW) {
        HOLDS(done == (after.open != nullptr));
    } else if (command == ACC_VKEY_FILE_SAVE && before.open) {
        check_save(sent, result, before, after);
    } else if (is_edit(command) && (done || result == ACC_RET_ERROR)) {
        check_edit(sent, before, after); // 0: made, but the lists cannot be refilled
    } else if (command == ACC_VKEY_FILE_CONVERT && done) {
        check_converted(before, after);
    } else if (!done || (command != ACC_VKEY_FILE_OPEN && command != ACC_VKEY_FILE_CLOSE)) {
        HOLDS(before.working == after.working);
        HOLDS(before.edited == after.edited || command == ACC_VKEY_FILE_CONVERT);
    }
    if (command == ACC_VKEY_FILE_DELETE && done) {
        const std::vector<std::string> gone = changed(*before.files, *after.files);
        HOLDS(gone.empty() || (gone.size() == 1 && !after.files->contains(gone[0])));
    }
    if (done) check_shown(record, sent, after);
}

void WalkChecks::check_edit(const Sent &sent, const Seen &before, const Seen &after) const {
    const std::string operand = sent.strings[0].value_or("");
    const bool renames = sent.command == ACC_VKEY_TITLE_CHANGE;
    const bool of_the_file = renames && before.list == 1;
    HOLDS(!renames || of_the_file || !has_stray_title(*before.open));
    hold_same(blocks_of(*after.open),
              of_the_file ? blocks_of(*before.open)
                          : after_edit(*before.open, sent.command, before.shown, operand));
    // A file title that is the same as before is no change.
    HOLDS(after.edited || (of_the_file && !before.edited && after.working == before.working));
    if (!after.edited) return;
    if (renames || sent.command == ACC_VKEY_TITLE_ADD) HOLDS(is_plain_title(operand));
    if (sent.command == ACC_VKEY_DATA_REGISTER) HOLDS(comes_back(operand));
}

/** The blocks that there were are there; behind them are such that an edit would accept. */
void WalkChecks::check_converted(const Seen &before, const Seen &after) const {
    const std::vector<Titled> old = blocks_of(*before.open), blocks = blocks_of(*after.open);
    HOLDS(blocks.size() >= old.size() && after.edited);
    const auto end_of_old = blocks.begin() + static_cast<std::ptrdiff_t>(old.size());
    hold_same({blocks.begin(), end_of_old}, old);
    for (auto block = end_of_old; block != blocks.end(); ++block) {
        HOLDS(block->level == 2 && is_plain_title(block->path) && comes_back(block->data));
    }
}

/** Saves what comes back the same, and nothing else. */
void WalkChecks::check_save(const Sent &sent, int result, const Seen &before,
                            const Seen &after) const {
    // A new file title may stay, whatever became of the rest.
    hold_same(blocks_of(*after.open), blocks_of(*before.open));
    if (result == ACC_RET_OK) return check_saved(sent, before, after);
    HOLDS(after.edited || !before.edited);
    HOLDS(message_number(host_.record) != 8 || after.cut || !comes_back(after.open->text) ||
          !is_listed_whole(after.open->text));
}

/** One file is new or another one, and holds what the index had. */
void WalkChecks::check_saved(const Sent &sent, const Seen &before, const Seen &after) const {
    HOLDS(!after.edited && !after.cut);
    const std::vector<std::string> written = changed(*before.files, *after.files);
    HOLDS(written.size() == 1 && after.files->contains(written[0]));
    const Entry &saved = after.files->at(written[0]);
    const auto old = before.files->find(written[0]);
    if (old != before.files->end()) {
        HOLDS(saved.status.st_mode == old->second.status.st_mode);
        HOLDS(text(before.open->records[0].ucTitle) == text(after.open->records[0].ucTitle));
    } else {
        // A title counts as new only while all files can be seen.
        const fs::path path = written[0];
        HOLDS(path.parent_path() == folders_.common && fs::is_directory(folders_.program));
        HOLDS(path.filename().native().starts_with("@") && path.extension() == ".kig");
        HOLDS(text(after.open->records[0].ucTitle) == sent.strings[0]);
    }
    reader_.look(saved.bytes, *after.open);
}

/** Whether a scan of the directories misses nothing; a link can hide something. */
bool WalkChecks::all_can_be_seen(const Seen &seen) const {
    const auto common = seen.files->find(folders_.common);
    if (!fs::is_directory(folders_.program)) return false;
    if (common != seen.files->end() && !S_ISDIR(common->second.status.st_mode)) return false;
    return std::none_of(seen.files->begin(), seen.files->end(),
                        [&](const auto &entry) { return S_ISLNK(entry.second.status.st_mode); });
}
