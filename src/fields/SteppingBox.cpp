#include "fields/SteppingBox.h"

#include "core/Numbers.h"

namespace korvane::fields {

namespace {

bool steps(int keyCode) {
    return keyCode == controls::kKeyPlus || keyCode == controls::kKeyMinus;
}

double stepped(double count, int keyCode, int limit) {
    if (keyCode == controls::kKeyPlus) {
        return count >= limit ? limit : count + 1;
    }
    return count <= 0 ? 0 : count - 1;
}

}  // namespace

SteppingBox::SteppingBox(const Field& field, int cell, const core::SharedTables& tables)
    : tables_(tables),
      codec_(field.codec),
      stepping_(*field.stepping),
      row_(std::get<Boxes>(field.control).row()),
      box_(std::get<Boxes>(field.control)(cell)) {}

void SteppingBox::lock() {
    box_.Locked = true;
    box_.BackColor = controls::kButtonFace;
}

void SteppingBox::show(double count) {
    keep(count);
    showText(count);
}

void SteppingBox::key(int pressed) {
    const int keyCode = navigated(pressed);
    if (steps(keyCode)) {
        show(stepped(count(), keyCode, stepping_.limit));
    } else if (stepping_.keeper != nullptr) {
        showText(count());
    }
}

// Moves the focus for left and right, and returns the key that is left for the box to act on.
int SteppingBox::navigated(int keyCode) const {
    if (row_ == nullptr) {
        return keyCode;
    }
    const int index = box_.index().value_or(0);
    const int count = row_->count();
    switch (keyCode) {
        case controls::kKeyLeft:
            box_.window().setFocus(&(*row_)((index + count - 1) % count));
            return keyCode;
        case controls::kKeyRight:
            box_.window().setFocus(&(*row_)((index + 1) % count));
            return keyCode;
        case controls::kKeyUp:
            return controls::kKeyPlus;
        case controls::kKeyDown:
            return controls::kKeyMinus;
        default:
            return keyCode;
    }
}

double SteppingBox::count() const {
    if (stepping_.keeper != nullptr) {
        return core::val((box_.*stepping_.keeper).get());
    }
    return core::toInt16(codec_.counted(core::val(box_.Text.get()), tables_));
}

void SteppingBox::keep(double count) {
    if (stepping_.keeper != nullptr) {
        box_.*stepping_.keeper = core::textOf(count);
    }
}

void SteppingBox::showText(double count) {
    const auto text = core::numberText(codec_.shown(count, tables_));
    box_.Locked = false;
    box_.Text = text.view();
    box_.Locked = true;
}

}  // namespace korvane::fields
