// What a window shows of the verification of its sends: the choice, and what came of the last ones.
#pragma once

#include <QCheckBox>
#include <QPushButton>
#include <QWidget>

#include "fields/VerifyReport.h"
#include "link/VerifySwitch.h"
#include "views/frame/Binder.h"
#include "views/widgets/values/LongLine.h"

namespace korvane::views {

class WindowView;

[[nodiscard]] QCheckBox& makeVerifyBox(link::VerifySwitch& choice, Binder& binder, QWidget* parent);
// Tab goes from the widget of this control to the box.
void putVerifyBehind(const controls::Control& control, WindowView& view);

// What came of it, as wide as its place; hidden before the first verification.
[[nodiscard]] LongLine& makeVerifyLine(fields::VerifyReport& report, Binder& binder, QWidget* parent);
// Sends again what has failed; hidden while nothing has.
[[nodiscard]] QPushButton& makeAgainButton(fields::VerifyReport& report, controls::Window& window, Binder& binder,
                                           QWidget* parent);
// Both, one beside the other, little higher than a line of text.
[[nodiscard]] QWidget& makeVerifyNote(fields::VerifyReport& report, controls::Window& window, Binder& binder,
                                      QWidget* parent);

}  // namespace korvane::views
