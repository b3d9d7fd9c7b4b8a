// The working temp file as it lies on disk, and what a record shows of the open file: each
// must describe itself truly.
#ifndef FUZZ_TEMP_FILE_H
#define FUZZ_TEMP_FILE_H

#include <cstring>
#include <string>
#include <vector>

#include "accsym.h"
#include "fuzz/holds.h"
#include "fuzz/scratch.h"
#include "sym/temp_index.h"

/** What a working temp file holds: its records and its text. */
struct TempFile {
    explicit TempFile(const std::string &bytes) {
        TempIndex header;
        HOLDS(bytes.size() >= sizeof header);
        std::memcpy(&header, bytes.data(), sizeof header);
        HOLDS(header.usCount >= 1 && header.reserved == 0);
        HOLDS(header.ulTextPos == sizeof header + header.usCount * sizeof(TempInfo));
        HOLDS(bytes.size() >= header.ulTextPos);
        records.resize(header.usCount);
        std::memcpy(records.data(), bytes.data() + sizeof header,
                    header.usCount * sizeof(TempInfo));
        text = bytes.substr(header.ulTextPos);
    }

    /** The symbols of a block, line ends included. */
    std::string data_of(const TempInfo &block) const {
        return text.substr(block.ulDataPos, 2 * std::size_t{block.ulDataLen});
    }

    std::vector<TempInfo> records;
    std::string text;
};

inline unsigned symbols_of(const std::string &data) {
    unsigned symbols = 0;
    for (std::size_t i = 0; i < data.size(); i += 2) symbols += data.compare(i, 2, "\r\n") != 0;
    return symbols;
}

/** Each record against the text: its title line, its data and what ends it. */
inline void check_records(const TempFile &temp) {
    const TempInfo &file = temp.records[0];
    const std::string title = text(file.ucTitle);
    HOLDS(file.usBlockNo == 1 && file.usLevel == 1 && text(file.ucPath) == title);
    HOLDS(file.ulDataPos == 0 && file.ulDataLen == 0 && file.ulSymbolNum == 0);
    HOLDS(temp.text.compare(file.ulTitlePos, title.size(), title) == 0);
    std::size_t end = file.ulTitlePos + title.size(); // of the block before
    for (std::size_t i = 1; i < temp.records.size(); ++i) {
        const TempInfo &block = temp.records[i];
        HOLDS(block.usLevel >= 2);
        HOLDS(std::memchr(block.ucTitle, 0, sizeof block.ucTitle) &&
              std::memchr(block.ucPath, 0, sizeof block.ucPath));
        const std::string path = text(block.ucPath);
        HOLDS(path.starts_with(title + "\x81\x5E") && path.ends_with(text(block.ucTitle)));
        HOLDS(block.ulTitlePos >= end && block.ulDataPos > block.ulTitlePos);
        const std::string bracketed = "\x81\x6D" + path.substr(title.size() + 2) + "\x81\x6E";
        const std::size_t found = temp.text.find(bracketed, block.ulTitlePos);
        HOLDS(found < block.ulDataPos);
        end = block.ulDataPos + 2 * std::size_t{block.ulDataLen};
        HOLDS(end <= temp.text.size());
        HOLDS(block.ulSymbolNum == symbols_of(temp.data_of(block)));
        HOLDS(temp.text.compare(end, acc::hyphen_line, std::string(acc::hyphen_line, '-')) == 0);
    }
}

/** The strings of lpchDisplay. */
inline std::vector<std::string> displayed(const Accdata &record) {
    std::vector<std::string> strings;
    std::size_t at = 0;
    while (at < record.cchDisplay) {
        strings.push_back(text(record.lpchDisplay + at));
        at += strings.back().size() + 1;
    }
    HOLDS(at == record.cchDisplay && record.lpchDisplay[at] == 0);
    return strings;
}

/** Walks the items of a list as a host does. @return how many of them are symbols */
inline unsigned walk(const ListBox &list) {
    unsigned symbols = 0;
    std::size_t at = 0;
    for (unsigned i = 0; i < list.cchLBItemTotal; ++i) {
        HOLDS(at < list.cchLBListLen);
        const unsigned char attribute = list.lpchLBListInfo[i];
        HOLDS(attribute == 2 || attribute == 3 || attribute == 4);
        HOLDS(attribute == LBINFO_SYMBOL || symbols == 0);
        symbols += attribute == LBINFO_SYMBOL;
        at += std::strlen(reinterpret_cast<char *>(list.lpchLBList + at)) + 1;
        if (at < list.cchLBListLen && list.lpchLBList[at] == 0) ++at;
    }
    HOLDS(at == list.cchLBListLen);
    return symbols;
}

#endif
