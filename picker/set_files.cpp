// set_files.cpp - see set_files.h.
#include "picker/set_files.h"

#include <dirent.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>

#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/near_titles.h"
#include "picker/sentence.h"
#include "sym/format.h"

namespace kigou {
namespace {

constexpr std::size_t head_bytes = 1023;   // of a file are looked at
constexpr std::size_t longest_path = 259;  // that the library takes
constexpr std::size_t longest_title = 259; // that it lists

void add_file(const std::string &path, SetFiles &files) {
    if (path.size() > longest_path) {
        files.spoilt.push_back(
            {path, sentence("the name of the file with its directories is longer than {1} bytes",
                            std::to_string(longest_path))});
        return;
    }
    try {
        const Sjis text = text_form(read_head(path, head_bytes));
        acc::Range title;
        if (!acc::has_symbol_header(text)) {
            files.spoilt.push_back({path, sentence("the first line is not 〈記号〉")});
        } else if (!acc::find_file_title(text, head_bytes, title)) {
            files.spoilt.push_back({path, sentence("no line of its head begins with 名称=")});
        } else if (title.length > longest_title) {
            files.spoilt.push_back({path, sentence("the file title is too long")});
        } else {
            files.sets.push_back(
                {title_of(std::span(text).subspan(title.offset, title.length)), path});
        }
    } catch (const Failure &failure) {
        files.spoilt.push_back({path, failure.what()});
    }
}

/** @return errno; 0 when the directory was read to its end */
int add_directory(const std::string &directory, SetFiles &files) {
    const std::unique_ptr<DIR, int (*)(DIR *)> listing(opendir(directory.c_str()), &closedir);
    if (!listing) return errno;
    const std::string start = directory.ends_with('/') ? directory : directory + "/";
    for (;;) {
        errno = 0;
        const dirent *entry = readdir(listing.get());
        if (!entry) return errno;
        if (std::strstr(entry->d_name, ".kig")) add_file(start + entry->d_name, files);
    }
}

} // namespace

const SetFile *SetFiles::find(std::span<const unsigned char> title) const {
    const auto found = std::find_if(sets.begin(), sets.end(), [&](const SetFile &set) {
        return std::ranges::equal(set.title.sjis, title);
    });
    return found == sets.end() ? nullptr : &*found;
}

const SetFile &SetFiles::get(const Title &title) const {
    if (const SetFile *set = find(title.sjis)) return *set;
    std::vector<std::string> titles;
    for (const SetFile &set : sets) titles.push_back(set.title.text);
    throw Failure(FailureKind::nothing_found, "there is no symbol file " + title.text,
                  did_you_mean(nearest(titles, title.text)), {{Remedy::list_sets}});
}

SetFiles find_sets(const Directories &directories) {
    SetFiles files;
    if (const int reason = add_directory(directories.program, files); reason != 0) {
        throw Failure(FailureKind::failed,
                      sentence("cannot read the directory \"{1}\": {2}", directories.program,
                               std::strerror(reason)),
                      {}, {{Remedy::name_program_folder}});
    }
    std::error_code error;
    if (std::filesystem::equivalent(directories.program, directories.common, error)) return files;
    if (const int reason = add_directory(directories.common, files);
        reason != 0 && reason != ENOENT && !directories.common.empty()) {
        files.spoilt.push_back({directories.common, std::strerror(reason)});
    }
    return files;
}

} // namespace kigou
