// A key pressed in a text box, as far as its handlers see it.
#pragma once

#include "controls/Controls.h"

namespace korvane::support {

// Key down, press and up, with the text changed in between unless the box is locked or a handler drops the key.
// Characters go to the end of the text.
inline void typeCharacter(controls::TextBox& box, char character) {
    const int keyCode = controls::keyCodeOf(character);
    box.keyDown(keyCode, 0);
    const int passed = box.keyPress(static_cast<unsigned char>(character));
    if (passed == controls::kKeyBackspace && !box.Locked) {
        box.Text = box.Text.get().substr(0, box.Text.get().empty() ? 0 : box.Text.get().size() - 1);
    } else if (passed != 0 && !box.Locked) {
        box.Text = box.Text.get() + static_cast<char>(passed);
    }
    box.keyUp(keyCode, 0);
}

}  // namespace korvane::support
