// module.h - the add-on: symbols in the text field that has the focus, beside whatever engine is
// active there. Of the engines it knows nothing; while the symbols are open it takes the keys
// before they do.
#ifndef KIGOU_FCITX_MODULE_H
#define KIGOU_FCITX_MODULE_H

#include <fcitx-utils/eventdispatcher.h>
#include <fcitx-utils/trackableobject.h>
#include <fcitx/addoninstance.h>
#include <fcitx/inputcontext.h>
#include <fcitx/instance.h>

#include <functional>
#include <memory>
#include <vector>

#include "fcitx/config.h"
#include "fcitx/keys.h"
#include "fcitx/opening.h"

namespace kigou {

class Module : public fcitx::AddonInstance {
  public:
    explicit Module(fcitx::Instance *instance);
    ~Module() override;

    void reloadConfig() override;
    const fcitx::Configuration *getConfig() const override { return &config_; }
    void setConfig(const fcitx::RawConfig &raw) override;

  private:
    void watch(fcitx::EventType type, std::function<void(fcitx::Event &)> handler);
    void guarded(const std::function<void()> &work) noexcept;
    void take_key(fcitx::KeyEvent &event);
    void open(fcitx::InputContext &field);
    void close();
    void act(const Command &command);
    void toggle_favourite();
    void draw();
    void use_config();
    void take(const std::vector<Sjis> &symbols, bool with_partner);
    void commit_composition(fcitx::InputContext &field);
    bool is_open_in(const fcitx::InputContext *field) const;

    fcitx::Instance *instance_;
    Config config_;
    fcitx::EventDispatcher dispatcher_; /**< outlives the work beside that opening_ waits for */
    Opening opening_;
    bool selected_ = false;           /**< whether something is selected in the field */
    bool looks_for_selected_ = false; /**< and nothing was done behind that */
    fcitx::TrackableObjectReference<fcitx::InputContext> field_; /**< where it is open */
    std::vector<std::unique_ptr<fcitx::HandlerTableEntry<fcitx::EventHandler>>> watched_;
};

} // namespace kigou

#endif
