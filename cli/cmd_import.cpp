// cmd_import.cpp - kigou import: an old-format file or an export into a symbol file.
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>

#include "cli/command.h"
#include "cli/edit.h"
#include "cli/messages.h"
#include "cli/old_format.h"
#include "cli/output.h"
#include "cli/storable.h"
#include "cli/symbol_input.h"
#include "cli/symbol_set.h"
#include "cli/working_copy.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t most_path = 514;

struct Options {
    std::string source, format;
    std::optional<std::string> into;
    EditOptions edit;
};

/** A private directory that is gone at the end. */
class ScratchDirectory {
  public:
    ScratchDirectory() {
        std::string name = (fs::temp_directory_path() / "kigou-XXXXXX").string();
        if (!mkdtemp(name.data())) {
            throw Failure(Status::failed,
                          "cannot make a directory in " + fs::temp_directory_path().string());
        }
        path_ = name;
    }
    ~ScratchDirectory() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    ScratchDirectory(const ScratchDirectory &) = delete;
    ScratchDirectory &operator=(const ScratchDirectory &) = delete;

    const fs::path &path() const { return path_; }

  private:
    fs::path path_;
};

/** Leaves a directory at the end for the one before. */
class WorkingDirectory {
  public:
    explicit WorkingDirectory(const fs::path &path) : before_(fs::current_path()) {
        fs::current_path(path);
    }
    ~WorkingDirectory() {
        std::error_code ignored;
        fs::current_path(before_, ignored);
    }
    WorkingDirectory(const WorkingDirectory &) = delete;
    WorkingDirectory &operator=(const WorkingDirectory &) = delete;

  private:
    fs::path before_;
};

Title joined(const Title &parent, const Sjis &title) {
    Sjis sjis = parent.sjis;
    sjis.insert(sjis.end(), {0x81, 0x5E});
    sjis.insert(sjis.end(), title.begin(), title.end());
    return {sjis, to_utf8(sjis)};
}

/** The titles of a path that is not made by hand: no title holds a separator. */
std::vector<Title> titles_of(const Sjis &path) {
    std::vector<Title> titles;
    std::string_view rest;
    const std::string text = to_utf8(path);
    for (rest = text; rest.find(separator) != std::string_view::npos;) {
        titles.push_back(typed_title(std::string(rest.substr(0, rest.find(separator)))));
        rest.remove_prefix(rest.find(separator) + separator.size());
    }
    titles.push_back(typed_title(std::string(rest)));
    return titles;
}

/** Puts the blocks of an export into the open file. */
class SetImport {
  public:
    SetImport(Edit &edit, Title file, std::vector<LeftOut> &left_out)
        : edit_(edit), file_(std::move(file)), left_out_(left_out) {
        for (WorkingBlock &block : working_copy(edit.host()).blocks) {
            data_.emplace(block.path.sjis, std::move(block.data));
        }
    }

    void add(const SetBlock &block) {
        Title path = file_;
        std::size_t level = 1;
        bool existed = true;
        for (const Title &title : titles_of(block.path)) {
            const Title parent = std::exchange(path, joined(path, title.sjis));
            existed = data_.count(path.sjis) != 0;
            if (existed) {
                ++level;
                continue;
            }
            std::optional<std::string> reason = title_refusal(title);
            if (!reason && path.sjis.size() > most_path) reason = "the path is too long";
            if (!reason && level >= most_levels) reason = "it is deeper than ten levels";
            if (reason) {
                left_out_.push_back(
                    {block.place, "the title " + path.text + " with its symbols: " + *reason});
                return;
            }
            ++level;
            edit_.host().add_title(parent, title);
            data_.emplace(path.sjis, Sjis{});
            if (path.sjis != joined(file_, block.path).sjis) {
                edit_.did("added " + path.text + ", which stands above others",
                          {{"change", "add"}, {"path", path.text}});
            }
        }
        store(path, block, existed);
    }

  private:
    void store(const Title &path, const SetBlock &block, bool existed) {
        Sjis &held = data_[path.sjis];
        Sjis data = block.data;
        std::size_t added = symbols_in(data).size();
        if (existed && !held.empty()) {
            const std::vector<Sjis> before = symbols_in(held);
            std::vector<Sjis> fresh;
            for (const Sjis &symbol : symbols_in(block.data)) {
                if (std::find(before.begin(), before.end(), symbol) == before.end()) {
                    fresh.push_back(symbol);
                }
            }
            if (fresh.empty()) return;
            added = fresh.size();
            data = held;
            if (data.back() != '\n') data.insert(data.end(), {'\r', '\n'});
            append_lines(data, fresh);
        }
        if (data.size() > most_data) {
            left_out_.push_back(
                {block.place, "the symbols of " + path.text + ": " + std::to_string(data.size()) +
                                  " bytes of at most " + std::to_string(most_data)});
            added = 0;
        } else if (!data.empty()) {
            try {
                edit_.host().set_data(path, data);
                held = data;
            } catch (const LibraryFailure &failure) {
                if (failure.message() != message_input_error) throw;
                left_out_.push_back({block.place, failure.what()});
                added = 0;
            }
        }
        if (existed && added == 0) return;
        edit_.did(
            (existed ? "added to " : "added ") + path.text + " (" + counted(added, "symbol") + ")",
            {{"change", existed ? "append" : "add"}, {"path", path.text}, {"symbols", added}});
    }

    Edit &edit_;
    Title file_;
    std::vector<LeftOut> &left_out_;
    std::map<Sjis, Sjis> data_; /**< by full path; of titles that stand twice the first */
};

/** Converts an old file that the library wants under a bare name in the current directory. */
void import_old_file(Edit &edit, const Title &file, const Sjis &bytes, OldFile &old,
                     const fs::path &scratch) {
    const std::size_t before = working_copy(edit.host()).blocks.size();
    {
        const WorkingDirectory there(scratch);
        std::ofstream copy("old.ini", std::ios::binary);
        copy.write(reinterpret_cast<const char *>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        copy.close();
        if (!copy) throw Failure(Status::failed, "cannot write to " + scratch.string());
        try {
            edit.host().convert("old.ini");
        } catch (const LibraryFailure &failure) {
            std::vector<std::string> hints;
            for (const LeftOut &reason : old.fatal)
                hints.push_back(reason.place + ": " + reason.reason);
            if (hints.empty()) hints = failure.hints();
            throw Failure(Status::failed, failure.what(), hints);
        }
    }
    const WorkingCopy after = working_copy(edit.host());
    for (std::size_t i = before; i < after.blocks.size(); ++i) {
        const WorkingBlock &block = after.blocks[i];
        const std::size_t symbols = symbols_in(block.data).size();
        edit.did("added " + block.path.text + " (" + counted(symbols, "symbol") + ")",
                 {{"change", "add"}, {"path", block.path.text}, {"symbols", symbols}});
        const auto earlier = after.blocks.begin() + static_cast<std::ptrdiff_t>(i);
        const bool twice = std::any_of(after.blocks.begin(), earlier, [&](const auto &other) {
            return other.path.sjis == block.path.sjis;
        });
        if (!twice) continue;
        const std::string place =
            i - before < old.titles.size() ? old.titles[i - before].place : "";
        old.left_out.push_back({place, block.path.text + " stands twice in " + file.text +
                                           " now and only the first is shown; rename that one "
                                           "to see the other"});
    }
}

std::string without_mark(const std::string &text) {
    return text.starts_with("\xEF\xBB\xBF") ? text.substr(3) : text;
}

Status run(Context context, const Options &options) {
    const bool from_input = options.source == "-";
    std::string text = from_input ? standard_input("paste an export") : std::string();
    if (!from_input) {
        const Sjis bytes = bytes_of_file(options.source);
        text.assign(bytes.begin(), bytes.end());
    }
    static const std::map<std::string, Format> formats{
        {"text", Format::text}, {"json", Format::json}, {"tsv", Format::tsv}};
    const auto format = options.format.empty()    ? format_of(without_mark(text))
                        : options.format == "ini" ? std::nullopt
                                                  : std::optional(formats.at(options.format));

    // The conversion changes the current directory and makes a scratch file in the common one.
    const ScratchDirectory scratch;
    for (std::string *path : {&context.directories.program, &context.directories.common}) {
        *path = fs::absolute(*path).string();
    }
    if (const char *tmp = std::getenv("TMPDIR"); tmp && *tmp && *tmp != '/') {
        setenv("TMPDIR", fs::absolute(tmp).c_str(), 1);
    }
    if (!options.edit.dry_run) {
        make_common_directory(context.directories);
    } else if (!fs::is_directory(context.directories.common)) {
        context.directories.common = scratch.path().string();
    }

    std::vector<LeftOut> left_out;
    SymbolSet set;
    OldFile old;
    const Sjis bytes(text.begin(), text.end());
    if (format) {
        set = read_set(without_mark(text), *format, left_out);
    } else {
        old = examine_old_file(bytes);
    }
    std::string title = options.into.value_or(format ? to_utf8(set.file)
                                                     : fs::path(options.source).stem().string());
    if (from_input && !format && !options.into) {
        throw Failure(Status::failed, "an old file from the standard input has no name",
                      {"--into TITLE names the symbol file to add its titles to"});
    }
    Edit edit(context, options.edit);
    Title file = typed_title(title);
    if (edit.is_taken(file)) {
        if (!options.into && format) {
            throw Failure(Status::failed, "there is a symbol file " + file.text + " already",
                          {"--into " + file.text + " adds to it, --into NEW-TITLE makes another"});
        }
        edit.open(file);
    } else {
        file = new_file_title(title);
        edit.create(file);
        edit.did("made the symbol file " + file.text, {{"change", "new"}, {"path", file.text}});
    }
    if (format) {
        SetImport import(edit, file, left_out);
        for (const SetBlock &block : set.blocks) import.add(block);
    } else {
        import_old_file(edit, file, bytes, old, scratch.path());
        left_out = std::move(old.left_out);
    }
    nlohmann::ordered_json extra = {{"left_out", nlohmann::json::array()}};
    for (const LeftOut &one : left_out) {
        extra["left_out"].push_back({{"place", one.place}, {"reason", one.reason}});
        complain("left out: " + one.place + ": " + one.reason);
    }
    edit.finish(extra);
    return left_out.empty() ? Status::found : Status::incomplete;
}

Body declare(CLI::App &app) {
    const auto options = std::make_shared<Options>();
    app.add_option("FILE", options->source, "File to read; - is the standard input")->required();
    app.add_option("--into", options->into,
                   "Symbol file to add to, made when there is none (default: a new one with the "
                   "title in the export, or the name of the old file)");
    app.add_option("--format", options->format,
                   "ini, text, json or tsv (default: seen from the file)")
        ->check(CLI::IsMember({"ini", "text", "json", "tsv"}));
    app.add_option(
        "--as", options->edit.as,
        "Keep the result as a new symbol file of this title; the old one stays as it is");
    declare_dry_run(app, options->edit);
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command import_command{"import", "Add the titles of an old-format file or of an export",
                             "  kigou import old.ini --into 私の記号\n"
                             "  kigou import 私の記号.txt\n"
                             "  kigou export 拡張の記号 | kigou import - --into 私の記号\n"
                             "A title that is there already gets the symbols that it lacks.\n"
                             "Exit status 3: something was left out; each is named.",
                             declare};

} // namespace kigou
