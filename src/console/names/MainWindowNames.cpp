// The names of the main window that are no controls; declared in Registry.h.
#include <functional>
#include <optional>
#include <span>

#include "console/ConsoleError.h"
#include "console/names/Register.h"
#include "console/names/Registry.h"

namespace korvane::console {

namespace {

constexpr int kLongestPayload = 255;

Json payloadByte(const link::ReceiveMachine& receiver, int index) {
    const auto payload = receiver.payload();
    if (index >= static_cast<int>(payload.size())) {
        throw ConsoleError("the payload has " + std::to_string(payload.size()) + " bytes");
    }
    return payload[static_cast<std::size_t>(index)];
}

}  // namespace

void registerMainWindow(Names& names, live::FrmSarn2& window) {
    const auto& receiver = window.receiver;
    names.add("frmSarn2.rxPosition", {}, [&receiver](Names::Indices) { return Json(receiver.rxPosition()); });
    names.add("frmSarn2.rxCommand", {}, [&receiver](Names::Indices) { return Json(receiver.rxCommand()); });
    names.add("frmSarn2.rxLength", {}, [&receiver](Names::Indices) { return Json(receiver.rxLength()); });
    names.add("frmSarn2.rxTotal", {}, [&receiver](Names::Indices) { return Json(receiver.rxTotal()); });
    names.add("frmSarn2.rxReady", {}, [&receiver](Names::Indices) { return Json(receiver.rxReady()); });
    names.add("frmSarn2.rxPayload()", {{0, kLongestPayload - 1}},
              [&receiver](Names::Indices at) { return payloadByte(receiver, at.front()); });
    addVariable(names, "frmSarn2.bytesReceived", window.bytesReceived);
    addVariable(names, "frmSarn2.isConnected", window.isConnected);
    names.addObject("linkState", window.linkState, "state");
    names.addObject("link", window.linkState, "state");
    names.addObject("testPort", window.portDoubt, "shown");
    names.addProcedure("testPort.open", "", [&window](std::span<const Json>) -> std::optional<Json> {
        window.portDoubt.test();
        return {};
    });
    addElements(names, "frmSarn2.baudSettings()", window.baudSettings, std::identity());
}

}  // namespace korvane::console
