// cmd_git_setup.cpp - kigou git-setup: has git know symbol files.
#include <fcntl.h>

#include <iostream>
#include <memory>

#include "cli/command.h"
#include "cli/json.h"
#include "cli/run_program.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"

namespace kigou {
namespace {

constexpr const char *attributes = "*.kig diff=kigou merge=kigou -text\n";

struct Setting {
    const char *key, *value;
};

// git runs these by a shell, and quotes what it puts in. A version that is no symbol file is shown
// as it is; what cannot be merged by titles is merged by lines, with marks, so that both sides are
// there.
constexpr Setting settings[] = {
    {"diff.kigou.textconv", "f() { kigou export \"$1\" 2>/dev/null || cat \"$1\"; }; f"},
    {"diff.kigou.xfuncname", "^(［.*］)$"},
    {"merge.kigou.name", "symbol files, by titles and symbols"},
    {"merge.kigou.driver",
     "f() { kigou merge --name \"$4\" \"$1\" \"$2\" \"$3\"; s=$?; [ $s -lt 2 ] && return $s; "
     "echo \"kigou: $4 is merged by lines instead\" >&2; "
     "git merge-file -L ours -L old -L theirs \"$2\" \"$1\" \"$3\"; return 1; }; f %O %A %B %P"},
};

std::string git(const std::string &folder, std::vector<std::string> words,
                const std::string &otherwise) {
    words.insert(words.begin(), {"git", "-C", folder});
    ProgramEnd end = run_program(words);
    if (end.status == 127)
        throw Failure(FailureKind::failed, "git cannot be run; is it installed?");
    if (end.status != 0) {
        throw Failure(FailureKind::failed, otherwise + folder);
    }
    if (end.output.ends_with('\n')) end.output.pop_back();
    return std::move(end.output);
}

/** @return whether the line had to be added */
bool add_attributes(const std::string &path) {
    Sjis text;
    if (identity_of(path)) text = read_file(path).bytes;
    const std::string held(text.begin(), text.end()), line = attributes;
    if (("\n" + held).find("\n" + line) != std::string::npos) return false;
    if (!held.empty() && !held.ends_with('\n')) text.push_back('\n');
    text.insert(text.end(), line.begin(), line.end());
    replace_file(path, text, 0644);
    return true;
}

Status run(const Context &context, const std::string &folder) {
    const std::string top = git(folder, {"rev-parse", "--show-toplevel"}, "there is no clone in ");
    const std::string path = top + "/.gitattributes";
    const bool added = add_attributes(path);
    for (const Setting &setting : settings) {
        git(top, {"config", setting.key, setting.value}, "git cannot be configured in ");
    }
    if (context.json) {
        write({{"folder", top}, {"attributes_added", added}});
        return Status::found;
    }
    std::cout << (added ? "added to " : "already in ") << path << ": " << attributes
              << "set for this clone: how git shows symbol files and merges them\n";
    if (added) std::cout << "commit .gitattributes; each clone needs 'kigou git-setup' once\n";
    return Status::found;
}

Body declare(Arguments &arguments) {
    const auto folder = std::make_shared<std::string>(".");
    arguments.optional_word("FOLDER", Value::folder, *folder, "A folder of the clone");
    return [folder](const Context &context) { return run(context, *folder); };
}

} // namespace

const Command git_setup_command{
    .name = "git-setup",
    .summary = "Have git show symbol files as text and merge them by titles",
    .examples =
        "  kigou git-setup\n"
        "  kigou git-setup ~/sets",
    .declare = declare,
    .notes =
        "It adds a line to .gitattributes, which belongs to the repository, and settings to "
        "the configuration of the clone. docs/sets.md tells how a team works so.",
    .exit_status = "0 done, 2 no clone, or git refused"};

} // namespace kigou
