#include "settings/Replies.h"

#include "core/Checked.h"
#include "core/Numbers.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"

namespace korvane::settings {

namespace {

using A = core::ParameterAddresses;
using core::checked;

constexpr int kBlockPause = 300;  // ms, before and behind the settings block
constexpr int kNestedPauses = 3;  // blocks that arrive inside the pause of another one pause as well

}  // namespace

Replies::Replies(const MiscContext& context, fields::Fields& fields)
    : context_(context), fields_(fields), pauses_(kNestedPauses) {}

void Replies::UpdateReadEE(std::int32_t value, int addr, bool is16, fields::From from) {
    if (!fields_.take(value, addr, is16, from)) {
        context_.window.TextArvo.Text = core::numberText(value).view();
    }
}

void Replies::LoadMisc2(std::span<const std::uint8_t> payload, bool& handled) {
    auto& window = context_.window;
    window.TimeOutCount = 0;
    context_.connection.TimerRequestData.Enabled = false;
    pause();
    showBlock(payload);
    window.TimeOutTimer.Enabled = false;
    window.TimeOutCount = 0;
    pause();
    context_.connection.TimerRequestData.Enabled = true;
    handled = true;
}

void Replies::showBlock(std::span<const std::uint8_t> payload) {
    auto& window = context_.window;
    auto& tables = context_.tables;
    for (int i = 0; i < window.txtAccel.count(); ++i) {
        show(&A::ACCEL_OFF, checked(payload, i), i);
    }
    show(&A::START_HELP_OFF, checked(payload, 10));
    show(&A::RYYPPY_OFF, checked(payload, 11));
    for (int i = 0; i < window.txtVolt.count(); ++i) {
        show(&A::VOLT_OFF, checked(payload, 12 + i), i);
    }
    show(&A::CHARGE_TIME_OFF, checked(payload, 16));
    tables.ThrottleMin = checked(payload, 17);
    show(&A::MINTHR_OFF, checked(payload, 17));
    tables.ThrottleMax = checked(payload, 18);
    show(&A::MAXTHR_OFF, checked(payload, 18));
}

void Replies::show(fields::Address address, std::uint8_t value, int cell) {
    context_.connection.ecuEeprom.told(std::int64_t{context_.tables.addresses.*address} + cell, value);
    fields_.show(address, value, cell);
}

void Replies::pause() {
    if (const platform::Nesting::Level level(pauses_); level) {
        context_.window.machine().pump.wait(kBlockPause);
    }
}

void Replies::MarkAccelCell(int index) {
    auto& cells = context_.window.txtAccel;
    if (index < 0 || index >= cells.count() || index == markedCell_) {
        return;
    }
    if (markedCell_ >= 0) {
        cells(markedCell_).BackColor = controls::kWhite;
    }
    cells(index).BackColor = controls::kRed;
    markedCell_ = index;
}

}  // namespace korvane::settings
