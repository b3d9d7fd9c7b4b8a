// status.h - the exit statuses of kigou.
#ifndef KIGOU_STATUS_H
#define KIGOU_STATUS_H

namespace kigou {

enum class Status {
    found = 0,         /**< there is a result, or the work is done */
    nothing_found = 1, /**< what was asked for does not exist */
    findings = 1,      /**< a file that was checked is not as it should be */
    failed = 2,        /**< misuse, or the work could not be done */
    incomplete = 3     /**< done, but something was left out */
};

} // namespace kigou

#endif
