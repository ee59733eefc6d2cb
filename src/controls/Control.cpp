#include "controls/Control.h"

#include <array>

namespace korvane::controls {

namespace {

// A container further left than this (twips) counts as hidden: pages and panes are hidden by moving them away.
constexpr int kOutOfView = -3000;

Value indexOf(const Object& object) {
    const auto index = dynamic_cast<const Control&>(object).index();
    return index ? Value(static_cast<std::int64_t>(*index)) : Value();
}

Value nameValue(const Object& object) {
    return std::string(dynamic_cast<const Control&>(object).name());
}

constexpr std::array kProperties{
    readOnlyProperty<&nameValue>("Name"),
    readOnlyProperty<&indexOf>("Index"),
    property<&Control::Enabled>("Enabled"),
    property<&Control::Visible>("Visible"),
    property<&Control::Left>("Left"),
    property<&Control::Top>("Top"),
    property<&Control::Width>("Width"),
    property<&Control::Height>("Height"),
    property<&Control::BackColor>("BackColor"),
    property<&Control::ForeColor>("ForeColor"),
    property<&Control::Tag>("Tag"),
    property<&Control::ToolTipText>("ToolTipText"),
    property<&Control::FontSize>("FontSize"),
    property<&Control::FontBold>("FontBold"),
};

}  // namespace

Control::Control(Window& window, std::string_view name, std::optional<int> index)
    : window_(window), name_(name), index_(index) {
    window_.add(*this);
}

Control::~Control() {
    window_.remove(*this);
}

void Control::place(int left, int top, int width, int height) {
    Left = left;
    Top = top;
    Width = width;
    Height = height;
}

std::string Control::path() const {
    std::string text(name_);
    if (index_) {
        text += '(' + std::to_string(*index_) + ')';
    }
    return text;
}

bool Control::inSight() const {
    if (!Visible || Left < kOutOfView) {
        return false;
    }
    return container_ != nullptr ? container_->inSight() : window_.Visible.get();
}

bool Control::usable() const {
    if (!Enabled) {
        return false;
    }
    return container_ == nullptr || container_->usable();
}

std::optional<Value> Control::indexedProperty(std::string_view, std::span<const int>) const {
    return {};
}

void Control::press() {
    raise(Click);
}

bool Control::keyDown(int keyCode, int shift) {
    if (window_.offerKey(keyCode, shift)) {
        return false;
    }
    window_.enter(name_, [&] { window_.Form_KeyDown(keyCode, shift); });
    raise(KeyDown, keyCode, shift);
    return true;
}

void Control::keyUp(int keyCode, int shift) {
    if (!window_.releaseTaken(keyCode)) {
        raise(KeyUp, keyCode, shift);
    }
}

int Control::keyPress(int character) {
    window_.enter(name_, [&] { KeyPress(character); });
    return character;
}

void Control::mouseUp(int button, int shift, double x, double y) {
    raise(MouseUp, button, shift, x, y);
}

std::vector<std::span<const PropertyInfo>> Control::propertyTables() const {
    return {kProperties};
}

}  // namespace korvane::controls
