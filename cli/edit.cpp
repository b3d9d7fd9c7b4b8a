// edit.cpp - see edit.h.
#include "cli/edit.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <utility>

#include "cli/output.h"
#include "cli/storable.h"

namespace kigou {

void declare_dry_run(CLI::App &app, EditOptions &options) {
    app.add_flag("--dry-run", options.dry_run, "Show what would be done and save nothing");
}

void declare_edit_options(CLI::App &app, EditOptions &options) {
    app.add_option("--file", options.file,
                   "Title of the symbol file when the path does not begin with it "
                   "(default: " +
                       std::string(standard_title) + ")");
    app.add_option(
        "--as", options.as,
        "Keep the result as a new symbol file of this title; the old one stays as it is");
    declare_dry_run(app, options);
}

std::string counted(std::size_t count, const std::string &noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

Edit::Edit(const Context &context, EditOptions options)
    : context_(context), options_(std::move(options)), host_(context.directories) {
    files_ = host_.file_titles().items;
    if (!options_.as) return;
    as_ = new_file_title(*options_.as);
    refuse_taken(*as_);
}

bool Edit::is_taken(const Title &title) const {
    return std::any_of(files_.begin(), files_.end(),
                       [&](const Title &file) { return file.sjis == title.sjis; });
}

void Edit::refuse_taken(const Title &title) const {
    if (!is_taken(title)) return;
    throw Failure(Status::failed, "there is a symbol file " + title.text + " already",
                  {"choose a title that 'kigou files' does not list"});
}

void Edit::refuse_standard_set(const Title &file) const {
    if (as_ || file.text != standard_title) return;
    throw Failure(Status::failed, file.text + " cannot be changed",
                  {"--as NEW-TITLE keeps the result as a set of your own",
                   "--file TITLE or a path that begins with a file title edits another set"});
}

Located Edit::locate(const std::string &path) {
    Located located = kigou::locate(host_, path, options_.file);
    saved_under_ = title_ = located.tree.items.front();
    refuse_standard_set(title_);
    return located;
}

void Edit::open(const Title &file) {
    refuse_standard_set(file);
    host_.open(file);
    saved_under_ = title_ = file;
}

void Edit::create(const Title &file) {
    host_.create(file);
    saved_under_ = title_ = file;
    new_ = true;
}

void Edit::did(std::string what, nlohmann::ordered_json json) {
    sentences_.push_back(std::move(what));
    changes_.push_back(std::move(json));
}

void Edit::finish(const nlohmann::ordered_json &extra) {
    const bool save = !options_.dry_run && !sentences_.empty();
    if (save) {
        if (new_ || as_) make_common_directory(context_.directories);
        host_.save(as_ ? *as_ : saved_under_);
    }
    const std::string title = (as_ ? *as_ : title_).text;
    if (context_.json) {
        nlohmann::ordered_json json = {{"file", title}, {"saved", save}, {"changes", changes_}};
        json.update(extra);
        std::cout << json.dump(2) << '\n';
        return;
    }
    for (const std::string &sentence : sentences_) {
        std::cout << (options_.dry_run ? "would have " : "") << printable(sentence) << '\n';
    }
    if (sentences_.empty()) {
        std::cout << "nothing to do; " << printable(title_.text) << " is as it was\n";
    } else if (!save) {
        std::cout << "dry run: nothing is saved\n";
    } else if (as_) {
        std::cout << "saved as " << printable(title) << "; its paths begin with that title now\n";
    } else {
        std::cout << "saved " << printable(title) << '\n';
    }
}

void make_common_directory(const Directories &directories) {
    std::error_code error;
    std::filesystem::create_directories(directories.common, error);
    if (!error || std::filesystem::is_directory(directories.common)) return;
    throw Failure(Status::failed,
                  "cannot make the directory " + directories.common + ": " + error.message(),
                  {"name the directory of your own sets with --common-dir"});
}

} // namespace kigou
