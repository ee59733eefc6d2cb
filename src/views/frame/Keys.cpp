#include "views/frame/Keys.h"

#include <algorithm>
#include <array>

#include "controls/Control.h"

namespace korvane::views {

namespace {

struct Named {
    Qt::Key key;
    int code;
};

constexpr int kEscape = 27;
constexpr int kFirstFunctionKey = 112;
constexpr int kBlank = 32;
constexpr int kLastAscii = 126;
constexpr int kRubout = 127;

constexpr std::array kNamed{
    Named{Qt::Key_Backspace, controls::kKeyBackspace},
    Named{Qt::Key_Tab, controls::kKeyTab},
    Named{Qt::Key_Backtab, controls::kKeyTab},
    Named{Qt::Key_Return, controls::kKeyReturn},
    Named{Qt::Key_Enter, controls::kKeyReturn},
    Named{Qt::Key_Shift, controls::kKeyShift},
    Named{Qt::Key_Control, 17},
    Named{Qt::Key_Alt, 18},
    Named{Qt::Key_Escape, kEscape},
    Named{Qt::Key_PageUp, 33},
    Named{Qt::Key_PageDown, 34},
    Named{Qt::Key_End, 35},
    Named{Qt::Key_Home, 36},
    Named{Qt::Key_Left, controls::kKeyLeft},
    Named{Qt::Key_Up, controls::kKeyUp},
    Named{Qt::Key_Right, controls::kKeyRight},
    Named{Qt::Key_Down, controls::kKeyDown},
    Named{Qt::Key_Insert, 45},
    Named{Qt::Key_Delete, controls::kKeyDelete},
};

}  // namespace

int keyCodeOf(const QKeyEvent& event) {
    const int key = event.key();
    const auto* const named =
        std::find_if(kNamed.begin(), kNamed.end(), [&](const Named& each) { return each.key == key; });
    if (named != kNamed.end()) {
        return named->code;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
        return kFirstFunctionKey + key - Qt::Key_F1;
    }
    return key >= kBlank && key <= kLastAscii ? controls::keyCodeOf(static_cast<char>(key)) : 0;
}

int shiftOf(Qt::KeyboardModifiers modifiers) {
    return (modifiers.testFlag(Qt::ShiftModifier) ? controls::kShiftMask : 0) |
           (modifiers.testFlag(Qt::ControlModifier) ? controls::kControlMask : 0) |
           (modifiers.testFlag(Qt::AltModifier) ? controls::kAltMask : 0);
}

int shiftOf(const QKeyEvent& event) {
    const int shift = shiftOf(event.modifiers());
    const bool sign = event.key() == Qt::Key_Plus || event.key() == Qt::Key_Minus;
    return sign ? shift & ~controls::kShiftMask : shift;
}

int buttonNumber(Qt::MouseButton button) {
    return button == Qt::RightButton ? 2 : button == Qt::MiddleButton ? 4 : 1;
}

int characterOf(const QKeyEvent& event) {
    if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) {
        return 0;
    }
    const int code = keyCodeOf(event);
    if (code == controls::kKeyBackspace || code == controls::kKeyReturn || event.key() == Qt::Key_Escape) {
        return code;
    }
    const auto characters = event.text().toUcs4();
    const auto first = characters.isEmpty() ? 0U : characters.front();
    return first >= kBlank && first != kRubout ? static_cast<int>(first) : 0;
}

}  // namespace korvane::views
