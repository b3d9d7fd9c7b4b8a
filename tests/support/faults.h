// Makes the n-th call of the heap or of files fail, n = 1, 2, 3, ... until none is left.
#ifndef TESTS_SUPPORT_FAULTS_H
#define TESTS_SUPPORT_FAULTS_H

#include <gtest/gtest.h>

#include "common/faults.h"

/** Counts operations while armed and fails the n-th, once or from then on. */
class Fault {
  public:
    Fault(int nth, bool lasting) : nth_(nth), lasting_(lasting) {}
    ~Fault() { disarm(); }

    void arm() {
        current = this;
        acc::set_fault_hook([](acc::Operation operation) { return current->hits(operation); });
    }
    static void disarm() { acc::set_fault_hook(nullptr); }

    bool fired() const { return fired_; }
    acc::Operation operation() const { return operation_; } // that failed first

  private:
    bool hits(acc::Operation operation) {
        ++count_;
        // Removing goes on working: what cannot be removed cannot be asked to be gone.
        const bool later = lasting_ && count_ > nth_ && operation != acc::Operation::remove;
        if (count_ != nth_ && !later) return false;
        if (!fired_) operation_ = operation;
        fired_ = true;
        return true;
    }

    static inline Fault *current;
    int nth_, count_ = 0;
    bool lasting_, fired_ = false;
    acc::Operation operation_{};
};

/**
 * Runs a case with the first operation failing, then the second, and so on, until a run in
 * which none was left to fail; all that once with a single failure, once with lasting ones.
 * @param body  called with the Fault, which it arms around what is to be tested
 */
template <typename Body>
void each_fault(Body body) {
    for (const bool lasting : {false, true}) {
        for (int nth = 1;; ++nth) {
            SCOPED_TRACE(::testing::Message() << "operation " << nth << (lasting ? " and later" : "") << " fails");
            Fault fault(nth, lasting);
            body(fault);
            if (!fault.fired()) break;
            ASSERT_LT(nth, 10000) << "no end of operations";
            if (::testing::Test::HasFailure()) return;
        }
    }
}

#endif
