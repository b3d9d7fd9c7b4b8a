#include "fuzz/odd_folders.h"

#include <unistd.h>

#include <algorithm>

#include "fuzz/scratch.h"

namespace fs = std::filesystem;

namespace {

Entry entry_at(const fs::path &path) {
    Entry entry{};
    HOLDS(lstat(path.c_str(), &entry.status) == 0);
    if (S_ISREG(entry.status.st_mode)) entry.bytes = content(path);
    if (S_ISLNK(entry.status.st_mode)) entry.bytes = fs::read_symlink(path);
    return entry;
}

} // namespace

Entries entries_below(const fs::path &directory) {
    Entries entries{{directory, entry_at(directory)}};
    for (const fs::directory_entry &file : fs::recursive_directory_iterator(directory)) {
        entries.emplace(file.path(), entry_at(file.path()));
    }
    return entries;
}

bool are_untouched(const Entries &entries) {
    return std::all_of(entries.begin(), entries.end(), [](const auto &entry) {
        const struct stat &before = entry.second.status;
        struct stat now;
        return lstat(entry.first.c_str(), &now) == 0 && now.st_ino == before.st_ino &&
               now.st_size == before.st_size && now.st_mode == before.st_mode &&
               now.st_ctim.tv_sec == before.st_ctim.tv_sec &&
               now.st_ctim.tv_nsec == before.st_ctim.tv_nsec;
    });
}

OddFolders::OddFolders(const fs::path &place, Choice &choice, OddFiles &files)
    : root(place),
      user(place / "user"),
      program(place / "program"),
      common(place / "common"),
      elsewhere(place / "elsewhere"),
      work(place / "work"),
      choice_(choice),
      files_(files) {
    for (const fs::path &directory : {user, elsewhere, work}) {
        fs::create_directory(directory);
    }
    add_file(user); // which nothing reads
    if (!choice_.one_in(30)) fs::create_directory(program);
    if (!choice_.one_in(15)) fs::create_directory(common);
    add_file(elsewhere);
    for (std::size_t count = 1 + choice_.below(3); count > 0; --count) add_file(program);
    for (std::size_t count = 1 + choice_.below(4); count > 0; --count) add_file(common);
    add_old_files();
}

void OddFolders::add_file(const fs::path &directory) {
    static const std::string names[] = {"default.kig", "a.kig",        "b.kig",        "c.kig.bak",
                                        ".kig",        "@0000000.kig", "@0000001.kig", "@3.kig",
                                        "@x.kig",      "note.txt"};
    if (!fs::is_directory(directory)) return;
    const fs::path path = directory / choice_.of(names);
    if (fs::exists(fs::symlink_status(path))) return;
    const std::string title = files_.file_title();
    if (directory == program || directory == common) titles.push_back(text_form(title));
    if (choice_.one_in(12)) {
        const fs::path target = elsewhere / ("x" + std::to_string(choice_.below(3)) + ".kig");
        if (!choice_.one_in(3)) write(target, files_.symbol_file(title));
        fs::create_symlink(choice_.one_in(10) ? path : target, path);
    } else if (choice_.one_in(20)) {
        HOLDS(mkfifo(path.c_str(), 0600) == 0);
    } else if (choice_.one_in(20)) {
        fs::create_directory(path);
    } else {
        write(path, files_.symbol_file(title));
        if (choice_.one_in(6)) HOLDS(chmod(path.c_str(), 0444) == 0);
        if (choice_.one_in(12))
            fs::create_hard_link(path, root / ("linked" + std::to_string(choice_.below(1000000))));
    }
}

void OddFolders::add_old_files() {
    for (const char *name : {"old.ini", "two.INI", "sub\\old.ini"}) {
        write(work / name, files_.old_file()); // a backslash is a character like others
    }
    fs::create_directory(work / "folder.ini");
    HOLDS(mkfifo((work / "pipe.ini").c_str(), 0600) == 0);
}

std::string OddFolders::mischief() {
    const fs::path &directory = choice_.one_in(2) ? program : common;
    const fs::path away = directory.native() + ".away";
    const std::string name = directory.filename();
    if (fs::exists(away) && !choice_.one_in(3)) {
        fs::remove_all(directory);
        fs::rename(away, directory);
        return name + " directory comes back";
    }
    switch (choice_.below(6)) {
        case 0:
            if (!fs::is_directory(directory) || fs::exists(away)) return "";
            fs::rename(directory, away);
            if (choice_.one_in(2)) return name + " directory goes";
            write(directory, "no directory");
            return name + " directory becomes a file";
        case 1: { // a file is lost, or another one
            std::error_code none;
            const std::vector<fs::path> files{fs::directory_iterator(directory, none),
                                              fs::directory_iterator()};
            if (files.empty()) return "";
            const fs::path &file = choice_.of(files);
            fs::remove_all(file);
            if (choice_.one_in(2)) return "no " + name + "/" + file.filename().native();
            write(file, files_.symbol_file(files_.file_title()));
            return "another " + name + "/" + file.filename().native();
        }
        case 2:
            fs::current_path(choice_.one_in(2) ? root : work);
            return "another working directory";
        default:
            add_file(directory);
            return "one more file in " + name;
    }
}
