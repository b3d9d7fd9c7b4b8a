// The input as a symbol file on disk, opened, browsed and closed as a host would.
//
// Whatever the bytes are: every command gives a documented result, no buffer is overrun,
// the working temp file describes itself truly, what the lists and the title list show
// agrees with it, and after the close no file and no descriptor is left.
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "common/sjis_text.h"
#include "fuzz/canary_host.h"
#include "fuzz/scratch.h"
#include "fuzz/temp_file.h"

namespace {

namespace fs = std::filesystem;

using FirstRecords = std::map<std::string, const TempInfo *>;

/** Whether the refresh of that title finds a record for each list up to the first. */
bool has_ancestors(const FirstRecords &first, const TempInfo &node, std::size_t title_bytes) {
    std::string path = text(node.ucPath);
    for (int list = node.usLevel; list > 0; --list) {
        if (!first.contains(path)) return false;
        if (path.size() == title_bytes) continue;
        const auto *titles =
            reinterpret_cast<const unsigned char *>(path.c_str()) + title_bytes + 2;
        const auto *cut = acc::find_last_char(titles, 0x815E);
        path.resize(cut ? title_bytes + 2 + static_cast<std::size_t>(cut - titles) : title_bytes);
    }
    return true;
}

void position(CanaryHost &host, const FirstRecords &first, const std::string &path,
              std::size_t title_bytes) {
    const TempInfo &node = *first.at(path);
    const int result = host.run(ACC_VKEY_SET_POSITION, path);
    HOLDS(result == (has_ancestors(first, node, title_bytes) ? ACC_RET_OK : ACC_RET_ERROR));
    HOLDS(host.record.wCurrentList == node.usLevel && text(host.current().lpchLBLevel) == path);
    const unsigned symbols = walk(host.current());
    const bool cut_short = host.record.cchMessage != 0;
    HOLDS(cut_short ? symbols <= node.ulSymbolNum : symbols == node.ulSymbolNum);
}

void browse(CanaryHost &host, const TempFile &temp) {
    FirstRecords first;
    for (const TempInfo &record : temp.records) first.emplace(text(record.ucPath), &record);

    HOLDS(host.run(ACC_VKEY_TREE_TITLES) == ACC_RET_OK);
    const std::vector<std::string> titles = displayed(host.record);
    HOLDS(host.record.cchMessage != 0 || titles.size() == temp.records.size());
    for (std::size_t i = 0; i < titles.size(); ++i)
        HOLDS(titles[i] == text(temp.records[i].ucPath));

    static constexpr int keys[] = {
        ACC_VKEY_GET_INFO,    ACC_VKEY_DECISION,   ACC_VKEY_NEXT_ITEM,
        ACC_VKEY_NEXT_BLOCK,  ACC_VKEY_RIGHT_ITEM, ACC_VKEY_GET_INFO,
        ACC_VKEY_BEFORE_ITEM, ACC_VKEY_LEFT_ITEM,  ACC_VKEY_BEFORE_BLOCK};
    for (std::size_t i = 0; i < titles.size() && i < 24 && temp.records.size() > 1; ++i) {
        position(host, first, titles[i], titles[0].size());
        for (const int key : keys) {
            const int result = host.run(key);
            HOLDS(result == ACC_RET_OK || result == ACC_RET_NONE || result == ACC_RET_ERROR);
            HOLDS(host.record.wCurrentList >= 1 && host.record.wCurrentList <= ACC_LISTBOX_MAX);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const Scratch scratch;
    static CanaryHost &host = *new CanaryHost(scratch.files);
    const std::string input(reinterpret_cast<const char *>(data), size);
    const fs::path path = scratch.files / "input.kig";
    write(path, input);
    const int descriptors = descriptors_in_use();

    // A geometry that depends on the input: from none at all to headers wider than a list.
    static constexpr unsigned headers[] = {4, 4, 4, 0, 1, 2, 3, 9, 65535};
    static constexpr unsigned pages[] = {9, 9, 1, 0, 20, 65535};
    host.record.wCurrentList = 1;
    HOLDS(host.set_attribute(pages[size % std::size(pages)], headers[size % std::size(headers)],
                             64) == ACC_RET_OK);

    // The first open tells the library its directories; no file has this title.
    HOLDS(host.run(ACC_VKEY_FILE_OPEN, "\x01") == ACC_RET_ERROR ||
          host.run(ACC_VKEY_FILE_CLOSE) == 1);
    HOLDS(host.run(ACC_VKEY_FILE_TITLES, "") == ACC_RET_OK);
    for (const std::string &title : displayed(host.record)) {
        const int result = host.run(ACC_VKEY_FILE_OPEN, title);
        if (result != ACC_RET_OK) {
            HOLDS(result == ACC_RET_ERROR || result == ACC_RET_LBMEMORY);
            HOLDS(host.record.cchMessage != 0 && g_tAccFile[1].hFile == 0);
            continue;
        }
        const TempFile temp(only_file(scratch.temp));
        check_records(temp);
        for (std::size_t i = 0; i < temp.records.size(); ++i) {
            HOLDS(temp.records[i].usBlockNo == i + 1);
            HOLDS(temp.records[i].usLevel <= ACC_LISTBOX_MAX);
        }
        browse(host, temp);
        HOLDS(host.run(ACC_VKEY_GET_EDIT) == ACC_RET_NONE);
        HOLDS(host.run(ACC_VKEY_FILE_CLOSE) == ACC_RET_OK);
    }
    HOLDS(host.run(ACC_VKEY_FILE_CLOSE) == ACC_RET_ERROR);
    HOLDS(fs::is_empty(scratch.temp) && descriptors_in_use() == descriptors);
    HOLDS(content(path) == input);
    return 0;
}
