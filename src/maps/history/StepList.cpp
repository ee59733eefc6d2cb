#include "maps/history/StepList.h"

#include <array>

#include "core/TimeText.h"
#include "platform/RuntimeError.h"

namespace korvane::maps {

namespace {

const StepList& listOf(const controls::Object& object) {
    return dynamic_cast<const StepList&>(object);
}

controls::Value listCount(const controls::Object& object) {
    return static_cast<std::int64_t>(listOf(object).rowCount());
}

controls::Value listIndex(const controls::Object& object) {
    return static_cast<std::int64_t>(listOf(object).here());
}

constexpr std::array kProperties{controls::readOnlyProperty<&listCount>("ListCount"),
                                 controls::readOnlyProperty<&listIndex>("ListIndex")};

}  // namespace

std::string StepList::timeOf(std::size_t row) const {
    return row == 0 ? std::string() : core::timeText(history_.step(row).time);
}

std::string StepList::wordsOf(std::size_t row) const {
    if (row > 0) {
        return history_.step(row).words();
    }
    return history_.dropped() > 0 ? "Older steps are no longer kept" : "Before the first step";
}

void StepList::choose(int row) {
    if (row < 0 || static_cast<std::size_t>(row) >= rowCount()) {
        platform::raiseSubscript();
    }
    window().enter(name(), [&] { Picked(static_cast<std::size_t>(row)); });
}

std::optional<controls::Value> StepList::indexedProperty(std::string_view property,
                                                         std::span<const int> indices) const {
    if (property != "List" || indices.size() != 1) {
        return {};
    }
    const int row = indices.front();
    if (row < 0 || static_cast<std::size_t>(row) >= rowCount()) {
        platform::raiseSubscript();
    }
    const auto at = static_cast<std::size_t>(row);
    return (at == 0 ? "" : timeOf(at) + " ") + wordsOf(at);
}

std::vector<std::span<const controls::PropertyInfo>> StepList::propertyTables() const {
    return controls::withTable<Control>(*this, kProperties);
}

}  // namespace korvane::maps
