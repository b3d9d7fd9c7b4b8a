// What tests of edits share.
#ifndef TESTS_PICKER_EDITS_H
#define TESTS_PICKER_EDITS_H

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "picker/editing.h"
#include "picker/failure.h"
#include "picker/set_import.h"
#include "picker/text.h"
#include "tests/support/workspace.h"

namespace kigou {

/** Data of one line. */
inline Sjis data_of(const std::string &symbols) {
    Sjis data = to_sjis(symbols);
    data.insert(data.end(), {'\r', '\n'});
    return data;
}

inline Directories directories_of(const Workspace &workspace) {
    return {workspace.program, workspace.common, workspace.user};
}

/** Imports blocks of which none is left out. */
inline void import_blocks(Edit &edit, std::vector<SetBlock> blocks) {
    LeftOutList left_out;
    import_set(edit, {{}, std::move(blocks)}, left_out);
    EXPECT_EQ(left_out.count(), 0U);
}

inline FailureKind kind_of(const std::function<void()> &work) {
    try {
        work();
    } catch (const Failure &failure) {
        return failure.kind();
    }
    ADD_FAILURE() << "did not fail";
    return FailureKind::failed;
}

} // namespace kigou

#endif
