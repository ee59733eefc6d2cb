#include "console/Keyboard.h"

#include <algorithm>
#include <string>

#include "core/TextEncoding.h"

namespace korvane::console {

namespace {

using controls::Control;
using controls::TextBox;
using controls::Window;

bool stands(const Window& window, const Control* control) {
    const auto& controls = window.controls();
    return std::find(controls.begin(), controls.end(), control) != controls.end();
}

void takeLastCharacter(std::string& text) {
    while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0U) == 0x80U) {
        text.pop_back();
    }
    if (!text.empty()) {
        text.pop_back();
    }
}

// Applies a character that the handler did not drop to the text.
void enterCharacter(TextBox& box, int character) {
    std::string text = box.Text;
    if (character == controls::kKeyBackspace) {
        takeLastCharacter(text);
    } else if (character >= controls::kKeySpace && character != controls::kKeyDelete) {
        core::appendCodePoint(text, static_cast<char32_t>(character));
    }
    box.Text = text;
}

void pressCharacter(Control& control, int character) {
    const Window& window = control.window();
    const int passed = control.keyPress(character);
    if (passed == 0 || !stands(window, &control)) {
        return;
    }
    if (auto* const box = dynamic_cast<TextBox*>(&control); box != nullptr && !box->Locked) {
        enterCharacter(*box, passed);
    }
}

void typeCharacter(TextBox& box, char32_t character) {
    const Window& window = box.window();
    const int keyCode = character < 0x80 ? controls::keyCodeOf(static_cast<char>(character)) : 0;
    box.keyDown(keyCode, 0);
    if (stands(window, &box)) {
        pressCharacter(box, static_cast<int>(character));
    }
    if (stands(window, &box)) {
        box.keyUp(keyCode, 0);
    }
}

}  // namespace

int characterOf(int keyCode, int shift) {
    if ((shift & (controls::kControlMask | controls::kAltMask)) != 0) {
        return 0;
    }
    if (keyCode >= 'A' && keyCode <= 'Z') {
        return (shift & controls::kShiftMask) != 0 ? keyCode : keyCode - 'A' + 'a';
    }
    for (const char sign : {'+', ',', '-', '.'}) {
        if (keyCode == controls::keyCodeOf(sign)) {
            return sign;
        }
    }
    const bool itself = (keyCode >= '0' && keyCode <= '9') || keyCode == controls::kKeySpace ||
                        keyCode == controls::kKeyBackspace || keyCode == controls::kKeyReturn ||
                        keyCode == controls::kKeyDelete;
    return itself ? keyCode : 0;
}

void pressKey(Control& control, int keyCode, int shift) {
    Window& window = control.window();
    window.setFocus(&control);
    if (!stands(window, &control)) {
        return;
    }
    const bool passed = control.keyDown(keyCode, shift);
    if (const int character = characterOf(keyCode, shift); passed && character != 0 && stands(window, &control)) {
        pressCharacter(control, character);
    }
    if (Control* const focused = window.activeControl(); focused != nullptr) {
        focused->keyUp(keyCode, shift);
    }
}

void typeText(TextBox& box, std::string_view text) {
    const Window& window = box.window();
    box.window().setFocus(&box);
    if (stands(window, &box) && !box.Locked) {
        box.Text = "";
    }
    for (std::size_t i = 0; i < text.size() && stands(window, &box);) {
        const auto length = std::max<std::size_t>(core::characterSize(text.substr(i)), 1);
        typeCharacter(box, core::codePointOf(text.substr(i, length)));
        i += length;
    }
}

}  // namespace korvane::console
