#include "settings/SaveGroups.h"

#include <string>

#include "core/Numbers.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"
#include "platform/RuntimeError.h"

namespace korvane::settings {

namespace {

constexpr int kByteMax = 255;

std::string rangeOf(Taken taken, double msPerCount) {
    switch (taken) {
        case Taken::Tag:
            return "from 0 to 255 steps";
        case Taken::Half:
            return "from 0 to 510";
        case Taken::Counts:
            return "from 0 to " + core::textOf(core::toCurrency(kByteMax * msPerCount)) + " ms";
        case Taken::Word:
        case Taken::TwoBytes:
            return "from -32768 to 32767";
        default:
            return "from 0 to 255";
    }
}

std::string titleOf(const controls::Control* container) {
    const auto* const frame = dynamic_cast<const controls::Frame*>(container);
    return frame != nullptr ? frame->Caption.get() : std::string();
}

std::string misfit(const controls::Control& control, const std::string& range) {
    return control.path() + " in \"" + titleOf(control.container()) +
           "\" holds a value that does not fit: it must be " + range +
           ".\r\nThe save ended there. It and what follows it was not sent.";
}

std::int32_t rowOf(const controls::ComboBox& list) {
    if (list.ListIndex < 0) {
        throw platform::RuntimeError(platform::kErrorOverflow, misfit(list, "a row of the list"));
    }
    return list.ListIndex;
}

}  // namespace

SaveGroups::SaveGroups(const MiscContext& context) : context_(context) {
    for (const SaveGroup& group : saveGroups()) {
        (context.window.*group.button).Click = [this, &group] { save(group); };
    }
}

void SaveGroups::save(const SaveGroup& group) {
    auto& poll = context_.connection.TimerRequestData;
    std::string failure;
    if (group.stopsPoll) {
        poll.Enabled = false;
    }
    try {
        for (const SaveRow& row : group.rows) {
            write(row);
        }
    } catch (const platform::RuntimeError& error) {
        failure = error.what();
    }
    if (group.stopsPoll) {
        poll.Enabled = true;
    }
    if (!failure.empty()) {
        context_.window.machine().dialogs.show({"Korvane Tuner", failure, platform::MessageIcon::Exclamation});
    }
}

void SaveGroups::write(const SaveRow& row) {
    auto& window = context_.window;
    const int address = context_.tables.addresses.*row.address;
    if (const auto* const boxes = std::get_if<SavedBoxes>(&row.source)) {
        auto& cells = window.*(*boxes);
        for (int i = 0; i < cells.count(); ++i) {
            writeValue(address + i, valueOf(cells(i), row.taken), row.taken);
            wait(row.pause, i, cells.count());
        }
        return;
    }
    if (const auto* const box = std::get_if<SavedBox>(&row.source)) {
        writeValue(address, valueOf(window.*(*box), row.taken), row.taken);
    } else if (const auto* const list = std::get_if<SavedList>(&row.source)) {
        writeValue(address, rowOf(window.*(*list)), row.taken);
    } else if (const auto* const choice = std::get_if<SavedChoice>(&row.source)) {
        writeValue(address, (*choice)(window, context_.tables), row.taken);
    }
    wait(row.pause, 0, 1);
}

void SaveGroups::wait(const Pause& pause, int cell, int cells) {
    const bool last = cell == cells - 1;
    if (pause.ms > 0 && (last ? pause.atEnd : (cell + 1) % pause.every == 0)) {
        context_.window.machine().pump.wait(pause.ms);
    }
}

std::int32_t SaveGroups::valueOf(const controls::TextBox& box, Taken taken) const {
    try {
        return convert(box, taken);
    } catch (const platform::RuntimeError&) {
        throw platform::RuntimeError(platform::kErrorOverflow, misfit(box, rangeOf(taken, context_.tables.TickD)));
    }
}

std::int32_t SaveGroups::convert(const controls::TextBox& box, Taken taken) const {
    const double number = core::val(taken == Taken::Tag ? box.Tag.get() : box.Text.get());
    switch (taken) {
        case Taken::Half:
            return core::toByte(number / 2);
        case Taken::Counts:
            return core::toByte(core::toInt16(number / context_.tables.TickD));
        case Taken::Word:
        case Taken::TwoBytes:
            return core::toInt16(number);
        default:
            return core::toByte(number);
    }
}

// The row of a number in two bytes has the mark of a word: its write clears the next cell, which the second write then
// puts right.
void SaveGroups::writeValue(int address, std::int32_t value, Taken taken) {
    const auto low = core::toInt16(address);
    if (taken != Taken::TwoBytes) {
        context_.eeprom.WriteEE(low, value);
        return;
    }
    const auto bits = static_cast<std::uint32_t>(value);
    context_.eeprom.WriteEE(low, static_cast<std::uint8_t>(bits & 0xFFU));
    context_.eeprom.WriteEE(core::toInt16(address + 1), static_cast<std::uint8_t>((bits >> 8U) & 0xFFU));
}

}  // namespace korvane::settings
