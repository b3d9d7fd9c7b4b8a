#include "tests/support/workspace.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "support/text.h"

namespace fs = std::filesystem;

Workspace::Workspace() {
    std::string name = (fs::temp_directory_path() / "accsym-test-XXXXXX").string();
    if (!mkdtemp(name.data())) std::abort();
    root = name;
    user = root / "user";
    program = root / "program";
    common = root / "common";
    temp = root / "temp";
    for (const fs::path &directory : {user, program, common, temp}) fs::create_directory(directory);
    setenv("TMPDIR", temp.c_str(), 1);
    fs::current_path(root);
}

Workspace::~Workspace() {
    unsetenv("TMPDIR");
    fs::current_path("/");
    std::error_code ignored;
    fs::remove_all(root, ignored);
}

void Workspace::put(const std::string &name, const std::string &disk_bytes) const {
    write_file(program / name, disk_bytes);
}

std::vector<fs::path> Workspace::temp_files() const {
    return {fs::directory_iterator(temp), fs::directory_iterator()};
}

std::string read_file(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void write_file(const fs::path &path, const std::string &bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

void age(const fs::path &path, int seconds) {
    fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::seconds(seconds));
}

std::map<std::string, std::string> files_in(const fs::path &directory) {
    std::map<std::string, std::string> files;
    if (!fs::exists(directory)) return files;
    for (const auto &entry : fs::directory_iterator(directory)) files[entry.path().filename()] = read_file(entry.path());
    return files;
}

std::size_t open_descriptors() {
    const fs::directory_iterator listing("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(listing, fs::directory_iterator()));
}

std::string symbol_file(const std::string &title, const std::string &blocks) {
    return to_euc("〈記号〉\n名称=" + title + "\n" + blocks);
}

std::string block(const std::string &path, const std::string &symbols) {
    return "［" + path + "］\n" + hyphens + "\n" + symbols + hyphens + "\n";
}

std::string text_block(const std::string &path, const std::string &data) {
    return "［" + path + "］\r\n" + hyphens + "\r\n" + data + hyphens + "\r\n";
}

std::string worked_example() {
    return symbol_file("例", block("矢印", "→←↑↓\n") + block("数学", "＋×÷\n±\n") + block("数学／比較"));
}
