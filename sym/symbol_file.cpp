#include "sym/symbol_file.h"

#include <climits>
#include <cstring>

#include "common/acccom.h"
#include "common/stream.h"

namespace acc {

int SymFileOpen(const unsigned char *path) {
    static constexpr unsigned char standard_file[] = "default.kig";
    AccFile &file = g_tAccFile[0];
    std::memset(&file, 0, sizeof file);
    const char *slash = std::strrchr(reinterpret_cast<const char *>(path), '/');
    const unsigned char *name = reinterpret_cast<const unsigned char *>(slash) + 1;
    CM_strncpy(file.ucDir, path, static_cast<short>(name - path));
    CM_strcpy(file.ucName, name);
    CM_strcpy(file.ucFullName, path);
    return open_regular(path, CM_strcmp(name, standard_file) == 0 ? "rb" : "r+b");
}

bool SymFileRead(WholeFile disk, SymbolText &result) {
    const auto length_of = [](const HeapBlock<unsigned char> &bytes) {
        return std::strlen(reinterpret_cast<const char *>(bytes.get()));
    };
    result.cut = length_of(disk.bytes) + 1 < disk.length;
    result.bytes.reset(CM_euc2sjis(disk.bytes.get()));
    if (!result.bytes) return false;
    const std::size_t length = length_of(result.bytes);
    if (length > INT_MAX) return false; // its offsets would not fit the temp file
    result.length = static_cast<std::uint32_t>(length);
    return has_symbol_header(result.text()) &&
           find_file_title(result.text(), result.length + 6, result.title) &&
           result.title.length <= max_file_title;
}

} // namespace acc
