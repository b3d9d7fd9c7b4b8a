// edit.h - what all editing commands share: options, the refusal of the standard set, one
// save at the end and the report of what was done.
#ifndef KIGOU_EDIT_H
#define KIGOU_EDIT_H

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/host.h"
#include "cli/title_path.h"

namespace kigou {

struct EditOptions {
    std::optional<std::string> file;
    std::optional<std::string> as;
    bool dry_run = false;
};

/** --file, --as and --dry-run; --dry-run alone. */
void declare_edit_options(CLI::App &app, EditOptions &options);
void declare_dry_run(CLI::App &app, EditOptions &options);

/** "1 symbol", "4 symbols". */
std::string counted(std::size_t count, const std::string &noun);

/** One command's edit of one symbol file. */
class Edit {
  public:
    /** @throws Failure when --as names a title that is taken or cannot be one */
    Edit(const Context &context, EditOptions options);

    Host &host() { return host_; }
    bool dry_run() const { return options_.dry_run; }

    /** Opens the file that a path means and finds the path. @throws Failure as locate and open do
     */
    Located locate(const std::string &path);

    /** Opens a file for an edit. @throws Failure for the standard set without --as */
    void open(const Title &file);

    /** Makes a new file instead of opening one. */
    void create(const Title &file);

    /** Whether a symbol file bears the title. */
    bool is_taken(const Title &title) const;

    /** @throws Failure when a symbol file bears the title */
    void refuse_taken(const Title &title) const;

    /**
     * Notes a change for the report.
     * @param what  "added 例／矢印": a sentence without its end; paths begin with the title
     *              of the open file
     * @param json  the same for scripts: "change" and what belongs to it
     */
    void did(std::string what, nlohmann::ordered_json json);

    /** Notes that the open file itself has a new title; the save goes to the same file. */
    void renamed_file(const Title &title) { title_ = title; }

    /**
     * Saves, unless it is a dry run or nothing was noted, and reports.
     * @param extra  further keys of the JSON object
     */
    void finish(const nlohmann::ordered_json &extra = nlohmann::ordered_json::object());

  private:
    void refuse_standard_set(const Title &file) const;

    Context context_;
    EditOptions options_;
    Host host_;
    std::vector<Title> files_; /**< as they were before the edit */
    std::optional<Title> as_;
    Title saved_under_, title_;
    bool new_ = false;
    std::vector<std::string> sentences_;
    nlohmann::ordered_json changes_ = nlohmann::ordered_json::array();
};

/** Makes the directory of people's own sets when it is missing. @throws Failure */
void make_common_directory(const Directories &directories);

} // namespace kigou

#endif
