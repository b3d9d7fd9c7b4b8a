#include "sym/engine.h"

#include "sym/temp_file.h"

namespace acc {

TempIndex m_tTempIndex;
TempInfo *m_lptTempInfo;
unsigned char *m_lpucChildFlags;
std::uint16_t m_bEditFlag;
std::uint16_t m_bTextCut;

unsigned char m_ucZikDir[1024];
unsigned char m_ucZikProgDir[1024];
unsigned char m_ucZikCommonDir[1024];

unsigned short m_usLBItemLenMax = 64;
unsigned short m_usLBItemHead = 4;
unsigned short m_usLBItemNumMax = 9;

void install_index(const TempIndex &header, HeapBlock<TempInfo> &&records,
                   HeapBlock<unsigned char> &&child_flags) {
    CM_free(m_lptTempInfo);
    CM_free(m_lpucChildFlags);
    m_tTempIndex = header;
    m_lptTempInfo = records.release();
    m_lpucChildFlags = child_flags.release();
}

void release_open_file() {
    discard_working_temp_file();
    install_index({}, {}, {});
    m_bEditFlag = m_bTextCut = 0;
}

void set_list_geometry(Accdata *record) {
    for (ListBox &list : record->tListBox) {
        list.cchLBItemLenMax = m_usLBItemLenMax;
        list.cchLBItemHead = m_usLBItemHead;
        list.cchLBItemNumMax = m_usLBItemNumMax;
    }
}

} // namespace acc

void SYM_SetBlockLength(unsigned short items_per_page) {
    acc::m_usLBItemNumMax = items_per_page;
}

void SYM_SetHeaderLength(unsigned short header_length) {
    acc::m_usLBItemHead = header_length;
}

void SYM_SetItemLength(unsigned short item_length) {
    acc::m_usLBItemLenMax = item_length;
}
