#include "maps/panes/MiscBoxes.h"

#include "core/Numbers.h"
#include "maps/panes/MiscPane.h"

namespace korvane::maps {

namespace {

using controls::TextBox;

constexpr double kHighestSpeed = 10000.0;
constexpr double kHighestByte = 255.0;

// Degrees. What is beyond a limit becomes the other one's size, as tuners and files know it.
constexpr double kHighestAdvance = 12.0;
constexpr double kLowestAdvance = -10.0;
constexpr std::string_view kTooHighBecomes = "10";
constexpr std::string_view kTooLowBecomes = "-12";

void limitAdvance(TextBox& box) {
    const double advance = core::val(box.Text.get());
    if (advance > kHighestAdvance) {
        box.Text = kTooHighBecomes;
    } else if (advance < kLowestAdvance) {
        box.Text = kTooLowBecomes;
    }
}

void showRawAdvance(TextBox& box) {
    box.ToolTipText = core::numberText(core::val(box.Text.get()) * 10.0 + 128.0).view();
}

void limit(TextBox& box, double highest) {
    if (core::val(box.Text.get()) > highest) {
        box.Text = core::numberText(highest).view();
    }
}

}  // namespace

int miscCharacter(int character) {
    constexpr int kBackspace = 8;
    constexpr int kRubout = 127;
    if (character == ',') {
        return '.';
    }
    const bool passes = (character >= '0' && character <= '9') || character == '.' || character == '-' ||
                        character == kBackspace || character == kRubout;
    return passes ? character : 0;
}

void describeMiscBoxes(controls::ControlArray<TextBox>& txtMisc) {
    for (int i = 0; i < txtMisc.count(); ++i) {
        auto& box = txtMisc(i);
        box.KeyPress = [](int& character) { character = miscCharacter(character); };
        box.LostFocus = [&box, i] { limit(box, i < kInjectionOffset ? kHighestSpeed : kHighestByte); };
    }
    txtMisc(kIgnitionOffset).KeyUp = [&box = txtMisc(kIgnitionOffset)](int, int) {
        limitAdvance(box);
        showRawAdvance(box);
    };
}

}  // namespace korvane::maps
