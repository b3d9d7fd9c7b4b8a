// scratch_sets.h - sets to measure with, in folders that are there as long as they are needed.
#ifndef KIGOU_BENCH_SCRATCH_SETS_H
#define KIGOU_BENCH_SCRATCH_SETS_H

#include <stdlib.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "picker/directories.h"
#include "picker/disk_form.h"
#include "picker/text.h"

namespace kigou {

/** Scratch folders of a person. */
class Folders {
  public:
    Folders() {
        std::string name =
            (std::filesystem::temp_directory_path() / "accsym-bench-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no scratch directory");
        root_ = name;
        std::filesystem::create_directory(root_ / "program");
        std::filesystem::create_directory(root_ / "common");
    }
    ~Folders() { std::filesystem::remove_all(root_); }
    Folders(const Folders &) = delete;
    Folders &operator=(const Folders &) = delete;

    Directories directories() const {
        return {root_ / "program", root_ / "common", root_ / "common"};
    }
    std::string root() const { return root_; }
    std::string state() const { return root_ / "state"; }

    std::string put(const std::string &name, const std::string &utf8) const {
        const Sjis disk = disk_form(to_sjis(utf8));
        const std::filesystem::path path = root_ / "common" / name;
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char *>(disk.data()),
                   static_cast<std::streamsize>(disk.size()));
        return path;
    }

  private:
    std::filesystem::path root_;
};

inline const std::string rule = std::string(40, '-') + "\n";

/** A set in UTF-8: titles at two levels, with ten symbols each. */
inline std::string set_of_titles(const std::string &file, std::int64_t titles) {
    std::string text = "〈記号〉\n名称=" + file + "\n";
    for (std::int64_t i = 0; i < titles; ++i) {
        const std::string path =
            "題" + std::to_string(i / 10) + (i % 10 ? "／" + std::to_string(i % 10) : "");
        text += "［" + path + "］\n" + rule + "→←↑↓☆★○●◎◇\n" + rule;
    }
    return text;
}

/** The same with one title that has so many tens of symbols. */
inline std::string set_of_one_title(const std::string &file, std::int64_t tens) {
    std::string text =
        "〈記号〉\n名称=" + file + "\n［題0］\n" + rule + rule + "［題0／1］\n" + rule;
    for (std::int64_t i = 0; i < tens; ++i) text += "→←↑↓☆★○●◎◇";
    return text + "\n" + rule;
}

} // namespace kigou

#endif
