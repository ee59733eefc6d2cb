#include "fields/Saver.h"

#include <optional>
#include <string>

#include "core/Bytes.h"
#include "core/Numbers.h"
#include "fields/PollStop.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"
#include "platform/RuntimeError.h"

namespace korvane::fields {

bool Saver::run(const SavePlan& plan) {
    std::string failure;
    try {
        write(plan);
    } catch (const platform::RuntimeError& error) {
        failure = error.what();
    }
    if (!failure.empty()) {
        context_.window.machine().dialogs.show({"Korvane Tuner", failure, platform::MessageIcon::Exclamation});
        return false;
    }
    plan.captions.showEnd(context_.window);
    return true;
}

void Saver::write(const SavePlan& plan) {
    std::optional<PollStop> stop;
    if (plan.stopsPoll) {
        stop.emplace(context_.poll);
    }
    for (const SaveStep& step : plan.steps) {
        write(plan, step);
    }
}

void Saver::write(const SavePlan& plan, const SaveStep& step) {
    const Field& field = fields_.storing(step.address);
    const int address = context_.tables.addresses.*step.address;
    const int cells = Fields::cells(field);
    for (int cell = 0; cell < cells; ++cell) {
        writeValue(address + cell * bytesOf(field), fields_.stored(field, cell), field.codec.width, step.betweenBytes);
        wait(step.pause.behind(cell, cells));
        plan.captions.showPercent(context_.window, step.percent.behind(cell));
    }
}

// The row of a number in two bytes may be marked as 16 bits: then the first write clears the next cell, and the second
// write sets it again.
void Saver::writeValue(int address, std::int32_t value, Width width, int betweenBytes) {
    const auto low = core::toInt16(address);
    if (width != Width::TwoBytes) {
        context_.eeprom.WriteEE(low, value);
        return;
    }
    context_.eeprom.WriteEE(low, core::lowByte(value));
    wait(betweenBytes);
    context_.eeprom.WriteEE(core::toInt16(address + 1), core::highByte(value));
}

void Saver::wait(int milliseconds) {
    if (milliseconds > 0) {
        context_.window.machine().pump.wait(milliseconds);
    }
}

}  // namespace korvane::fields
