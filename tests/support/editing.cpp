#include "support/editing.h"

#include <gtest/gtest.h>

#include <cstring>

#include "support/text.h"

Temp read_temp() {
    const std::string bytes = read_file(text(g_tAccFile[1].ucFullName));
    Temp temp;
    std::memcpy(&temp.header, bytes.data(), sizeof temp.header);
    temp.records.resize(temp.header.usCount);
    std::memcpy(temp.records.data(), bytes.data() + 8, 792u * temp.header.usCount);
    EXPECT_EQ(temp.header.ulTextPos, 8 + 792u * temp.header.usCount);
    temp.text = bytes.substr(temp.header.ulTextPos);
    return temp;
}

Blocks blocks_of(const Temp &temp) {
    const TempInfo &file = temp.records[0];
    const std::string name = text(file.ucTitle);
    EXPECT_EQ(temp.text.substr(file.ulTitlePos - 5, 5 + name.size()), to_sjis("名称=") + name);
    EXPECT_EQ(text(file.ucPath), name);
    Blocks blocks;
    for (std::size_t i = 1; i < temp.records.size(); ++i) {
        const TempInfo &r = temp.records[i];
        const std::string path = text(r.ucPath);
        EXPECT_EQ(path.substr(0, name.size() + 2), name + to_sjis("／"));
        const std::string title_path = path.substr(name.size() + 2);
        const std::string brackets = to_sjis("［") + title_path + to_sjis("］");
        const std::size_t line_end = temp.text.find("\r\n", r.ulTitlePos);
        EXPECT_NE(temp.text.substr(r.ulTitlePos, line_end - r.ulTitlePos).find(brackets), std::string::npos) << to_utf8(path);
        const std::string data = temp.text.substr(r.ulDataPos, 2 * r.ulDataLen);
        EXPECT_EQ(temp.text.substr(r.ulDataPos - 42, 42), hyphens + "\r\n") << to_utf8(path);
        EXPECT_EQ(temp.text.substr(r.ulDataPos + data.size(), 40), hyphens) << to_utf8(path);
        std::size_t symbols = 0;
        for (std::size_t at = 0; at < data.size(); at += 2) symbols += data.compare(at, 2, "\r\n") != 0;
        EXPECT_EQ(r.ulSymbolNum, symbols) << to_utf8(path);
        blocks.emplace_back(to_utf8(title_path), data);
    }
    return blocks;
}

Editing::Editing(const std::string &disk_bytes, const std::string &utf8_title) : host(ws) {
    write_file(ws.common / "a.kig", disk_bytes);
    EXPECT_EQ(host.open(utf8_title), 1) << host.message();
}

void Editing::focus(const std::string &utf8_path) {
    const std::size_t parent = utf8_path.rfind("／");
    if (parent != std::string::npos) host.position(utf8_path.substr(0, parent));
    host.position(utf8_path); // 0 when a list on the way up shows what an odd file does not hold
    EXPECT_EQ(to_utf8(::text(host.list(host.record.wCurrentList).lpchLBLevel)), utf8_path);
}

int Editing::edit(int command, const std::string &utf8_operand) {
    host.string(1, to_sjis(utf8_operand));
    return host.run(command);
}

int Editing::save(const std::string &utf8_title) {
    return edit(ACC_VKEY_FILE_SAVE, utf8_title);
}

std::string Editing::text() const {
    return to_utf8(read_temp().text);
}

State::State(Editing &e)
    : text(g_tAccFile[1].hFile != 0 ? e.text() : ""),
      files(files_in(e.ws.common)),
      current_list(e.host.record.wCurrentList),
      edited(e.host.run(ACC_VKEY_GET_EDIT)),
      marks(e.host.record.wDataStatus << 16 | e.host.record.wDataUpdate) {
    for (int list = 1; list <= 3; ++list) lists.push_back(e.host.shown(list));
}
