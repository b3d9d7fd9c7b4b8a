/*
 * faults.h - lets a test make calls of the heap and of files fail.
 *
 * Whoever asks libc for one of these operations asks fault_hits() first and, when told
 * so, behaves as after a failure: a failed close has closed all the same, a failed write
 * has written half. In the library as it ships the question is a constant false.
 */
#ifndef ACCSYM_COMMON_FAULTS_H
#define ACCSYM_COMMON_FAULTS_H

namespace acc {

/** What can fail. A close counts as flush, a directory's sync as sync; directory is opening a
 * listing and each step in it. */
enum class Operation { heap, open, read, write, flush, sync, rename, remove, directory };

#ifdef ACC_FAULTS

/** Installs the function that says whether an operation about to be tried fails; null: never. */
void set_fault_hook(bool (*hook)(Operation));

/** Whether this operation is to fail; errno is then set as the system would. */
bool fault_hits(Operation operation);

#else

constexpr bool fault_hits(Operation) {
    return false;
}

#endif

} // namespace acc

#endif
