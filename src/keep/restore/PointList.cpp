#include "keep/restore/PointList.h"

#include <algorithm>
#include <array>
#include <sstream>

#include "core/Numbers.h"
#include "core/OneLine.h"
#include "core/TimeText.h"
#include "platform/RuntimeError.h"
#include "platform/Texts.h"

namespace korvane::keep {

namespace {

controls::Value listCount(const controls::Object& object) {
    return std::int64_t{dynamic_cast<const PointList&>(object).rowCount()};
}

constexpr std::array kProperties{controls::readOnlyProperty<&listCount>("ListCount"),
                                 controls::property<&PointList::ListIndex>("ListIndex")};

std::string textOf(const PointEntry& entry) {
    std::string text = timeTextOf(entry);
    for (const auto& part : {entry.reason, ecuTextOf(entry), entry.note, entry.damage}) {
        text += part.empty() ? "" : ", " + part;
    }
    return text;
}

bool contains(std::string_view text, std::string_view word) {
    for (std::size_t at = 0; at + word.size() <= text.size(); ++at) {
        if (platform::sameText(text.substr(at, word.size()), word)) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::string timeTextOf(const PointEntry& entry) {
    return entry.damage.empty() ? core::dateText(entry.time) + ' ' + core::timeText(entry.time)
                                : core::onOneLine(entry.name);
}

std::string ecuTextOf(const PointEntry& entry) {
    return entry.damage.empty() ? "type " + std::to_string(entry.ecu.swType) + ", version " +
                                      std::string(core::numberText(entry.ecu.hwVersion).view())
                                : std::string();
}

PointList::PointList(controls::Window& window, std::string_view name, Keeper& keeper)
    : Control(window, name), keeper_(keeper) {}

void PointList::reload() {
    const auto* const before = chosen();
    const std::string name = before != nullptr ? before->name : std::string();
    points_ = keeper_.points();
    showRows();
    int found = -1;
    for (int row = 0; !name.empty() && row < rowCount(); ++row) {
        found = entry(row).name == name ? row : found;
    }
    ListIndex = found;
    changed(rowsProperty());
}

void PointList::filter(std::string_view words) {
    words_.clear();
    std::istringstream stream{std::string(words)};
    for (std::string word; stream >> word;) {
        words_.push_back(word);
    }
    reload();
}

void PointList::compareAnew() {
    differs_.clear();
    changed(rowsProperty());
}

void PointList::showRows() {
    rows_.clear();
    for (std::size_t i = 0; i < points_.size(); ++i) {
        if (passes(points_[i])) {
            rows_.push_back(i);
        }
    }
}

bool PointList::passes(const PointEntry& entry) const {
    if (words_.empty()) {
        return true;
    }
    const auto text = textOf(entry);
    return std::all_of(words_.begin(), words_.end(), [&](const auto& word) { return contains(text, word); });
}

const PointEntry& PointList::entry(int row) const {
    if (row < 0 || row >= rowCount()) {
        platform::raiseSubscript();
    }
    return points_[rows_[static_cast<std::size_t>(row)]];
}

std::string PointList::differsText(int row) {
    const auto& name = entry(row).name;
    const auto known = differs_.find(name);
    return known != differs_.end() ? known->second : differs_.emplace(name, keeper_.differsText(name)).first->second;
}

const PointEntry* PointList::chosen() const {
    return ListIndex >= 0 && ListIndex < rowCount() ? &entry(ListIndex) : nullptr;
}

void PointList::choose(int row) {
    static_cast<void>(entry(row));
    window().enter(this->name(), [&] {
        ListIndex = row;
        Click();
    });
}

std::optional<controls::Value> PointList::indexedProperty(std::string_view property,
                                                          std::span<const int> indices) const {
    if (property != "List" || indices.size() != 1) {
        return {};
    }
    return textOf(entry(indices.front()));
}

std::vector<std::span<const controls::PropertyInfo>> PointList::propertyTables() const {
    return controls::withTable<Control>(*this, kProperties);
}

}  // namespace korvane::keep
