// The windows' sizes and places between runs, in the preferences.
//
//     [Windows]
//     frmMaps=1340x690@26,40 | 1920x1080@0,0
//     frmMisc=700x500@900,40 maximized | 1920x1080@0,0
//
// Size and place of the window, then the screens for which they are meant.
#pragma once

#include <optional>
#include <string_view>

#include "controls/WindowPlace.h"
#include "platform/PreferencesStore.h"

namespace korvane::controls {

struct RememberedPlace {
    Area area;  // without the frame; of a maximized window: where it goes when it is made smaller
    bool maximized = false;

    friend bool operator==(const RememberedPlace&, const RememberedPlace&) = default;
};

class PlaceMemory {
public:
    explicit PlaceMemory(platform::PreferencesStore& preferences) : preferences_(preferences) {}

    // `screens` is the signature of those there are now. Nothing for a window that was never open, was open on other
    // screens, or whose text is damaged.
    [[nodiscard]] std::optional<RememberedPlace> recall(std::string_view window, std::string_view screens) const;
    // Writes only what has changed.
    void remember(std::string_view window, const RememberedPlace& place, std::string_view screens);

private:
    platform::PreferencesStore& preferences_;
};

}  // namespace korvane::controls
