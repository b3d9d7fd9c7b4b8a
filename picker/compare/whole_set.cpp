// whole_set.cpp - see whole_set.h.
#include "picker/compare/whole_set.h"

#include "picker/check.h"
#include "picker/compare/title_tree.h"
#include "picker/failure.h"
#include "picker/set_text.h"

namespace kigou {

Sjis text_of(const SymbolSet &set) {
    const Title file = title_of(set.file);
    SetText text(file);
    for (const SetBlock &block : set.blocks) {
        const Title path = joined(file, block.path);
        text.add(title_of(above(path.sjis, file.sjis.size())), path.sjis, block.data);
    }
    return text.text();
}

SymbolSet whole_set_of(const Snapshot &snapshot) {
    SymbolSet set = set_of(snapshot);
    tree_of(set, snapshot.path());
    Sjis text = snapshot.text();
    if (!text.empty() && text.back() != '\n') text.insert(text.end(), {'\r', '\n'});
    if (text_of(set) != text) refuse_loose_lines(snapshot.path());
    return set;
}

void refuse_damage(const std::string &file, const Sjis &bytes) {
    constexpr std::size_t most_told = 10;
    std::vector<std::string> lines;
    for (const Finding &finding : check_symbol_file(bytes).findings) {
        const bool is_damage = finding.unsafe || finding.kind == "unterminated";
        if (is_damage && lines.size() < most_told) {
            lines.push_back(file + ":" + std::to_string(finding.line) + ": " + finding.text);
        }
    }
    if (lines.empty()) return;
    throw Failure(FailureKind::failed, file + " is cut or damaged; a merge would spread that",
                  lines, {{Remedy::mend_file, file}});
}

void refuse_loose_lines(const std::string &file) {
    throw Failure(FailureKind::failed,
                  file + " has lines that are in no title; a merge would lose them", {},
                  {{Remedy::mend_file, file}});
}

} // namespace kigou
