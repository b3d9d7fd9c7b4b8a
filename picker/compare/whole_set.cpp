// whole_set.cpp - see whole_set.h.
#include "picker/compare/whole_set.h"

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
    if (text_of(set) != snapshot.text()) refuse_loose_lines(snapshot.path());
    return set;
}

void refuse_loose_lines(const std::string &file) {
    throw Failure(FailureKind::failed,
                  file + " has lines that are in no title; a merge would lose them", {},
                  {{Remedy::mend_file, file}});
}

} // namespace kigou
