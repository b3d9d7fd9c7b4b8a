// host.h - fcitx5 with the module and a text field, all in one process: without a bus, so that
// keys cost nothing but themselves, and with the sanitizers that the program was built with.
#ifndef KIGOU_TESTS_FCITX_HOST_H
#define KIGOU_TESTS_FCITX_HOST_H

#include <fcitx-utils/eventdispatcher.h>
#include <fcitx/inputcontext.h>
#include <fcitx/inputpanel.h>
#include <fcitx/instance.h>

#include <functional>
#include <future>
#include <string>
#include <thread>

namespace kigou {

/** A text field with the focus, as an application has one. Belongs to the thread of fcitx5. */
class Field : public fcitx::InputContext {
  public:
    explicit Field(fcitx::InputContextManager &manager);
    ~Field() override { destroy(); }

    const char *frontend() const override { return "host"; }

    /** One key down, as fcitx5 writes it: Control+Alt+comma, Page_Down, a.
        @return false when it is the application's */
    bool press(const std::string &key);

    std::string committed; /**< all of it since somebody emptied it */

  private:
    void commitStringImpl(const std::string &text) override { committed += text; }
    void deleteSurroundingTextImpl(int, unsigned int) override {}
    void forwardKeyImpl(const fcitx::ForwardKeyEvent &) override {}
    void updatePreeditImpl() override {}
};

/**
 * fcitx5 in a thread. It finds its folders in the environment of the process, and looks there
 * once: there can be one in a process, and no other thread that reads the environment. There is
 * no engine: that of the keyboard is part of the program fcitx5.
 */
class Fcitx {
  public:
    /**
     * Starts it; work waits until it takes keys.
     * @param prefix  where the module is installed
     * @param folder  for all that is written; symbol files are in program/ and common/
     */
    Fcitx(const std::string &prefix, const std::string &folder);
    ~Fcitx();
    Fcitx(const Fcitx &) = delete;
    Fcitx &operator=(const Fcitx &) = delete;

    /** Has work done by fcitx5's thread between its events, and waits for it.
        @throws what the work throws */
    void run(const std::function<void(fcitx::Instance &)> &work);

  private:
    void live(std::promise<void> &attached);

    fcitx::EventDispatcher dispatcher_;
    fcitx::Instance *instance_ = nullptr;
    std::thread thread_;
};

} // namespace kigou

#endif
