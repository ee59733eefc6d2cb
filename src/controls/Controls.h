// The kinds of control that the program's windows are made of.
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "controls/Control.h"
#include "controls/ListControl.h"

namespace korvane::controls {

// A control with a text on it.
class CaptionControl : public Control {
public:
    using Control::Control;
    template <std::size_t Size>
    CaptionControl(Window& window, std::string_view name, const char (&caption)[Size]) : Control(window, name) {
        Caption = caption;
    }
    Property<std::string> Caption{*this};

    [[nodiscard]] std::string_view mainProperty() const override { return "Caption"; }
    [[nodiscard]] std::vector<std::span<const PropertyInfo>> propertyTables() const override;
};

class Label : public CaptionControl {
public:
    using CaptionControl::CaptionControl;

    [[nodiscard]] std::string_view kind() const override { return "label"; }
};

class CommandButton : public CaptionControl {
public:
    using CaptionControl::CaptionControl;

    [[nodiscard]] std::string_view kind() const override { return "button"; }
    [[nodiscard]] bool canFocus() const override { return true; }
    [[nodiscard]] bool canClick() const override { return true; }
};

// Assigning another Value raises Click, as a press does.
class CheckBox : public CaptionControl {
public:
    using CaptionControl::CaptionControl;
    Property<int> Value{*this};  // 0 or 1

    [[nodiscard]] std::string_view kind() const override { return "check box"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "Value"; }
    [[nodiscard]] bool canFocus() const override { return true; }
    [[nodiscard]] bool canClick() const override { return true; }
    void press() override;
    [[nodiscard]] std::vector<std::span<const PropertyInfo>> propertyTables() const override;

protected:
    void afterChange(const void* property) override;
};

// One of several that exclude each other: switching one on switches off the others in the same container, and raises
// its Click.
class OptionButton : public CaptionControl {
public:
    using CaptionControl::CaptionControl;
    Property<bool> Value{*this};

    [[nodiscard]] std::string_view kind() const override { return "option button"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "Value"; }
    [[nodiscard]] bool canFocus() const override { return true; }
    [[nodiscard]] bool canClick() const override { return true; }
    void press() override { Value = true; }
    [[nodiscard]] std::vector<std::span<const PropertyInfo>> propertyTables() const override;

protected:
    void afterChange(const void* property) override;
};

// Tabs in a row, counted from 1. Assigning another SelectedItem raises Click; 0 is none.
class TabStrip : public Control {
public:
    using Control::Control;
    Property<int> SelectedItem{*this};

    void addTab(std::string caption) { captions_.push_back(std::move(caption)); }
    // RuntimeError 9 for a tab that does not exist.
    void setTabCaption(int tab, const std::string& caption);
    [[nodiscard]] int tabCount() const { return static_cast<int>(captions_.size()); }
    // RuntimeError 9 for a tab that does not exist.
    [[nodiscard]] const std::string& tabCaption(int tab) const;
    void choose(int tab) override { SelectedItem = tab; }
    [[nodiscard]] std::optional<Choices> choices() const override { return Choices{1, tabCount()}; }
    [[nodiscard]] std::optional<Value> indexedProperty(std::string_view property,
                                                       std::span<const int> indices) const override;  // Caption(tab)

    [[nodiscard]] std::string_view kind() const override { return "tab strip"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "SelectedItem"; }
    [[nodiscard]] bool canFocus() const override { return true; }
    [[nodiscard]] std::vector<std::span<const PropertyInfo>> propertyTables() const override;

protected:
    void afterChange(const void* property) override;

private:
    std::vector<std::string> captions_;
};

// The progress of some work, from 0 to Max. Visible only while the work runs.
class ProgressBar : public Control {
public:
    ProgressBar(Window& window, std::string_view name, std::optional<int> index = {});
    Property<int> Value{*this};
    Property<int> Max{*this, 100};

    void start(int steps);
    void stop() { Visible = false; }

    [[nodiscard]] std::string_view kind() const override { return "progress bar"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "Value"; }
    [[nodiscard]] std::vector<std::span<const PropertyInfo>> propertyTables() const override;
};

// A list that drops down.
class ComboBox : public ListControl {
public:
    using ListControl::ListControl;

    void Clear() override;
    // A note on one row, such as the device that a port name means.
    void setItemToolTip(int row, std::string text);
    [[nodiscard]] const std::string& itemToolTip(int row) const;

    [[nodiscard]] std::string_view kind() const override { return "drop-down list"; }

private:
    std::map<int, std::string> toolTips_;
};

class TextBox : public Control {
public:
    TextBox(Window& window, std::string_view name, std::optional<int> index = {});
    Property<std::string> Text{*this};
    Property<bool> Locked{*this};
    Event<> Change;

    [[nodiscard]] std::string_view kind() const override { return "text box"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "Text"; }
    [[nodiscard]] bool canFocus() const override { return true; }
    [[nodiscard]] std::vector<std::span<const PropertyInfo>> propertyTables() const override;

protected:
    void afterChange(const void* property) override;
};

// A titled box around other controls: setContainer(&frame) puts a control inside.
class Frame : public CaptionControl {
public:
    using CaptionControl::CaptionControl;

    [[nodiscard]] std::string_view kind() const override { return "frame"; }
};

// A lamp or other small picture.
class Image : public Control {
public:
    using Control::Control;
    Property<Picture> Shown{*this, Picture::None};  // "Picture" by name

    [[nodiscard]] std::string_view kind() const override { return "picture"; }
    [[nodiscard]] std::string_view mainProperty() const override { return "Picture"; }
    [[nodiscard]] std::vector<std::span<const PropertyInfo>> propertyTables() const override;
};

// Controls of one kind under one name, index 0 to count - 1. Elements never move.
template <class Kind>
class ControlArray {
public:
    ControlArray(Window& window, std::string_view name, int count) {
        for (int i = 0; i < count; ++i) {
            elements_.emplace_back(window, name, i);
        }
    }

    // RuntimeError 9 for an element that does not exist.
    Kind& operator()(int index) {
        if (index < 0 || index >= count()) {
            platform::raiseSubscript();
        }
        return elements_[static_cast<std::size_t>(index)];
    }
    [[nodiscard]] int count() const { return static_cast<int>(elements_.size()); }
    auto begin() { return elements_.begin(); }
    auto end() { return elements_.end(); }

private:
    std::deque<Kind> elements_;
};

}  // namespace korvane::controls
