// How the comparison looks: both sides above, the pages of differences below, and what can be done with them.
#pragma once

#include "keep/compare/FrmCompare.h"
#include "views/frame/FittedView.h"

namespace korvane::views {

class CompareView : public FittedView {
public:
    CompareView(keep::FrmCompare& window, FrameClock& clock);

private:
    QWidget& makeSide(const QString& title, keep::SourcePanel& side, char mnemonic);
    QWidget& makePages();
    QWidget& makeCommands();

    keep::FrmCompare& window_;
};

}  // namespace korvane::views
