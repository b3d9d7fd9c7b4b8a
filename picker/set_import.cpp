// set_import.cpp - see set_import.h.
#include "picker/set_import.h"

#include <algorithm>
#include <utility>

#include "picker/failure.h"
#include "picker/library_messages.h"
#include "picker/set_text.h"
#include "picker/symbol_data.h"

namespace kigou {
namespace {

using Bytes = std::span<const unsigned char>;

constexpr std::size_t most_reasons = 20;

/** Puts blocks into the text of a set. */
class SetImport {
  public:
    SetImport(SetText &text, Title file, LeftOutList &left_out)
        : text_(text), file_(std::move(file)), left_out_(left_out) {}

    void add(const SetBlock &block) {
        const Title path = joined(file_, block.path);
        const bool existed = text_.has(path.sjis);
        if (!existed && !make_parents(block, path)) return;
        const auto data = data_for(block, path, existed);
        if (!data && existed) return;
        const std::size_t symbols = data ? data->symbols : 0;
        Sjis bytes = data ? data->bytes : Sjis{};
        if (existed) {
            text_.set_data(path.sjis, std::move(bytes));
        } else {
            text_.add(title_of(above(path.sjis, file_.sjis.size())), path.sjis, std::move(bytes));
        }
        changes_.push_back({.kind = existed ? ChangeKind::appended : ChangeKind::added,
                            .path = path.text,
                            .symbols = symbols});
    }

    std::vector<Change> changes() { return std::move(changes_); }

  private:
    struct Data {
        Sjis bytes;
        std::size_t symbols; /**< that are new */
    };

    /** @return false when the title, or one above it, cannot be made; then nothing is */
    bool make_parents(const SetBlock &block, const Title &path) {
        std::vector<Bytes> missing;
        if (const auto reason = path_refusal(path)) {
            left_out_.add(block.place,
                          "the title " + shortened(path.text) + " with its symbols: " + *reason);
            return false;
        }
        for (Bytes one = path.sjis; !text_.has(one); one = above(one, file_.sjis.size()))
            missing.push_back(one);
        if (const auto reason = refusal(missing)) {
            left_out_.add(block.place, "the title " + path.text + " with its symbols: " + *reason);
            return false;
        }
        for (auto one = missing.rbegin(); one + 1 != missing.rend(); ++one) {
            text_.add(title_of(above(*one, file_.sjis.size())), *one, {});
            changes_.push_back(
                {.kind = ChangeKind::added, .path = title_of(*one).text, .above_others = true});
        }
        return true;
    }

    /** What can be said of a path before its titles are looked at: it may be very long. */
    std::optional<std::string> path_refusal(const Title &path) const {
        if (path.sjis.size() > most_path) return "the path is too long";
        const Bytes titles = Bytes(path.sjis).subspan(file_.sjis.size() + 2);
        if (level_of(title_of(titles).text, "") >= most_levels) {
            return "it is deeper than ten levels";
        }
        return std::nullopt;
    }

    std::optional<std::string> refusal(const std::vector<Bytes> &missing) const {
        if (text_.titles() + missing.size() > most_titles) return "the set has all titles it can";
        for (auto one = missing.rbegin(); one != missing.rend(); ++one) {
            const Bytes name = one->subspan(above(*one, file_.sjis.size()).size() + 2);
            if (auto reason = title_refusal(title_of(name))) return reason;
        }
        return std::nullopt;
    }

    /** Data that the title shall have; nothing when it gets none of the block's. */
    std::optional<Data> data_for(const SetBlock &block, const Title &path, bool existed) {
        Data data{block.data, symbols_in(block.data).size()};
        if (existed && !text_.data(path.sjis).empty()) {
            const std::vector<Sjis> fresh =
                missing_from(text_.data(path.sjis), symbols_in(block.data));
            Sjis lines;
            append_lines(lines, fresh);
            data = {text_.data(path.sjis), fresh.size()};
            append_data(data.bytes, lines);
        }
        if (existed && data.symbols == 0) return std::nullopt;
        if (const auto reason = data_refusal(data.bytes)) {
            left_out_.add(block.place, "the symbols of " + path.text + ": " + *reason);
            return std::nullopt;
        }
        return data;
    }

    SetText &text_;
    Title file_;
    LeftOutList &left_out_;
    std::vector<Change> changes_;
};

} // namespace

namespace {

SetText text_of(const Edit &edit) {
    return edit.located() ? SetText(edit.located()->snapshot) : SetText(edit.file());
}

} // namespace

void import_set(Edit &edit, const SymbolSet &set, LeftOutList &left_out) {
    SetText text = text_of(edit);
    SetImport import(text, edit.file(), left_out);
    for (const SetBlock &block : set.blocks) import.add(block);
    std::vector<Change> changes = import.changes();
    if (!changes.empty()) edit.replace_text(text.text(), std::move(changes));
}

void import_old_file(Edit &edit, const OldFile &old, LeftOutList &left_out) {
    if (!old.fatal.empty()) {
        std::vector<std::string> details;
        for (const LeftOut &reason : old.fatal) {
            if (details.size() < most_reasons)
                details.push_back(reason.place + ": " + reason.reason);
        }
        const LibraryMessage &message = library_messages[message_not_converted];
        throw Failure(FailureKind::refused,
                      "cannot convert the old file: " + std::string(message.english) + " (" +
                          std::string(message.japanese) + ")",
                      details);
    }
    SetText text = text_of(edit);
    std::vector<Change> changes;
    for (const LeftOut &one : old.left_out) left_out.add(one.place, one.reason);
    for (const OldTitle &title : old.titles) {
        const Title path = joined(edit.file(), title.title);
        if (text.has(path.sjis)) {
            left_out.add(title.place, path.text + " stands twice in " + edit.file().text +
                                          " now and only the first is shown; rename that one to "
                                          "see the other");
        }
        text.add(edit.file(), path.sjis, title.data);
        changes.push_back({.kind = ChangeKind::added,
                           .path = path.text,
                           .symbols = symbols_in(title.data).size()});
    }
    edit.replace_text(text.text(), std::move(changes));
}

} // namespace kigou
