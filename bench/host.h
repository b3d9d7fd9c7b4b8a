// host.h - the library as a host drives it, in a scratch directory.
#ifndef BENCH_HOST_H
#define BENCH_HOST_H

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "accsym.h"

namespace fs = std::filesystem;

/** A scratch directory for files and for the working temp file. */
class Directory {
  public:
    Directory() {
        std::string name = (fs::temp_directory_path() / "accsym-bench-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no scratch directory");
        path_ = name;
    }
    ~Directory() { fs::remove_all(path_); }
    Directory(const Directory &) = delete;
    Directory &operator=(const Directory &) = delete;

    std::string path() const { return path_.string(); }
    void put(const std::string &name, const std::string &content) const {
        std::ofstream(path_ / name, std::ios::binary) << content;
    }

  private:
    fs::path path_;
};

/** A record with buffers of the least sizes. */
class Host {
  public:
    Host() {
        record.lpchResult = take(ACC_SIZE_RESULT);
        record.lpchDisplay = take(ACC_SIZE_DISPLAY);
        record.lpchMessage = take(ACC_SIZE_MESSAGE);
        record.lpchStatus = take(ACC_SIZE_MESSAGE);
        for (ListBox &list : record.tListBox) {
            list.lpchLBLevel = take(ACC_SIZE_LB_LEVEL);
            list.lpchLBList = take(ACC_SIZE_LB_LIST);
            list.lpchLBListInfo = take(ACC_SIZE_LB_LISTINFO);
            list.lpchLBItemInfo = take(ACC_SIZE_LB_ITEMINFO);
        }
    }

    /** Runs a command, all directories being the one given; ends with an error unless it says 1. */
    void run(int command, std::string string1 = "", std::string directory = "") {
        record.wVkey = static_cast<unsigned short>(command);
        record.lpchString1 = reinterpret_cast<unsigned char *>(string1.data());
        record.lpchString2 = record.lpchString3 = record.lpchString4 =
            reinterpret_cast<unsigned char *>(directory.data());
        const int result = AccSym(&record);
        if (result != ACC_RET_OK) {
            throw std::runtime_error(std::to_string(command) + ": result " +
                                     std::to_string(result));
        }
    }

    Accdata record{};

  private:
    unsigned char *take(std::size_t size) {
        buffers_.emplace_back(size);
        return buffers_.back().data();
    }
    std::vector<std::vector<unsigned char>> buffers_;
};

inline const std::string hyphens(40, '-');
inline const std::string head =
    "\xA1\xD2\xB5\xAD\xB9\xE6\xA1\xD3\n\xCC\xBE\xBE\xCE="; // 〈記号〉, 名称=
inline const std::string separator_euc = "\xA1\xBF", separator_sjis = "\x81\x5E"; // ／

inline std::string block(const std::string &path) {
    return "\xA1\xCE" + path + "\xA1\xCF\n" + hyphens + "\n\xA1\xF9\xA1\xFA\xA1\xFB\n" + hyphens +
           "\n";
}

inline std::string joined(int levels, const std::string &separator) {
    std::string path = "d";
    for (int i = 1; i < levels; ++i) path += separator + "d";
    return path;
}

inline constexpr int chain = 9;

/** A file of so many titles: see growth_bench.cpp. */
inline std::string file_of(int titles) {
    std::string file = head + "F\n";
    for (int i = 0; i < titles - chain; ++i) {
        std::string path = std::to_string(i / 10);
        if (i % 10 != 0) path += separator_euc + std::to_string(i % 10);
        file += block(path);
    }
    for (int level = 1; level <= chain; ++level) file += block(joined(level, separator_euc));
    return file;
}

#endif
