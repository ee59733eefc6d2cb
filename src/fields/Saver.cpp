#include "fields/Saver.h"

#include <numeric>
#include <optional>
#include <string>

#include "core/Bytes.h"
#include "core/Checked.h"
#include "core/Numbers.h"
#include "fields/PollStop.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"
#include "platform/RuntimeError.h"

namespace korvane::fields {

bool Saver::run(const SavePlan& plan, const std::string& group) {
    std::string failure;
    Save save;
    try {
        write(plan, group, save);
    } catch (const platform::RuntimeError& error) {
        failure = error.what();
    }
    if (!failure.empty()) {
        context_.window.machine().dialogs.show({"Korvane Tuner", failure, platform::MessageIcon::Exclamation});
        return false;
    }
    plan.captions.showEnd(context_.window);
    if (verification_.isOn()) {
        verification_.verify(group, save.values, &fields_, [this, plan, group] { run(plan, group); });
    }
    return true;
}

void Saver::write(const SavePlan& plan, const std::string& group, Save& save) {
    context_.eeprom.announceStore(group.empty() ? "settings" : group,
                                  {core::Overwritten::Part::Settings, addressesOf(plan)});
    const link::LinkState::Transfer transfer(context_.linkState);
    const Answers::Running running(context_.answers);
    std::optional<PollStop> stop;
    if (plan.stopsPoll) {
        stop.emplace(context_.poll);
    }
    auto* const report = fields_.report();
    save.number = report != nullptr ? report->begin(group, planned(plan)) : 0;
    for (const SaveStep& step : plan.steps) {
        write(plan, step, save);
    }
}

std::vector<std::int32_t> Saver::addressesOf(const SavePlan& plan) const {
    std::vector<std::int32_t> all;
    for (const SaveStep& step : plan.steps) {
        const Field& field = fields_.storing(step.address);
        const int first = context_.tables.addresses.*step.address;
        for (int place = first; place < first + Fields::cells(field) * bytesOf(field); ++place) {
            all.push_back(place);
        }
    }
    return all;
}

int Saver::planned(const SavePlan& plan) const {
    return std::accumulate(plan.steps.begin(), plan.steps.end(), 0, [this](int sum, const SaveStep& step) {
        return sum + Fields::cells(fields_.storing(step.address));
    });
}

void Saver::write(const SavePlan& plan, const SaveStep& step, Save& save) {
    const Field& field = fields_.storing(step.address);
    const int address = context_.tables.addresses.*step.address;
    const int cells = Fields::cells(field);
    for (int cell = 0; cell < cells; ++cell) {
        const std::int32_t value = stored(field, cell, save.number);
        const int place = address + cell * bytesOf(field);
        writeValue(place, value, field.codec.width, step.betweenBytes);
        report(field, cell, place, value, save);
        wait(step.pause.behind(cell, cells));
        plan.captions.showPercent(context_.window, step.percent.behind(cell));
    }
}

std::int32_t Saver::stored(const Field& field, int cell, int save) const {
    try {
        return fields_.stored(field, cell);
    } catch (const platform::RuntimeError&) {
        if (auto* const report = fields_.report(); report != nullptr) {
            report->refused(save, labelOf(field, cell));
        }
        throw;
    }
}

void Saver::report(const Field& field, int cell, int address, std::int32_t value, Save& save) {
    const bool sent = context_.eeprom.isOpen();
    if (context_.answers != nullptr) {
        context_.answers->sent(sent);
    }
    auto* const report = fields_.report();
    const auto* const box = boxOf(field, cell);
    if (sent || report != nullptr) {
        const bool word = field.codec.width != Width::Byte || core::checked(context_.tables.EEParams, address).is16bit;
        save.values.push_back({labelOf(field, cell), address, word ? 2 : 1, value, field.codec, box});
    }
    if (report != nullptr) {
        report->add(save.number, save.values.back(), sent);
    }
    if (auto* const marks = fields_.marks(); marks != nullptr && box != nullptr && sent) {
        marks->sent(*box);
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
