#include "controls/Controls.h"

#include <array>

namespace korvane::controls {

namespace {

constexpr int kErrorInvalidPropertyValue = 380;

constexpr std::array kCaption{property<&CaptionControl::Caption>("Caption")};

const char* wantedState(const CheckBox&, int state) {
    return state == 0 || state == 1 ? nullptr : "0 or 1";
}

const char* wantedTab(const TabStrip& strip, int tab) {
    return tab >= 1 && tab <= strip.tabCount() ? nullptr : "a tab of the strip";
}

const char* wantedRow(const ComboBox& box, int row) {
    return row >= -1 && row < box.ListCount() ? nullptr : "a row of the list";
}

Value countOf(const Object& object) {
    return std::int64_t{dynamic_cast<const ComboBox&>(object).ListCount()};
}

Value textOf(const Object& object) {
    return dynamic_cast<const ComboBox&>(object).Text();
}

constexpr std::array kCheckBox{limitedProperty<&CheckBox::Value, wantedState>("Value")};
constexpr std::array kOptionButton{property<&OptionButton::Value>("Value")};
constexpr std::array kTabStrip{limitedProperty<&TabStrip::SelectedItem, wantedTab>("SelectedItem")};
constexpr std::array kProgressBar{property<&ProgressBar::Value>("Value"), property<&ProgressBar::Max>("Max")};
constexpr std::array kImage{property<&Image::Shown>("Picture")};
constexpr std::array kTextBox{property<&TextBox::Text>("Text"), property<&TextBox::Locked>("Locked")};
constexpr std::array kComboBox{
    limitedProperty<&ComboBox::ListIndex, wantedRow>("ListIndex"),
    readOnlyProperty<&countOf>("ListCount"),
    readOnlyProperty<&textOf>("Text"),
};

}  // namespace

std::vector<std::span<const PropertyInfo>> CaptionControl::propertyTables() const {
    return withTable<Control>(*this, kCaption);
}

std::vector<std::span<const PropertyInfo>> Image::propertyTables() const {
    return withTable<Control>(*this, kImage);
}

std::vector<std::span<const PropertyInfo>> CheckBox::propertyTables() const {
    return withTable<CaptionControl>(*this, kCheckBox);
}

void CheckBox::press() {
    Value = Value == 0 ? 1 : 0;
}

void CheckBox::afterChange(const void* property) {
    if (property == &Value) {
        raise(Click);
    }
}

void OptionButton::afterChange(const void* property) {
    if (property != &Value || !Value) {
        return;
    }
    for (auto* const control : window().controls()) {
        auto* const other = dynamic_cast<OptionButton*>(control);
        if (other != nullptr && other != this && other->container() == container()) {
            other->Value = false;
        }
    }
    raise(Click);
}

std::vector<std::span<const PropertyInfo>> OptionButton::propertyTables() const {
    return withTable<CaptionControl>(*this, kOptionButton);
}

const std::string& TabStrip::tabCaption(int tab) const {
    if (tab < 1 || tab > tabCount()) {
        platform::raiseSubscript();
    }
    return captions_[static_cast<std::size_t>(tab) - 1];
}

std::optional<Value> TabStrip::indexedProperty(std::string_view property, std::span<const int> indices) const {
    if (property != "Caption" || indices.size() != 1) {
        return {};
    }
    return tabCaption(indices.front());
}

void TabStrip::afterChange(const void* property) {
    if (property == &SelectedItem) {
        raise(Click);
    }
}

std::vector<std::span<const PropertyInfo>> TabStrip::propertyTables() const {
    return withTable<Control>(*this, kTabStrip);
}

ProgressBar::ProgressBar(Window& window, std::string_view name, std::optional<int> index)
    : Control(window, name, index) {
    Visible = false;
}

void ProgressBar::start(int steps) {
    Max = steps;
    Value = 0;
    Visible = true;
}

std::vector<std::span<const PropertyInfo>> ProgressBar::propertyTables() const {
    return withTable<Control>(*this, kProgressBar);
}

void ComboBox::AddItem(std::string text) {
    rows_.push_back({std::move(text), {}});
    changed(rowsProperty());
}

void ComboBox::Clear() {
    rows_.clear();
    changed(rowsProperty());
    ListIndex = -1;
}

const std::string& ComboBox::List(int row) const {
    if (row < 0 || row >= ListCount()) {
        platform::raiseSubscript();
    }
    return rows_[static_cast<std::size_t>(row)].text;
}

void ComboBox::setItemToolTip(int row, std::string text) {
    if (row >= 0 && row < ListCount() && itemToolTip(row) != text) {
        rows_[static_cast<std::size_t>(row)].toolTip = std::move(text);
        changed(rowsProperty());
    }
}

const std::string& ComboBox::itemToolTip(int row) const {
    return rows_.at(static_cast<std::size_t>(row)).toolTip;
}

std::string ComboBox::Text() const {
    return ListIndex < 0 ? std::string() : List(ListIndex);
}

void ComboBox::choose(int row) {
    if (row < 0 || row >= ListCount()) {
        throw platform::RuntimeError(kErrorInvalidPropertyValue, "Invalid property value");
    }
    ListIndex = row;
}

std::optional<Value> ComboBox::indexedProperty(std::string_view property, std::span<const int> indices) const {
    if (property != "List" || indices.size() != 1) {
        return {};
    }
    return List(indices.front());
}

void ComboBox::afterChange(const void* property) {
    if (property == &ListIndex) {
        raise(Click);
    }
}

std::vector<std::span<const PropertyInfo>> ComboBox::propertyTables() const {
    return withTable<Control>(*this, kComboBox);
}

TextBox::TextBox(Window& window, std::string_view name, std::optional<int> index) : Control(window, name, index) {
    BackColor = kWindowBackground;
    ForeColor = kWindowText;
}

void TextBox::afterChange(const void* property) {
    if (property == &Text) {
        raise(Change);
    }
}

std::vector<std::span<const PropertyInfo>> TextBox::propertyTables() const {
    return withTable<Control>(*this, kTextBox);
}

int keyCodeOf(char character) {
    switch (character) {
        case '+':
            return kKeyPlus;
        case ',':
            return kKeyComma;
        case '-':
            return kKeyMinus;
        case '.':
            return kKeyPeriod;
        default:
            break;
    }
    const bool lower = character >= 'a' && character <= 'z';
    const bool plain = (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z');
    const bool control = character >= 0 && character <= kKeySpace;
    return lower ? character - 'a' + 'A' : plain || control ? character : 0;
}

std::string_view nameOf(Picture picture) {
    constexpr std::array<std::string_view, 4> names{"", "grey", "green", "red"};
    return names[static_cast<std::size_t>(picture)];
}

Picture pictureNamed(std::string_view name) {
    for (const auto picture : {Picture::None, Picture::Grey, Picture::Green, Picture::Red}) {
        if (nameOf(picture) == name) {
            return picture;
        }
    }
    throw platform::RuntimeError(platform::kErrorTypeMismatch, R"(the value must be "grey", "green" or "red")");
}

}  // namespace korvane::controls
