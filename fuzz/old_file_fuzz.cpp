// The input as an old-format file, appended to an open file.
//
// Whatever the bytes are: either all of them became blocks that come back the same from a
// save, or message 16 stands in the record and the open file is as it was; in both cases
// nothing is left but the working temp file.
#include <cstdint>
#include <cstring>

#include "fuzz/canary_host.h"
#include "fuzz/scratch.h"

namespace {

namespace fs = std::filesystem;

// 例 with one block, A, that holds an arrow.
const std::string open_file =
    "\xA1\xD2\xB5\xAD\xB9\xE6\xA1\xD3\n\xCC\xBE\xBE\xCE=\xCE\xE3\n\xA1\xCE"
    "A\xA1\xCF\n" +
    std::string(40, '-') + "\n\xA2\xAA\n" + std::string(40, '-') + "\n";
const std::string title = "\x97\xE1";

std::size_t files_in(const fs::path &directory) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(directory), fs::directory_iterator()));
}

/** The working text. */
std::string working_text() {
    const std::string bytes = content(text(g_tAccFile[1].ucFullName));
    std::uint32_t text_offset;
    std::memcpy(&text_offset, bytes.data() + 4, sizeof text_offset);
    return bytes.substr(text_offset);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const Scratch scratch;
    static CanaryHost &host = *new CanaryHost(scratch.files);
    write(scratch.files / "a.kig", open_file);
    const fs::path old = scratch.root / "old.ini";
    write(old, {reinterpret_cast<const char *>(data), size});
    fs::current_path(scratch.root);
    host.record.wCurrentList = 1;
    HOLDS(host.run(ACC_VKEY_FILE_OPEN, title) == ACC_RET_OK);
    const int descriptors = descriptors_in_use();
    const std::string before = working_text();

    const int result = host.run(ACC_VKEY_FILE_CONVERT, "old.ini");
    const std::string after = working_text();
    HOLDS(files_in(scratch.files) == 1 && files_in(scratch.temp) == 1);
    HOLDS(descriptors_in_use() == descriptors);
    if (result == ACC_RET_ERROR) {
        HOLDS(host.record.cchMessage == 40 && after == before);
    } else {
        HOLDS(result == ACC_RET_OK && after.starts_with(before) && after.size() > before.size());
    }

    HOLDS(host.run(ACC_VKEY_FILE_SAVE, title) == ACC_RET_OK);
    HOLDS(host.run(ACC_VKEY_FILE_CLOSE) == ACC_RET_OK);
    HOLDS(host.run(ACC_VKEY_FILE_OPEN, title) == ACC_RET_OK);
    HOLDS(working_text() == after);
    HOLDS(host.run(ACC_VKEY_FILE_CLOSE) == ACC_RET_OK);
    return 0;
}
