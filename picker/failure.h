// failure.h - how work ends without its result. The core says what went wrong and what can
// be done about it; a front end says how that is done in it and chooses its exit status.
#ifndef KIGOU_PICKER_FAILURE_H
#define KIGOU_PICKER_FAILURE_H

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace kigou {

enum class FailureKind {
    nothing_found, /**< what was asked for does not exist */
    refused,       /**< it cannot be done with what was given; something else may do */
    changed,       /**< the file on disk is no longer the one that was opened */
    busy,          /**< another program edits the sets, and went on for too long */
    interrupted,   /**< the front end asked to stop; nothing was saved */
    failed         /**< the library or the system could not do it */
};

/** What a person can do. Each takes a subject, or none where nothing is said of one. */
enum class Remedy {
    list_sets,           /**< look which symbol files there are */
    show_tree,           /**< look at the titles of a file; subject: its title */
    name_program_folder, /**< name the folder of the sets that come with the program */
    name_own_folder,     /**< name the folder of the person's own sets */
    check_folders,       /**< look at the names of the folders that were given */
    choose_free_title,   /**< take a title that no symbol file bears */
    keep_as_new_set,     /**< keep the result as a set of one's own */
    edit_another_set,    /**< edit another set than the standard one */
    add_title,           /**< make a title; subject: the path to make it below */
    delete_set,          /**< delete a symbol file; subject: its title */
    check_file,          /**< look what is wrong in a file; subject: its path on disk */
    mend_file,           /**< the same, mend it in an editor and try again */
    try_again,           /**< do the same once more */
    fold                 /**< take single-byte characters for their double-byte forms */
};

struct Advice {
    Remedy remedy;
    std::string subject{};
};

/** Ends work. All texts are lines without line ends, UTF-8. */
class Failure : public std::runtime_error {
  public:
    /**
     * @param text     what went wrong
     * @param details  facts that belong to it, such as the lines of a file that are at fault
     */
    Failure(FailureKind kind, const std::string &text, std::vector<std::string> details = {},
            std::vector<Advice> advice = {})
        : std::runtime_error(text),
          kind_(kind),
          details_(std::move(details)),
          advice_(std::move(advice)) {}

    FailureKind kind() const { return kind_; }
    const std::vector<std::string> &details() const { return details_; }
    const std::vector<Advice> &advice() const { return advice_; }

  private:
    FailureKind kind_;
    std::vector<std::string> details_;
    std::vector<Advice> advice_;
};

} // namespace kigou

#endif
