// failure_words.cpp - see failure_words.h.
#include "cli/failure_words.h"

#include "cli/json.h"

#include "cli/shell_word.h"

namespace kigou {
namespace {

std::string words_of(const Advice &advice) {
    const std::string subject = shell_word(advice.subject);
    switch (advice.remedy) {
        case Remedy::list_sets:
            return "'kigou files' lists the symbol files";
        case Remedy::show_tree:
            return "name a title of it: " + quoted_command("kigou tree " + subject) + " shows them";
        case Remedy::name_program_folder:
            return "name the directory of the symbol sets with --program-dir";
        case Remedy::name_own_folder:
            return "name the directory of your own sets with --common-dir";
        case Remedy::check_folders:
            return "check --program-dir, --common-dir and --user-dir";
        case Remedy::choose_free_title:
            return "choose a title that 'kigou files' does not list";
        case Remedy::keep_as_new_set:
            return "--as NEW-TITLE keeps the result as a set of your own";
        case Remedy::edit_another_set:
            return "--file TITLE or a path that begins with a file title edits another set";
        case Remedy::add_title:
            return "or make one: kigou add " + subject + " TITLE";
        case Remedy::delete_set:
            return quoted_command("kigou delete " + subject) + " deletes it";
        case Remedy::check_file:
            return quoted_command("kigou check " + subject) + " says what is wrong in it";
        case Remedy::mend_file:
            return "mend it in an editor until 'kigou check " + subject +
                   "' finds these lines no more, then give the command again";
        case Remedy::try_again:
            return "give the command again";
        case Remedy::fold:
            return "--fold takes single-byte characters for their double-byte forms";
    }
    return {};
}

const char *name_of(FailureKind kind) {
    switch (kind) {
        case FailureKind::nothing_found:
            return "nothing_found";
        case FailureKind::refused:
            return "refused";
        case FailureKind::changed:
            return "changed";
        case FailureKind::busy:
            return "busy";
        case FailureKind::interrupted:
            return "interrupted";
        case FailureKind::failed:
            break;
    }
    return "failed";
}

} // namespace

Status status_of(FailureKind kind) {
    return kind == FailureKind::nothing_found ? Status::nothing_found : Status::failed;
}

std::vector<std::string> hints_of(const Failure &failure) {
    std::vector<std::string> hints = failure.details();
    for (const Advice &advice : failure.advice()) hints.push_back(words_of(advice));
    return hints;
}

std::string json_of(const Failure &failure) {
    const nlohmann::ordered_json json = {{"error",
                                          {{"kind", name_of(failure.kind())},
                                           {"text", failure.what()},
                                           {"hints", hints_of(failure)}}}};
    return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace);
}

} // namespace kigou
