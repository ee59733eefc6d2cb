#include "settings/ScaledFields.h"

#include <algorithm>

#include "core/Numbers.h"

namespace korvane::settings {

namespace {

constexpr int kNeutralKey = 0;
constexpr int kStartLimit = 200;
constexpr int kChargeTimeLimit = 250;
constexpr int kVoltLimit = 50;
constexpr int kAccelLimit = 100;
constexpr int kAlsLimit = 15;
constexpr double kChargeTimeMs = 0.02;
constexpr double kAlsFuelPercent = 5.0;
constexpr double kAlsRetardDegrees = 4.5;

bool steps(int keyCode) {
    return keyCode == controls::kKeyPlus || keyCode == controls::kKeyMinus;
}

double stepped(double raw, int keyCode, int limit) {
    if (keyCode == controls::kKeyPlus) {
        return raw >= limit ? limit : raw + 1;
    }
    return raw <= 0 ? 0 : raw - 1;
}

// Moves the focus for left and right, and returns the key that is left for the box to act on.
int navigate(controls::ControlArray<controls::TextBox>& row, int index, int keyCode) {
    const int count = row.count();
    switch (keyCode) {
        case controls::kKeyLeft:
            row(index).window().setFocus(&row((index + count - 1) % count));
            return keyCode;
        case controls::kKeyRight:
            row(index).window().setFocus(&row((index + 1) % count));
            return keyCode;
        case controls::kKeyUp:
            return controls::kKeyPlus;
        case controls::kKeyDown:
            return controls::kKeyMinus;
        default:
            return keyCode;
    }
}

void lock(controls::TextBox& box) {
    box.Locked = true;
    box.BackColor = controls::kButtonFace;
}

}  // namespace

ScaledFields::ScaledFields(MiscControls& window, const core::SharedTables& tables)
    : window_(window),
      tables_(tables),
      fields_{{&window.txtStart, kStartLimit},
              {&window.txtRyyppy, kStartLimit},
              {&window.txtchargetime, kChargeTimeLimit, kChargeTimeMs},
              {&window.txtALS_fuel, kAlsLimit, kAlsFuelPercent},
              {&window.txtALS_ign_retard, kAlsLimit, kAlsRetardDegrees}} {
    for (auto& box : window.txtVolt) {
        fields_.push_back({&box, kVoltLimit, {}, &window.txtVolt});
    }
    for (const Field& field : fields_) {
        lock(*field.box);
        field.box->KeyDown = [this, &field](int keyCode, int) { key(field, keyCode); };
    }
    for (int i = 0; i < window.txtAccel.count(); ++i) {
        lock(window.txtAccel(i));
        window.txtAccel(i).KeyDown = [this, i](int keyCode, int) { accelKey(i, keyCode); };
    }
}

void ScaledFields::show(controls::TextBox& box, double raw) {
    const auto field =
        std::find_if(fields_.begin(), fields_.end(), [&](const Field& each) { return each.box == &box; });
    if (field != fields_.end()) {
        box.Tag = core::numberText(raw).view();
        step(*field, kNeutralKey);
    }
}

void ScaledFields::showAccel(int cell, double raw) {
    showText(window_.txtAccel(cell), raw * tables_.TickD);
}

void ScaledFields::key(const Field& field, int keyCode) {
    step(field, field.row != nullptr ? navigate(*field.row, field.box->index().value_or(0), keyCode) : keyCode);
}

void ScaledFields::step(const Field& field, int keyCode) {
    double raw = core::val(field.box->Tag.get());
    if (steps(keyCode)) {
        raw = stepped(raw, keyCode, field.limit);
        field.box->Tag = core::numberText(raw).view();
    }
    showText(*field.box, raw * field.factor.value_or(tables_.TickD));
}

void ScaledFields::accelKey(int cell, int pressed) {
    const int keyCode = navigate(window_.txtAccel, cell, pressed);
    if (steps(keyCode)) {
        const auto raw = core::toInt16(core::val(window_.txtAccel(cell).Text.get()) / tables_.TickD);
        showAccel(cell, stepped(raw, keyCode, kAccelLimit));
    }
}

void ScaledFields::showText(controls::TextBox& box, double value) {
    const auto text = core::numberText(core::toCurrency(value));
    box.Locked = false;
    box.Text = text.view();
    box.Locked = true;
}

}  // namespace korvane::settings
