// beside.h - work on the disk that no key waits for: one thing behind the other, in a thread.
#ifndef KIGOU_FCITX_BESIDE_H
#define KIGOU_FCITX_BESIDE_H

#include <functional>
#include <future>
#include <optional>
#include <string>

namespace kigou {

/** Its end waits for the work that is left. */
class Beside {
  public:
    /** @return what went wrong, for people; empty when nothing did */
    using Work = std::function<std::string()>;

    /** Has work done behind that of before. It must not throw. */
    void run(Work work);

    /** What went wrong last since this was asked; nothing while there is work left. */
    std::optional<std::string> troubles();

  private:
    std::future<std::string> last_; /**< with what went wrong before it */
};

} // namespace kigou

#endif
