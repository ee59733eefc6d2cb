// How the restore points look: the list, what there is to do with the picked one, and what a restore is at.
#pragma once

#include <string>

#include "keep/restore/FrmRestore.h"
#include "views/frame/FittedView.h"

class QLayout;

namespace korvane::views {

class RestoreView : public FittedView {
public:
    RestoreView(keep::FrmRestore& window, FrameClock& clock);

private:
    QLayout& makeHead();
    QWidget& makeList();
    QWidget& makeChosen();
    QWidget& makeRestore();
    QLayout& makeOffer(QWidget* inside);
    // The button asks first, where there is a question.
    void guard(const controls::Control& button, std::string (keep::FrmRestore::*question)() const, const char* yes);

    keep::FrmRestore& window_;
};

}  // namespace korvane::views
