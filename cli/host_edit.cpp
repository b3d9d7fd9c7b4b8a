// host_edit.cpp - the half of Host that changes files; see host.h.
//
// An edit works on the title that the current list shows. The lists of its ancestors show
// what they showed before, and the refill after a deletion goes by the parent's: so the
// parent is shown first, then the title.
#include <optional>

#include "accsym.h"
#include "cli/file_check.h"
#include "cli/host.h"
#include "cli/messages.h"
#include "cli/working_copy.h"
#include "common/sjis_text.h"

namespace kigou {
namespace {

/** The title above; nothing for one without a separator. */
std::optional<Title> parent_of(const Title &path) {
    std::size_t cut = 0;
    for (std::size_t i = 0; i + 1 < path.sjis.size(); ++i) {
        if (!acc::is_lead(path.sjis[i])) continue;
        if (path.sjis[i] == 0x81 && path.sjis[i + 1] == 0x5E) cut = i;
        ++i;
    }
    if (cut == 0) return std::nullopt;
    const Sjis sjis(path.sjis.begin(), path.sjis.begin() + static_cast<std::ptrdiff_t>(cut));
    return Title{sjis, to_utf8(sjis)};
}

} // namespace

void Host::create(const Title &file) {
    file_titles(); // hands the directories over
    set_string(0, file.sjis);
    const int result = run(ACC_VKEY_FILE_NEW);
    open_ = result == ACC_RET_OK;
    if (!open_) fail("cannot make " + file.text, result);
}

/** Makes a title the one that the next edit works on. */
void Host::show(const Title &path) {
    const auto position = [&](const Title &title) {
        record_.wCurrentList = 1;
        set_string(0, title.sjis);
        return run(ACC_VKEY_SET_POSITION);
    };
    if (const auto parent = parent_of(path)) position(*parent);
    const int result = position(path);
    const bool file_without_titles = result == ACC_RET_ERROR && record_.cchMessage == 0;
    // A title whose parent is missing can be edited, though its lists cannot be filled.
    const bool shown = result == ACC_RET_OK || file_without_titles ||
                       message_number(message()) == message_not_read;
    if (result == ACC_RET_NOTFOUND) {
        throw Failure(Status::nothing_found, "there is no title " + path.text);
    }
    if (!shown) fail("cannot find " + path.text, result);
}

void Host::edit(unsigned short command, const std::string &action) {
    const int result = run(command);
    const bool done = result == ACC_RET_OK ||
                      (result == ACC_RET_ERROR && message_number(message()) == message_not_read);
    if (!done) throw LibraryFailure(action, result, message(), why_not_written());
}

/** The lines of the open file that keep the library from writing; none for another reason. */
std::vector<std::string> Host::why_not_written() const {
    if (message_number(message()) != message_not_written || opened_.empty()) return {};
    try {
        return mending_advice(opened_, check_symbol_file(bytes_of_file(opened_)));
    } catch (const Failure &) {
        return {}; // gone since; what the library said must do
    }
}

/** @throws Failure when the symbols of a title or below it hold titles that would be dropped */
void Host::refuse_to_drop_titles(const Title &path, const std::string &action) {
    static const std::string separator = "／";
    const std::size_t cut = path.text.find(separator);
    if (opened_.empty() || cut == std::string::npos) return;
    if (!swallowed_) swallowed_ = swallowed_titles(bytes_of_file(opened_));
    const std::string block = path.text.substr(cut + separator.size());
    std::vector<std::string> hints;
    for (const SwallowedTitle &title : *swallowed_) {
        if (title.block != block && !title.block.starts_with(block + separator)) continue;
        hints.push_back(opened_ + ":" + std::to_string(title.line) +
                        ": this title line stands among the symbols of " + title.block);
    }
    if (hints.empty()) return;
    hints.push_back("'kigou check " + opened_ +
                    "' says where the symbols above are out of step; mend that in an editor, then "
                    "give the command again");
    throw Failure(Status::failed, action + ": titles of the file would be lost", hints);
}

void Host::add_title(const Title &parent, const Title &title) {
    show(parent);
    set_string(0, title.sjis);
    edit(ACC_VKEY_TITLE_ADD, "cannot add " + title.text + " below " + parent.text);
}

void Host::rename_title(const Title &path, const Title &title) {
    show(path);
    set_string(0, title.sjis);
    edit(ACC_VKEY_TITLE_CHANGE, "cannot rename " + path.text + " to " + title.text);
}

void Host::delete_title(const Title &path) {
    const std::string action = "cannot remove " + path.text;
    refuse_to_drop_titles(path, action);
    show(path);
    edit(ACC_VKEY_TITLE_DELETE, action);
}

void Host::set_data(const Title &path, const Sjis &data) {
    const std::string action = "cannot put symbols into " + path.text;
    refuse_to_drop_titles(path, action);
    show(path);
    set_string(0, data);
    edit(ACC_VKEY_DATA_REGISTER, action);
}

void Host::convert(const std::string &name) {
    set_string(0, {reinterpret_cast<const unsigned char *>(name.data()), name.size()});
    if (const int result = run(ACC_VKEY_FILE_CONVERT); result != ACC_RET_OK) {
        fail("cannot convert the old file", result);
    }
}

void Host::save(const Title &file) {
    set_string(0, file.sjis);
    set_string(1, {reinterpret_cast<const unsigned char *>(directories_.user.data()),
                   directories_.user.size()});
    const int result = run(ACC_VKEY_FILE_SAVE);
    if (result == ACC_RET_OK) return;
    std::vector<std::string> hints = why_not_written();
    if (result == ACC_RET_NOTFOUND) {
        hints = {
            "writing failed, so nothing was saved and an older file is as it was; look for "
            "room on the disk of " +
            directories_.common};
    } else if (message_number(message()) == message_not_opened) {
        hints = {"the file or the directory that holds it cannot be written; look at the rights of",
                 "  " + directories_.program, "  " + directories_.common};
    }
    throw LibraryFailure("cannot save " + file.text, result, message(), hints);
}

std::size_t Host::files_titled(const Title &file) {
    std::size_t count = 0;
    for (const Title &title : file_titles().items) count += title.sjis == file.sjis;
    return count;
}

void Host::delete_file(const Title &file) {
    const std::size_t before = files_titled(file);
    set_string(0, file.sjis);
    if (const int result = run(ACC_VKEY_FILE_DELETE); result != ACC_RET_OK) {
        fail("cannot delete " + file.text, result);
    }
    if (files_titled(file) < before) return;
    throw Failure(Status::failed, "the system refused to delete the file of " + file.text,
                  {"the directory that holds it must be writable; look at the rights of",
                   "  " + directories_.program, "  " + directories_.common});
}

std::string Host::working_file() const {
    return reinterpret_cast<const char *>(g_tAccFile[1].ucFullName);
}

} // namespace kigou
