// What a window shows of the verification of its sends: the choice, and what came of the last ones.
#pragma once

#include <QCheckBox>
#include <QWidget>

#include "fields/VerifyReport.h"
#include "link/VerifySwitch.h"
#include "views/frame/Binder.h"

namespace korvane::views {

[[nodiscard]] QCheckBox& makeVerifyBox(link::VerifySwitch& choice, Binder& binder, QWidget* parent);

// One line, as wide as its place, and behind it the button that sends again what has failed. Hidden before the first
// verification.
[[nodiscard]] QWidget& makeVerifyNote(fields::VerifyReport& report, controls::Window& window, Binder& binder,
                                      QWidget* parent);

}  // namespace korvane::views
