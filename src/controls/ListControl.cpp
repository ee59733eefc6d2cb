#include "controls/ListControl.h"

#include <array>

namespace korvane::controls {

namespace {

constexpr int kErrorInvalidPropertyValue = 380;

const char* wantedRow(const ListControl& list, int row) {
    return row >= -1 && row < list.ListCount() ? nullptr : "a row of the list";
}

Value countValue(const Object& object) {
    return std::int64_t{dynamic_cast<const ListControl&>(object).ListCount()};
}

Value textValue(const Object& object) {
    return dynamic_cast<const ListControl&>(object).Text();
}

constexpr std::array kList{
    limitedProperty<&ListControl::ListIndex, wantedRow>("ListIndex"),
    readOnlyProperty<&countValue>("ListCount"),
    readOnlyProperty<&textValue>("Text"),
};

}  // namespace

void ListControl::AddItem(std::string text) {
    rows_.push_back(std::move(text));
    changed(rowsProperty());
}

void ListControl::Clear() {
    rows_.clear();
    changed(rowsProperty());
    ListIndex = -1;
}

const std::string& ListControl::List(int row) const {
    if (row < 0 || row >= ListCount()) {
        platform::raiseSubscript();
    }
    return rows_[static_cast<std::size_t>(row)];
}

std::string ListControl::Text() const {
    return ListIndex < 0 ? std::string() : List(ListIndex);
}

void ListControl::choose(int row) {
    if (row < 0 || row >= ListCount()) {
        throw platform::RuntimeError(kErrorInvalidPropertyValue, "Invalid property value");
    }
    ListIndex = row;
}

std::optional<Value> ListControl::indexedProperty(std::string_view property, std::span<const int> indices) const {
    if (property != "List" || indices.size() != 1) {
        return {};
    }
    return List(indices.front());
}

void ListControl::afterChange(const void* property) {
    if (property == &ListIndex) {
        raise(Click);
    }
}

std::vector<std::span<const PropertyInfo>> ListControl::propertyTables() const {
    return withTable<Control>(*this, kList);
}

}  // namespace korvane::controls
