// session.cpp - see session.h. Items are asked for without headers and unpaged, so that a list
// holds as many as possible and an item is its text and a NUL.
#include "picker/session.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "accsym.h"
#include "picker/library_messages.h"

namespace kigou {
namespace {

std::string failure_text(const std::string &action, int result, const std::string &japanese) {
    if (japanese.empty() && result == ACC_RET_NOTFOUND) {
        return action + ": writing failed, so nothing was saved and the file is as it was";
    }
    if (japanese.empty()) {
        return action + ": the library gave result " + std::to_string(result) + " and no message";
    }
    const auto number = message_number(japanese);
    if (!number) return action + ": " + japanese;
    return action + ": " +
           std::string(library_messages[static_cast<std::size_t>(*number)].english) + " (" +
           japanese + ")";
}

std::vector<std::string> with_hint(std::vector<std::string> details, const std::string &japanese) {
    const auto number = message_number(japanese);
    if (!number || !details.empty()) return details;
    const auto hint = library_messages[static_cast<std::size_t>(*number)].hint;
    if (!hint.empty()) details.emplace_back(hint);
    return details;
}

std::vector<Advice> with_remedy(std::vector<Advice> advice, const std::string &japanese) {
    const auto number = message_number(japanese);
    if (!number || !advice.empty()) return advice;
    const auto remedy = library_messages[static_cast<std::size_t>(*number)].remedy;
    if (remedy) advice.push_back({*remedy});
    return advice;
}

std::span<const unsigned char> bytes_of(std::string_view text) {
    return {reinterpret_cast<const unsigned char *>(text.data()), text.size()};
}

} // namespace

LibraryFailure::LibraryFailure(const std::string &action, int result, const std::string &japanese,
                               std::vector<std::string> details, std::vector<Advice> advice)
    : Failure(FailureKind::failed, failure_text(action, result, japanese),
              with_hint(std::move(details), japanese), with_remedy(std::move(advice), japanese)),
      result_(result),
      message_(message_number(japanese)) {}

Session::Session(const Directories &directories)
    : directories_(directories),
      result_(ACC_SIZE_RESULT),
      display_(ACC_SIZE_DISPLAY),
      message_(ACC_SIZE_MESSAGE),
      status_(1) {
    record_.lpchResult = result_.data();
    record_.lpchDisplay = display_.data();
    record_.lpchMessage = message_.data();
    record_.lpchStatus = status_.data();
    record_.wCurrentList = 1;
    for (std::size_t i = 0; i < lists_.size(); ++i) {
        ListBuffers &buffers = lists_[i];
        buffers.level.resize(ACC_SIZE_LB_LEVEL);
        buffers.list.resize(ACC_SIZE_LB_LIST);
        buffers.attributes.resize(ACC_SIZE_LB_LISTINFO);
        buffers.item_info.resize(ACC_SIZE_LB_ITEMINFO);
        ListBox &list = record_.tListBox[i];
        list.lpchLBLevel = buffers.level.data();
        list.lpchLBList = buffers.list.data();
        list.lpchLBListInfo = buffers.attributes.data();
        list.lpchLBItemInfo = buffers.item_info.data();
    }
    static constexpr std::array<unsigned char, 2> none{0, 0};
    for (std::size_t i = 0; i < strings_.size(); ++i) set_string(i, none);
    if (const int result = run(ACC_VKEY_SET_ATTRIBUTE); result != ACC_RET_OK) {
        fail("cannot set the list geometry", result);
    }
}

Session::~Session() {
    close();
}

/** String index + 1 of the record, with a NUL added. */
void Session::set_string(std::size_t index, std::span<const unsigned char> bytes) {
    strings_[index].assign(bytes.begin(), bytes.end());
    strings_[index].push_back(0);
    unsigned char *const text = strings_[index].data();
    switch (index) {
        case 0:
            record_.lpchString1 = text;
            break;
        case 1:
            record_.lpchString2 = text;
            break;
        case 2:
            record_.lpchString3 = text;
            break;
        default:
            record_.lpchString4 = text;
            break;
    }
}

int Session::run(unsigned short command) {
    record_.wVkey = command;
    return AccSym(&record_);
}

int Session::open_titled(std::span<const unsigned char> title) {
    close();
    set_string(0, title);
    set_string(1, bytes_of(directories_.user));
    set_string(2, bytes_of(directories_.program));
    set_string(3, bytes_of(directories_.common));
    return run(ACC_VKEY_FILE_OPEN);
}

void Session::close() {
    opened_.clear();
    swallowed_.reset();
    if (std::exchange(open_, false)) run(ACC_VKEY_FILE_CLOSE);
}

/** Decoded message of the last command; empty when it left none. */
std::string Session::message() const {
    const std::size_t length = std::min<std::size_t>(record_.cchMessage, message_.size());
    return to_utf8(std::span(message_).first(length));
}

bool Session::cut_short() const {
    return message_number(message()) == message_list_too_long;
}

void Session::fail(const std::string &action, int result) const {
    throw LibraryFailure(action, result, message());
}

Listing<Title> Session::display_list() const {
    Listing<Title> listing;
    listing.cut_short = cut_short();
    std::span<const unsigned char> rest = std::span(display_).first(record_.cchDisplay);
    while (!rest.empty()) {
        const auto end = std::find(rest.begin(), rest.end(), 0);
        const auto length = static_cast<std::size_t>(end - rest.begin());
        listing.items.push_back(title_of(rest.first(length)));
        rest = rest.subspan(std::min(length + 1, rest.size()));
    }
    return listing;
}

Listing<Title> Session::file_titles() {
    // The library learns its directories from an open alone. No file title holds a line
    // end, so this one hands them over and opens nothing.
    const int handed_over = open_titled(bytes_of("\r"));
    if (message_number(message()) != message_no_such_file) {
        fail("cannot look for symbol files", handed_over);
    }
    if (const int result = run(ACC_VKEY_FILE_TITLES); result != ACC_RET_OK) {
        throw Failure(FailureKind::failed,
                      "cannot read the directory \"" + directories_.program + "\"", {},
                      {{Remedy::name_program_folder}});
    }
    return display_list();
}

void Session::open(const Title &file) {
    const std::string action = "cannot open " + file.text;
    const int result = open_titled(file.sjis);
    open_ = result == ACC_RET_OK;
    if (open_) {
        opened_ = reinterpret_cast<const char *>(g_tAccFile[0].ucFullName);
        return;
    }
    const std::string japanese = message();
    if (message_number(japanese) != message_no_such_file) {
        throw LibraryFailure(action, result, japanese);
    }
    if (run(ACC_VKEY_FILE_CHECK) == ACC_RET_OK) {
        throw LibraryFailure(action, result, japanese,
                             {"the file is there but cannot be written: every set but "
                              "default.kig is opened for update; make it writable"});
    }
    throw Failure(FailureKind::nothing_found, failure_text(action, result, japanese), {},
                  {{Remedy::list_sets}});
}

Listing<Title> Session::tree() {
    if (const int result = run(ACC_VKEY_TREE_TITLES); result != ACC_RET_OK) {
        fail("cannot list the titles", result);
    }
    return display_list();
}

Contents Session::contents(const Title &path) {
    record_.wCurrentList = 1;
    set_string(0, path.sjis);
    const int result = run(ACC_VKEY_SET_POSITION);
    Contents contents;
    const bool file_without_titles = result == ACC_RET_ERROR && record_.cchMessage == 0;
    if (file_without_titles) return contents;
    if (result == ACC_RET_NOTFOUND) {
        throw Failure(FailureKind::nothing_found, "there is no title " + path.text);
    }
    if (result != ACC_RET_OK) fail("cannot read " + path.text, result);
    const ListBox &list = record_.tListBox[record_.wCurrentList - 1];
    // The lists of its ancestors are refilled too; only a full list can be the cut one.
    contents.cut_short = cut_short() && list.cchLBListLen + ACC_SIZE_LB_LEVEL > 65535;
    std::span<const unsigned char> rest(list.lpchLBList, list.cchLBListLen);
    for (std::size_t i = 0; i < list.cchLBItemTotal; ++i) {
        const auto end = std::find(rest.begin(), rest.end(), 0);
        const auto length = static_cast<std::size_t>(end - rest.begin());
        if (list.lpchLBListInfo[i] & LBINFO_SYMBOL) {
            contents.symbols.emplace_back(rest.begin(), end);
        } else if (Title title = title_of(rest.first(length));
                   lies_below(std::span(title.sjis), path.sjis)) {
            contents.titles.push_back(std::move(title));
        }
        rest = rest.subspan(std::min(length + 1, rest.size()));
    }
    return contents;
}

} // namespace kigou
