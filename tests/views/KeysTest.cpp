#include <gtest/gtest.h>

#include "views/frame/Keys.h"

namespace korvane::views {
namespace {

QKeyEvent pressed(int key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
    return {QEvent::KeyPress, key, modifiers, text};
}

TEST(Keys, LettersCountTheSameInBothCases) {
    EXPECT_EQ(keyCodeOf(pressed(Qt::Key_A, {}, "a")), 65);
    EXPECT_EQ(keyCodeOf(pressed(Qt::Key_A, Qt::ShiftModifier, "A")), 65);
    EXPECT_EQ(keyCodeOf(pressed(Qt::Key_L)), 76);
}

TEST(Keys, ArrowsTabAndShiftHaveTheirCodes) {
    EXPECT_EQ(keyCodeOf(pressed(Qt::Key_Left)), 37);
    EXPECT_EQ(keyCodeOf(pressed(Qt::Key_Up)), 38);
    EXPECT_EQ(keyCodeOf(pressed(Qt::Key_Right)), 39);
    EXPECT_EQ(keyCodeOf(pressed(Qt::Key_Down)), 40);
    EXPECT_EQ(keyCodeOf(pressed(Qt::Key_Tab)), 9);
    EXPECT_EQ(keyCodeOf(pressed(Qt::Key_Shift)), 16);
    EXPECT_EQ(keyCodeOf(pressed(Qt::Key_Enter)), 13);
    EXPECT_EQ(keyCodeOf(pressed(Qt::Key_F1)), 112);
    EXPECT_EQ(keyCodeOf(pressed(Qt::Key_VolumeUp)), 0);
}

TEST(Keys, SignsAreTheSameOnTheNumericPadAndTheirShiftDoesNotCount) {
    EXPECT_EQ(keyCodeOf(pressed(Qt::Key_Plus, Qt::KeypadModifier, "+")), 187);
    EXPECT_EQ(keyCodeOf(pressed(Qt::Key_Minus, Qt::KeypadModifier, "-")), 189);
    EXPECT_EQ(shiftOf(pressed(Qt::Key_Plus, Qt::ShiftModifier, "+")), 0);
    EXPECT_EQ(shiftOf(pressed(Qt::Key_Plus, Qt::ShiftModifier | Qt::ControlModifier, "+")), 2);
    EXPECT_EQ(shiftOf(pressed(Qt::Key_Right, Qt::ShiftModifier)), 1);
    EXPECT_EQ(shiftOf(pressed(Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier)), 5);
}

TEST(Keys, OnlySomeKeysMakeACharacter) {
    EXPECT_EQ(characterOf(pressed(Qt::Key_A, Qt::ShiftModifier, "A")), 'A');
    EXPECT_EQ(characterOf(pressed(Qt::Key_Backspace, {}, "\b")), 8);
    EXPECT_EQ(characterOf(pressed(Qt::Key_Return, {}, "\r")), 13);
    EXPECT_EQ(characterOf(pressed(Qt::Key_Escape, {}, "\x1b")), 27);
    EXPECT_EQ(characterOf(pressed(Qt::Key_Delete, {}, "\x7f")), 0);
    EXPECT_EQ(characterOf(pressed(Qt::Key_Left)), 0);
    EXPECT_EQ(characterOf(pressed(Qt::Key_C, Qt::ControlModifier, "\x03")), 0);
    EXPECT_EQ(characterOf(pressed(Qt::Key_Adiaeresis, {}, QStringLiteral("ä"))), 0xE4);
}

}  // namespace
}  // namespace korvane::views
