#include "sym/symbol_file.h"

#include <climits>
#include <cstring>

#include "common/acccom.h"

namespace acc {

int SymFileOpen(const unsigned char *path) {
    static constexpr unsigned char slash[] = "/";
    static constexpr unsigned char standard_file[] = "default.kig";
    AccFile &file = g_tAccFile[0];
    std::memset(&file, 0, sizeof file);
    const unsigned char *name = CM_strpbrke(path, slash) + 1;
    CM_strncpy(file.ucDir, path, static_cast<short>(name - path));
    CM_strcpy(file.ucName, name);
    CM_strcpy(file.ucFullName, path);
    return CM_open(path, CM_strcmp(name, standard_file) == 0 ? "rb" : "r+b");
}

bool SymFileRead(int handle, HeapBlock<unsigned char> raw, int size, SymbolText &result) {
    if (CM_read(handle, size, raw.get()) != size) return false;
    result.bytes.reset(CM_euc2sjis(raw.get()));
    if (!result.bytes) return false;
    const std::size_t length = std::strlen(reinterpret_cast<const char *>(result.bytes.get()));
    if (length > INT_MAX) return false; // its offsets would not fit the temp file
    result.length = static_cast<std::uint32_t>(length);
    return has_symbol_header(result.text()) &&
           find_file_title(result.text(), result.length + 6, result.title) &&
           result.title.length <= max_file_title;
}

} // namespace acc
