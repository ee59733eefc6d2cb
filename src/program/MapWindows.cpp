#include "program/MapWindows.h"

#include <string>
#include <utility>

#include "core/tables/Module1.h"
#include "platform/Dialogs.h"

namespace korvane::program {

namespace {

constexpr bool hasIgnitionOnly(std::int32_t swType) {
    return swType == 30 || swType == 32 || swType == 112;
}

}  // namespace

MapWindows::MapWindows(platform::Machine& machine, const maps::MapContext& context, link::Windows& windows)
    : machine_(machine), context_(context), windows_(windows), shelf_(machine.pump) {}

void MapWindows::open() {
    const auto swType = context_.tables.SWType;
    if (core::hasLargeMaps(swType)) {
        openLarge();
    } else if (hasIgnitionOnly(swType)) {
        machine_.dialogs.show({"Korvane Tuner",
                               "There is no map window for firmware type " + std::to_string(swType) + " yet.",
                               platform::MessageIcon::Information});
    } else {
        openOrdinary();
    }
}

void MapWindows::openOrdinary() {
    if (frmMaps_ != nullptr) {
        windows_.curMapWindow = frmMaps_;
        context_.analyser.setMapWindow(frmMaps_);
        frmMaps_->show();
        return;
    }
    auto window = std::make_unique<maps::FrmMaps>(machine_, context_);
    frmMaps_ = window.get();
    show(std::move(window));
}

void MapWindows::openLarge() {
    show(std::make_unique<maps::FrmMaps_Large>(machine_, context_));
}

void MapWindows::show(std::unique_ptr<maps::MapForm> window) {
    auto& shown = *window;
    shown.Closed = [this, &shown] { closed(shown); };
    windows_.curMapWindow = &shown;
    shelf_.show(std::move(window));
}

void MapWindows::closed(maps::MapForm& window) {
    if (&window == frmMaps_) {
        frmMaps_ = nullptr;
    }
    if (windows_.curMapWindow == &window) {
        windows_.curMapWindow = nullptr;
        context_.analyser.setMapWindow(nullptr);
    }
}

void MapWindows::populateFuelOUT() {
    if (frmMaps_ != nullptr) {
        frmMaps_->populateFuelOUT();
    }
}

}  // namespace korvane::program
