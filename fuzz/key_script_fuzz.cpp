// The input as a script of commands on a small file: a byte chooses the command, the next
// one its operand or what the host does to the cursor before it.
//
// Whatever the script is: every result is a documented one, no buffer is overrun, after
// each command the temp file agrees with the tree titles, and what was saved last is what
// the next open shows.
#include <cstdint>
#include <cstring>
#include <iterator>

#include "fuzz/canary_host.h"
#include "fuzz/scratch.h"

namespace {

namespace fs = std::filesystem;

constexpr int commands[] = {
    ACC_VKEY_DECISION,      ACC_VKEY_NEXT_BLOCK,   ACC_VKEY_RIGHT_ITEM,   ACC_VKEY_LEFT_ITEM,
    ACC_VKEY_FILE_OPEN,     ACC_VKEY_FILE_CLOSE,   ACC_VKEY_BEFORE_BLOCK, ACC_VKEY_BEFORE_ITEM,
    ACC_VKEY_NEXT_ITEM,     ACC_VKEY_GET_INFO,     ACC_VKEY_FILE_NEW,     ACC_VKEY_FILE_SAVE,
    ACC_VKEY_TITLE_ADD,     ACC_VKEY_TITLE_CHANGE, ACC_VKEY_TITLE_DELETE, ACC_VKEY_DATA_REGISTER,
    ACC_VKEY_FILE_CHECK,    ACC_VKEY_GET_EDIT,     ACC_VKEY_SET_POSITION, ACC_VKEY_FILE_TITLES,
    ACC_VKEY_SET_ATTRIBUTE, ACC_VKEY_FILE_DELETE,  ACC_VKEY_FILE_CONVERT, 77};

// Titles, paths, data and things that are none of them.
const std::string operands[] = {"F",
                                "G",
                                "A",
                                "AB",
                                "F\x81\x5E"
                                "A",
                                "F\x81\x5E"
                                "A\x81\x5E"
                                "A",
                                "F\x81\x5E"
                                "AB",
                                "G\x81\x5E"
                                "A",
                                "\x82\xA0",
                                "\x81\xA8\x81\xA9\r\n",
                                "ab\r\n--",
                                "----",
                                "odd",
                                "",
                                "\x81",
                                std::string(300, 'x'),
                                std::string(80, '-'),
                                "\x81\x6D",
                                "\x83\x81^",
                                std::string(254, 'y')};

std::size_t strings_in_display(const Accdata &record) {
    std::size_t strings = 0;
    for (std::size_t at = 0; at < record.cchDisplay; ++strings) {
        at += text(record.lpchDisplay + at).size() + 1;
    }
    return strings;
}

/** The temp file and the index in memory, as the tree titles show it, hold as many records. */
void check_index(CanaryHost &host) {
    const bool open = g_tAccFile[1].hFile != 0;
    HOLDS(host.run(ACC_VKEY_TREE_TITLES) == (open ? ACC_RET_OK : ACC_RET_NONE));
    if (!open) return;
    const std::string bytes = content(text(g_tAccFile[1].ucFullName));
    std::uint16_t count;
    std::memcpy(&count, bytes.data(), sizeof count);
    HOLDS(bytes.size() > 8 + 792u * count && strings_in_display(host.record) == count);
}

void run_script(CanaryHost &host, const std::uint8_t *data, std::size_t size) {
    for (std::size_t i = 0; i + 1 < size && i < 200; i += 2) {
        const int command = commands[data[i] % std::size(commands)];
        const std::string &operand = operands[data[i + 1] % std::size(operands)];
        if (data[i] >= 250) host.record.wCurrentList = data[i + 1] % 13;
        if (data[i] == 249) host.record.tListBox[data[i + 1] % 10].cchLBItemNum = data[i + 1];
        const int result = command == ACC_VKEY_SET_ATTRIBUTE
                               ? host.set_attribute(data[i + 1] % 12, data[i + 1] / 12 % 7, 64)
                               : host.run(command, operand);
        // Titles can be added ever deeper, and then such a file is saved and opened.
        HOLDS((result >= -1 && result <= 2) ||
              (result == ACC_RET_LBMEMORY && command == ACC_VKEY_FILE_OPEN));
        check_index(host);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const Scratch scratch;
    static CanaryHost &host = *new CanaryHost(scratch.files);
    for (const auto &entry : fs::directory_iterator(scratch.files)) fs::remove(entry.path());
    const std::string line = std::string(40, '-') + "\n", bracket = "\xA1\xCE", end = "\xA1\xCF\n";
    write(scratch.files / "a.kig",
          "\xA1\xD2\xB5\xAD\xB9\xE6\xA1\xD3\n\xCC\xBE\xBE\xCE=F\n" + bracket + "A" + end + line +
              "\xA2\xAA\xA2\xAB\n" + line + bracket +
              "A\xA1\xBF"
              "A" +
              end + line + line + bracket + "AB" + end + line + "\xA1\xFC" + line);
    fs::current_path(scratch.root);
    host.record.wCurrentList = 1;
    HOLDS(host.run(ACC_VKEY_FILE_OPEN, "F") == ACC_RET_OK);
    run_script(host, data, size);

    // Everything that is listed opens, whatever was saved, and closes without a trace.
    host.run(ACC_VKEY_FILE_CLOSE);
    HOLDS(fs::is_empty(scratch.temp));
    HOLDS(host.run(ACC_VKEY_FILE_TITLES, "") == ACC_RET_OK);
    std::string titles(reinterpret_cast<char *>(host.record.lpchDisplay), host.record.cchDisplay);
    for (std::size_t at; (at = titles.find('\0')) != std::string::npos; titles.erase(0, at + 1)) {
        const int result = host.run(ACC_VKEY_FILE_OPEN, titles.substr(0, at));
        HOLDS(result == ACC_RET_OK || result == ACC_RET_LBMEMORY);
        host.run(ACC_VKEY_FILE_CLOSE);
    }
    return 0;
}
