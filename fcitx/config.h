// config.h - what a person sets in fcitx5's own settings; kept in conf/kigou.conf of fcitx5.
#ifndef KIGOU_FCITX_CONFIG_H
#define KIGOU_FCITX_CONFIG_H

#include <fcitx-config/configuration.h>
#include <fcitx-config/option.h>
#include <fcitx-utils/i18n.h>
#include <fcitx-utils/key.h>

#include <string>
#include <vector>

#include "picker/recents.h"

namespace kigou {

FCITX_CONFIGURATION(
    Config,
    fcitx::KeyListOption trigger{
        this,
        "TriggerKey",
        _("Open and close the symbols"),
        {fcitx::Key("Control+Alt+comma")},
        fcitx::KeyListConstrain(fcitx::KeyConstrainFlag::AllowModifierLess)};
    fcitx::Option<int, fcitx::IntConstrain> page_size{this, "PageSize", _("Items on a page"), 9,
                                                      fcitx::IntConstrain(1, 10)};
    fcitx::Option<int, fcitx::IntConstrain> recent_picks{
        this, "RecentPicks", _("Recent picks to keep"), static_cast<int>(Recents::most),
        fcitx::IntConstrain(0, static_cast<int>(Recents::most))};
    fcitx::Option<std::vector<std::string>> hidden{
        this, "HiddenFiles", _("Symbol files not to show (titles or file names)")};
    fcitx::Option<bool> codes{this, "ShowCodes", _("Show the codes of a symbol"), true};)

} // namespace kigou

#endif
