#include "controls/Controls.h"

#include <array>

namespace korvane::controls {

namespace {

constexpr std::array kCaption{property<&CaptionControl::Caption>("Caption")};

const char* wantedState(const CheckBox&, int state) {
    return state == 0 || state == 1 ? nullptr : "0 or 1";
}

const char* wantedTab(const TabStrip& strip, int tab) {
    return tab >= 1 && tab <= strip.tabCount() ? nullptr : "a tab of the strip";
}

constexpr std::array kCheckBox{limitedProperty<&CheckBox::Value, wantedState>("Value")};
constexpr std::array kOptionButton{property<&OptionButton::Value>("Value")};
constexpr std::array kTabStrip{limitedProperty<&TabStrip::SelectedItem, wantedTab>("SelectedItem")};
constexpr std::array kProgressBar{property<&ProgressBar::Value>("Value"), property<&ProgressBar::Max>("Max")};
constexpr std::array kImage{property<&Image::Shown>("Picture")};
constexpr std::array kTextBox{property<&TextBox::Text>("Text"), property<&TextBox::Locked>("Locked")};

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

void TabStrip::setTabCaption(int tab, const std::string& caption) {
    if (tabCaption(tab) != caption) {
        captions_[static_cast<std::size_t>(tab) - 1] = caption;
        changed(&captions_);
    }
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

void ComboBox::Clear() {
    toolTips_.clear();
    ListControl::Clear();
}

void ComboBox::setItemToolTip(int row, std::string text) {
    if (row >= 0 && row < ListCount() && itemToolTip(row) != text) {
        toolTips_[row] = std::move(text);
        changed(rowsProperty());
    }
}

const std::string& ComboBox::itemToolTip(int row) const {
    static const std::string none;
    const auto found = toolTips_.find(row);
    return found != toolTips_.end() ? found->second : none;
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
