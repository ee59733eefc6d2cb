#include "program/MapWindows.h"

#include <utility>

#include "core/Numbers.h"
#include "core/tables/Module1.h"

namespace korvane::program {

MapWindows::MapWindows(platform::Machine& machine, const maps::MapContext& context, link::Windows& windows)
    : machine_(machine), context_(context), windows_(windows), shelf_(machine.pump) {}

void MapWindows::open() {
    const auto swType = context_.tables.SWType;
    if (core::hasLargeMaps(swType)) {
        openLarge();
    } else if (core::ignitesOnly(swType)) {
        openOnly<maps::FrmMaps_QV_ign>();
    } else if (core::limitsOnly(swType)) {
        openLimiter();
    } else {
        openOnly<maps::FrmMaps>();
    }
}

void MapWindows::openLarge() {
    auto window = make<maps::FrmMaps_Large>();
    announce(*window);
    shelf_.show(std::move(window));
}

void MapWindows::openLimiter() {
    openOnly<maps::FrmMaps_ign_limiter>();
}

maps::MapForm& MapWindows::openUnread(bool large) {
    if (large) {
        openLarge();
    } else {
        openOnly<maps::FrmMaps>();
    }
    auto& window = *shelf_.open<maps::MapForm>();
    window.TimerInitialGetData.Enabled = false;
    return window;
}

void MapWindows::openTune(const std::filesystem::path& tune, bool large) {
    openUnread(large).openTune(tune.string());
}

void MapWindows::openSetpoints(const std::filesystem::path& setpoints) {
    openUnread(false).openSetpoints(setpoints.string());
}

template <class Kind>
void MapWindows::openOnly() {
    auto& window = shelf_.one<Kind>([this] { return make<Kind>(); });
    announce(window);
    window.show();
}

template <class Kind>
std::unique_ptr<Kind> MapWindows::make() {
    auto window = std::make_unique<Kind>(machine_, context_);
    window->Unloaded = [this, made = window.get()] { closed(*made); };
    return window;
}

void MapWindows::announce(maps::MapForm& window) {
    windows_.curMapWindow = &window;
    context_.analyser.setMapWindow(&window);
    analysed_ = &window;
}

void MapWindows::announce(maps::FrmMaps_QV_ign& window) {
    windows_.curMapWindow = &window;
    windows_.frmMaps_QV_ign = &window;
}

void MapWindows::announce(maps::FrmMaps_ign_limiter& window) {
    windows_.curMapWindow = &window;
}

void MapWindows::closed(maps::MapForm& window) {
    forget(window);
    if (analysed_ == &window) {
        analysed_ = nullptr;
        context_.analyser.setMapWindow(nullptr);
    }
}

void MapWindows::closed(maps::FrmMaps_QV_ign& window) {
    forget(window);
    windows_.frmMaps_QV_ign = nullptr;
}

// Nobody is known any more, whichever window it was.
void MapWindows::closed(maps::FrmMaps_ign_limiter&) {
    windows_.curMapWindow = nullptr;
}

void MapWindows::forget(const link::MapWindow& window) {
    if (windows_.curMapWindow == &window) {
        windows_.curMapWindow = nullptr;
    }
}

double MapWindows::injectionOffset() const {
    if (auto* const window = shelf_.open<maps::MapForm>()) {
        return core::val(window->txtMisc(maps::kInjectionOffset).Text.get());
    }
    return context_.tables.MiscBlock[7];
}

std::optional<link::MiscBytes> MapWindows::miscOfBoxes() const {
    const auto* const window = shelf_.open<maps::MapForm>();
    return window != nullptr ? window->miscOfBoxes() : std::nullopt;
}

void MapWindows::populateFuelOUT() {
    if (auto* const frmMaps = shelf_.open<maps::FrmMaps>()) {
        frmMaps->populateFuelOUT();
    }
}

}  // namespace korvane::program
