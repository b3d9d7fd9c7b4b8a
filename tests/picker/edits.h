// What tests of edits share.
#ifndef TESTS_PICKER_EDITS_H
#define TESTS_PICKER_EDITS_H

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "picker/failure.h"
#include "picker/text.h"

namespace kigou {

/** Data of one line. */
inline Sjis data_of(const std::string &symbols) {
    Sjis data = to_sjis(symbols);
    data.insert(data.end(), {'\r', '\n'});
    return data;
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
