#include "common/faults.h"

#ifdef ACC_FAULTS

#include <atomic>
#include <cerrno>

namespace acc {

namespace {

constinit std::atomic<bool (*)(Operation)> fault_hook{nullptr};

} // namespace

void set_fault_hook(bool (*hook)(Operation)) {
    fault_hook.store(hook);
}

bool fault_hits(Operation operation) {
    bool (*const hook)(Operation) = fault_hook.load();
    if (hook == nullptr || !hook(operation)) return false;
    errno = operation == Operation::heap ? ENOMEM : EIO;
    return true;
}

} // namespace acc

#endif
