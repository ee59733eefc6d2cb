#include "views/Keys.h"

#include <algorithm>
#include <array>

#include "platform/Control.h"

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
    Named{Qt::Key_Backspace, platform::kKeyBackspace},
    Named{Qt::Key_Tab, platform::kKeyTab},
    Named{Qt::Key_Backtab, platform::kKeyTab},
    Named{Qt::Key_Return, platform::kKeyReturn},
    Named{Qt::Key_Enter, platform::kKeyReturn},
    Named{Qt::Key_Shift, platform::kKeyShift},
    Named{Qt::Key_Control, 17},
    Named{Qt::Key_Alt, 18},
    Named{Qt::Key_Escape, kEscape},
    Named{Qt::Key_PageUp, 33},
    Named{Qt::Key_PageDown, 34},
    Named{Qt::Key_End, 35},
    Named{Qt::Key_Home, 36},
    Named{Qt::Key_Left, platform::kKeyLeft},
    Named{Qt::Key_Up, platform::kKeyUp},
    Named{Qt::Key_Right, platform::kKeyRight},
    Named{Qt::Key_Down, platform::kKeyDown},
    Named{Qt::Key_Insert, 45},
    Named{Qt::Key_Delete, platform::kKeyDelete},
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
    return key >= kBlank && key <= kLastAscii ? platform::keyCodeOf(static_cast<char>(key)) : 0;
}

int shiftOf(Qt::KeyboardModifiers modifiers) {
    return (modifiers.testFlag(Qt::ShiftModifier) ? platform::kShiftMask : 0) |
           (modifiers.testFlag(Qt::ControlModifier) ? platform::kControlMask : 0) |
           (modifiers.testFlag(Qt::AltModifier) ? platform::kAltMask : 0);
}

int shiftOf(const QKeyEvent& event) {
    const int shift = shiftOf(event.modifiers());
    const bool sign = event.key() == Qt::Key_Plus || event.key() == Qt::Key_Minus;
    return sign ? shift & ~platform::kShiftMask : shift;
}

int buttonNumber(Qt::MouseButton button) {
    return button == Qt::RightButton ? 2 : button == Qt::MiddleButton ? 4 : 1;
}

int characterOf(const QKeyEvent& event) {
    if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) {
        return 0;
    }
    const int code = keyCodeOf(event);
    if (code == platform::kKeyBackspace || code == platform::kKeyReturn || event.key() == Qt::Key_Escape) {
        return code;
    }
    const auto characters = event.text().toUcs4();
    const auto first = characters.isEmpty() ? 0U : characters.front();
    return first >= kBlank && first != kRubout ? static_cast<int>(first) : 0;
}

}  // namespace korvane::views
