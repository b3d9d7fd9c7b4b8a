// session_edit.cpp - the half of Session that changes files; see session.h.
//
// An edit works on the title that the current list shows. The lists of its ancestors show
// what they showed before, and the refill after a deletion goes by the parent's: so the
// parent is shown first, then the title.
#include <optional>

#include "accsym.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/library_messages.h"
#include "picker/session.h"

namespace kigou {
void Session::create(const Title &file) {
    file_titles(); // hands the directories over
    set_string(0, file.sjis);
    const int result = run(ACC_VKEY_FILE_NEW);
    open_ = result == ACC_RET_OK;
    if (!open_) fail("cannot make " + file.text, result);
}

/** Makes a title the one that the next edit works on. */
void Session::show(const Title &path) {
    const auto position = [&](const Title &title) {
        record_.wCurrentList = 1;
        set_string(0, title.sjis);
        return run(ACC_VKEY_SET_POSITION);
    };
    if (const auto parent = parent_of(path.sjis); !parent.empty()) position(title_of(parent));
    const int result = position(path);
    const bool file_without_titles = result == ACC_RET_ERROR && record_.cchMessage == 0;
    // A title whose parent is missing can be edited, though its lists cannot be filled.
    const bool shown = result == ACC_RET_OK || file_without_titles ||
                       message_number(message()) == message_not_read;
    if (result == ACC_RET_NOTFOUND) {
        throw Failure(FailureKind::nothing_found, "there is no title " + path.text);
    }
    if (!shown) fail("cannot find " + path.text, result);
}

void Session::edit(unsigned short command, const std::string &action) {
    const int result = run(command);
    const bool done = result == ACC_RET_OK ||
                      (result == ACC_RET_ERROR && message_number(message()) == message_not_read);
    if (!done) fail_to_write(action, result);
}

/** Fails with the lines of the open file that keep the library from writing, when that is it. */
void Session::fail_to_write(const std::string &action, int result) const {
    std::vector<std::string> lines;
    if (message_number(message()) == message_not_written && !opened_.empty()) {
        try {
            lines = lines_to_mend(opened_, check_symbol_file(read_file(opened_).bytes));
        } catch (const Failure &) {
            // Gone since; what the library said must do.
        }
    }
    std::vector<Advice> advice;
    if (!lines.empty()) advice.push_back({Remedy::mend_file, opened_});
    throw LibraryFailure(action, result, message(), lines, advice);
}

/** @throws Failure when the symbols of a title or below it hold titles that would be dropped */
void Session::refuse_to_drop_titles(const Title &path, const std::string &action) {
    const std::size_t cut = path.text.find(separator);
    if (opened_.empty() || cut == std::string::npos) return;
    if (!swallowed_) swallowed_ = swallowed_titles(read_file(opened_).bytes);
    const std::string block = path.text.substr(cut + separator.size());
    std::vector<std::string> details;
    for (const SwallowedTitle &title : *swallowed_) {
        if (title.block != block && !title.block.starts_with(block + std::string(separator)))
            continue;
        details.push_back(opened_ + ":" + std::to_string(title.line) +
                          ": this title line stands among the symbols of " + title.block);
    }
    if (details.empty()) return;
    throw Failure(FailureKind::failed, action + ": titles of the file would be lost", details,
                  {{Remedy::mend_file, opened_}});
}

void Session::add_title(const Title &parent, const Title &title) {
    show(parent);
    set_string(0, title.sjis);
    edit(ACC_VKEY_TITLE_ADD, "cannot add " + title.text + " below " + parent.text);
}

void Session::rename_title(const Title &path, const Title &title) {
    show(path);
    set_string(0, title.sjis);
    edit(ACC_VKEY_TITLE_CHANGE, "cannot rename " + path.text + " to " + title.text);
}

void Session::delete_title(const Title &path) {
    const std::string action = "cannot remove " + path.text;
    refuse_to_drop_titles(path, action);
    show(path);
    edit(ACC_VKEY_TITLE_DELETE, action);
}

void Session::set_data(const Title &path, const Sjis &data) {
    const std::string action = "cannot put symbols into " + path.text;
    refuse_to_drop_titles(path, action);
    show(path);
    set_string(0, data);
    edit(ACC_VKEY_DATA_REGISTER, action);
}

void Session::save(const Title &file) {
    set_string(0, file.sjis);
    set_string(1, {reinterpret_cast<const unsigned char *>(directories_.user.data()),
                   directories_.user.size()});
    const int result = run(ACC_VKEY_FILE_SAVE);
    if (result == ACC_RET_OK) return;
    const std::string action = "cannot save " + file.text;
    // Its message is that of the step before, if there is one.
    if (result == ACC_RET_NOTFOUND) throw LibraryFailure(action, result, "");
    fail_to_write(action, result);
}

void Session::delete_file(const Title &file) {
    file_titles(); // hands the directories over
    set_string(0, file.sjis);
    if (const int result = run(ACC_VKEY_FILE_DELETE); result != ACC_RET_OK) {
        fail("cannot delete " + file.text, result);
    }
}

} // namespace kigou
