// library_messages.cpp - see library_messages.h.
#include "picker/library_messages.h"

namespace kigou {

const std::array<LibraryMessage, 20> library_messages{{
    {"記号ファイルが存在しません。", "the symbol file does not exist", "", Remedy::list_sets},
    {"ファイルのオープンに失敗しました。", "a file could not be opened",
     "check that the temporary directory (TMPDIR) exists, is writable and has room"},
    {"引数エラー", "a directory name is empty or too long", "", Remedy::check_folders},
    {"詳細情報はありません。", "there is no detailed information", ""},
    {"メモリが割り当てられていません。", "memory has not been allocated", ""},
    {"ファイルが開いています。", "a file is already open", ""},
    {"記号ファイルではありません。", "not a symbol file",
     "the file must be EUC-JP text with LF line ends that begins with 〈記号〉, with titles and "
     "paths within their limits"},
    {"ファイルの読み込みに失敗しました。", "reading a file failed", ""},
    {"ファイルの書き込みに失敗しました。", "writing a file failed",
     "check that the temporary directory (TMPDIR) has room"},
    {"リストボックスのメモリが足りません。", "not enough list-box memory",
     "a symbol file may be ten levels deep, its own title included"},
    {"ファイルが開いていません。", "no file is open", ""},
    {"メモリの確保に失敗しました。", "allocating memory failed", ""},
    {"記号タイトルが既に存在します。", "the symbol title already exists", ""},
    {"入力エラーです。", "the input is not acceptable", ""},
    {"親タイトルは削除できません。", "a parent title cannot be deleted",
     "the symbol file itself was meant"},
    {"親タイトルには登録できません。", "symbols cannot be registered under a parent title",
     "name a title of the file"},
    {"記号ファイルのコンバートに失敗しました。", "converting the symbol file failed",
     "an old file holds 1 to 99 titles, at most 32767 bytes, and symbols of two bytes"},
    {"標準の記号での保存はできません。", "cannot save under the title of the standard set", "",
     Remedy::keep_as_new_set},
    {"記号ファイルが既に存在します。", "the symbol file already exists", "",
     Remedy::choose_free_title},
    {"標準の記号は削除できません。", "the standard set cannot be deleted", ""},
}};

std::optional<int> message_number(std::string_view japanese) {
    for (std::size_t i = 0; i < library_messages.size(); ++i) {
        if (library_messages[i].japanese == japanese) return static_cast<int>(i);
    }
    return std::nullopt;
}

} // namespace kigou
