// The message tables: Shift_JIS texts in slots of 80 bytes, zero-filled.
#include "record/message.h"

#include <array>
#include <cstddef>
#include <cstring>

#include "common/sjis_literal.h"

namespace {

using Slot = std::array<unsigned char, 80>;

template <acc::Utf8Literal text>
consteval Slot slot() {
    constexpr auto bytes = acc::sjis<text>();
    static_assert(bytes.size() < ACC_SIZE_MESSAGE);
    Slot result{};
    for (std::size_t i = 0; i < bytes.size(); ++i) result[i] = bytes.bytes[i];
    return result;
}

constexpr std::array<Slot, 20> m_ucErrMsg = {
    slot<"記号ファイルが存在しません。">(),
    slot<"ファイルのオープンに失敗しました。">(),
    slot<"引数エラー">(),
    slot<"詳細情報はありません。">(),
    slot<"メモリが割り当てられていません。">(),
    slot<"ファイルが開いています。">(),
    slot<"記号ファイルではありません。">(),
    slot<"ファイルの読み込みに失敗しました。">(),
    slot<"ファイルの書き込みに失敗しました。">(),
    slot<"リストボックスのメモリが足りません。">(),
    slot<"ファイルが開いていません。">(),
    slot<"メモリの確保に失敗しました。">(),
    slot<"記号タイトルが既に存在します。">(),
    slot<"入力エラーです。">(),
    slot<"親タイトルは削除できません。">(),
    slot<"親タイトルには登録できません。">(),
    slot<"記号ファイルのコンバートに失敗しました。">(),
    slot<"標準の記号での保存はできません。">(),
    slot<"記号ファイルが既に存在します。">(),
    slot<"標準の記号は削除できません。">(),
};

constexpr std::array<Slot, 2> m_ucStsMsg = {
    slot<"候補の終わりです。">(),
    slot<"候補はありません。">(),
};

template <std::size_t count>
unsigned short copy_message(const std::array<Slot, count> &table, int index,
                            unsigned char *buffer) {
    buffer[0] = 0;
    if (index < 0 || static_cast<std::size_t>(index) >= count) return 0;
    const Slot &text = table[static_cast<std::size_t>(index)];
    const std::size_t length = std::strlen(reinterpret_cast<const char *>(text.data()));
    std::memcpy(buffer, text.data(), length + 1);
    return static_cast<unsigned short>(length);
}

} // namespace

unsigned short ACC_Sym_SetErrMsgProc(int index, unsigned char *buffer) {
    return copy_message(m_ucErrMsg, index, buffer);
}

unsigned short ACC_Sym_SetStsMsgProc(int index, unsigned char *buffer) {
    return copy_message(m_ucStsMsg, index, buffer);
}
