// failure.h - how a command ends without its result.
#ifndef KIGOU_FAILURE_H
#define KIGOU_FAILURE_H

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace kigou {

/** Exit statuses of the program. */
enum class Status {
    found = 0,         /**< there is a result, or the work is done */
    nothing_found = 1, /**< what was asked for does not exist */
    findings = 1,      /**< a file that was checked is not as it should be */
    failed = 2,        /**< misuse, or the work could not be done */
    incomplete = 3     /**< done, but something was left out */
};

/** Ends a command. The text is one line without "kigou: "; hints are lines that say what to do. */
class Failure : public std::runtime_error {
  public:
    Failure(Status status, const std::string &text, std::vector<std::string> hints = {})
        : std::runtime_error(text), status_(status), hints_(std::move(hints)) {}

    Status status() const { return status_; }
    const std::vector<std::string> &hints() const { return hints_; }

  private:
    Status status_;
    std::vector<std::string> hints_;
};

} // namespace kigou

#endif
