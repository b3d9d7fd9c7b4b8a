// A scratch directory with the three directories of a host, each its own, and a TMPDIR; it is the
// current directory as well.
#ifndef TESTS_SUPPORT_WORKSPACE_H
#define TESTS_SUPPORT_WORKSPACE_H

#include <filesystem>
#include <map>
#include <string>
#include <vector>

class Workspace {
  public:
    Workspace();
    ~Workspace();
    Workspace(const Workspace &) = delete;
    Workspace &operator=(const Workspace &) = delete;

    std::filesystem::path root, user, program, common, temp;

    /** Writes a file of the program directory, its bytes as they are. */
    void put(const std::string &name, const std::string &disk_bytes) const;

    /** The working temp files that lie about. */
    std::vector<std::filesystem::path> temp_files() const;
};

std::string read_file(const std::filesystem::path &path);
void write_file(const std::filesystem::path &path, const std::string &bytes);

/** Makes a file older than now. */
void age(const std::filesystem::path &path, int seconds = 10);

/** Name and content of every file of a directory; none when it does not exist. */
std::map<std::string, std::string> files_in(const std::filesystem::path &directory);

/** Open descriptors of this process. */
std::size_t open_descriptors();

/** The head and the blocks of a symbol file in the disk form; all arguments UTF-8. */
std::string symbol_file(const std::string &title, const std::string &blocks = "");

/** One block; each symbol line must end with LF unless it is the last. */
std::string block(const std::string &path, const std::string &symbols = "");

/** A block as the temp file has it, with CR LF; still UTF-8. */
std::string text_block(const std::string &path, const std::string &data = "");

/** File 例: 矢印 with four arrows, 数学 with ＋×÷ and ±, and the empty 数学／比較. */
std::string worked_example();

#endif
