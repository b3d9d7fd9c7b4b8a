#include "fuzz/edit_model.h"

#include <algorithm>

#include "common/sjis_text.h"
#include "fuzz/walk_log.h"

namespace {

const std::string separator = "\x81\x5E";

std::string without_last_title(const std::string &path) {
    const auto *bytes = reinterpret_cast<const unsigned char *>(path.c_str());
    const auto *cut = acc::find_last_char(bytes, 0x815E);
    return cut ? path.substr(0, static_cast<std::size_t>(cut - bytes) + 2) : "";
}

int level_of(const std::string &path) {
    int level = 2;
    const auto *at = reinterpret_cast<const unsigned char *>(path.c_str());
    while ((at = acc::find_char(at, 0x815E))) {
        at += separator.size();
        ++level;
    }
    return level;
}

} // namespace

std::vector<Titled> blocks_of(const TempFile &file) {
    const std::size_t file_title_bytes = text(file.records[0].ucTitle).size();
    std::vector<Titled> blocks;
    for (std::size_t i = 1; i < file.records.size(); ++i) {
        const TempInfo &block = file.records[i];
        blocks.push_back({text(block.ucPath).substr(file_title_bytes + separator.size()),
                          file.data_of(block), block.usLevel});
    }
    return blocks;
}

std::vector<Titled> after_edit(const TempFile &file, int command, const std::string &shown,
                               const std::string &operand) {
    std::vector<Titled> blocks = blocks_of(file);
    const std::size_t file_title_bytes = text(file.records[0].ucTitle).size();
    const bool is_file = shown.size() == file_title_bytes;
    if (is_file) {
        HOLDS(command == ACC_VKEY_TITLE_ADD);
        blocks.push_back({operand, "", 2});
        return blocks;
    }
    const std::string path = shown.substr(file_title_bytes + separator.size());
    const std::string below = path + separator;
    const auto named = std::find_if(blocks.begin(), blocks.end(),
                                    [&](const Titled &block) { return block.path == path; });
    HOLDS(named != blocks.end());
    const auto is_below = [&](const Titled &block) { return block.path.starts_with(below); };
    switch (command) {
        case ACC_VKEY_TITLE_ADD: {
            const auto last = std::find_if(blocks.rbegin(), blocks.rend(), is_below).base();
            const auto place = last > named ? last : named + 1;
            blocks.insert(place, {below + operand, "", level_of(below + operand)});
            break;
        }
        case ACC_VKEY_TITLE_CHANGE: {
            const std::string renamed = without_last_title(path) + operand;
            for (Titled &block : blocks) {
                if (is_below(block)) block.path.replace(0, path.size(), renamed);
            }
            named->path = renamed;
            for (Titled &block : blocks) block.level = level_of(block.path); // all lines are new
            break;
        }
        case ACC_VKEY_TITLE_DELETE:
            blocks.erase(named);
            std::erase_if(blocks, is_below);
            break;
        default:
            named->data = operand;
    }
    return blocks;
}

bool has_stray_title(const TempFile &file) {
    const auto has_bracket = [&file](std::size_t begin, std::size_t end) {
        const std::string part = file.text.substr(std::min(begin, end), end - begin);
        return acc::find_char(reinterpret_cast<const unsigned char *>(part.c_str()), 0x816D);
    };
    std::size_t end = std::string::npos; // of the last block's end line
    const std::vector<Titled> blocks = blocks_of(file);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const TempInfo &record = file.records[i + 1];
        const std::string in_brackets = blocks[i].path + "\x81\x6E";
        // Of several brackets on a title line the last ones count.
        const std::size_t path =
            file.text.rfind(in_brackets, record.ulDataPos - in_brackets.size());
        if (has_bracket(path + in_brackets.size(), record.ulDataPos)) return true;
        end = file.text.find_first_not_of('-', record.ulDataPos + blocks[i].data.size());
    }
    // The two bytes behind an end line are its line's end, whatever they are.
    return end < file.text.size() && has_bracket(end + 2, file.text.size());
}

void hold_same(const std::vector<Titled> &blocks, const std::vector<Titled> &meant) {
    if (blocks == meant) return;
    const auto [is, should] =
        std::mismatch(blocks.begin(), blocks.end(), meant.begin(), meant.end());
    const auto print = [](const char *what, auto block, auto end) {
        if (block == end) return void(std::fprintf(stderr, "%s: no more block\n", what));
        std::fprintf(stderr, "%s: level %d %s: %s\n", what, block->level,
                     printable(block->path).c_str(), printable(block->data).c_str());
    };
    print("is", is, blocks.end());
    print("should be", should, meant.end());
    HOLDS(blocks == meant);
}
