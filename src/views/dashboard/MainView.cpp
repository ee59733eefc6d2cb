#include "views/dashboard/MainView.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <vector>

#include "live/MainHints.h"
#include "maps/notes/UnsentQuestion.h"
#include "platform/Machine.h"
#include "settings/FrmMisc.h"
#include "views/dashboard/KeepLine.h"
#include "views/dashboard/MainParts.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"

namespace korvane::views {

namespace {

constexpr QSizeF kUsual{108, 56};  // text sizes
constexpr double kSmallestText = 0.8;
constexpr int kInstrumentStretch = 12;
constexpr int kValueStretch = 4;
constexpr int kTrendStretch = 8;

}  // namespace

MainView::MainView(live::FrmSarn2& window, FrameClock& clock)
    : FittedView(window, clock, kUsual, kSmallestText), machine_(window.machine()) {
    binder().setHints([](const controls::Control& control) {
        const auto hint = live::hintOf(control);
        return QString::fromUtf8(hint.data(), static_cast<qsizetype>(hint.size()));
    });
    build(window);
    orderTabs(window);
    fitTexts();
}

bool MainView::mayClose() {
    std::vector<maps::PaneWindow*> open;
    int unsaved = 0;
    for (auto* window : machine_.windows.loaded()) {
        if (auto* const maps = dynamic_cast<maps::PaneWindow*>(window)) {
            open.push_back(maps);
        } else if (auto* const settings = dynamic_cast<settings::FrmMisc*>(window)) {
            unsaved += settings->boxMarks().unsaved();
        }
    }
    leaving_ = leaving_ || maps::mayLeaveUnsent(machine_, open, unsaved);
    return leaving_;
}

void MainView::build(live::FrmSarn2& window) {
    QWidget* const inside = &content();
    auto& rows = child<QVBoxLayout>(inside);
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    rows.addWidget(&makeConnectionBar(window, binder(), inside));
    rows.addWidget(&makeKeepLine(window.keepNotice, binder(), inside));
    auto& columns = child<QHBoxLayout>(kNobody);
    columns.setSpacing(kSpacing);
    rows.addLayout(&columns, 1);
    columns.addWidget(&makeServiceColumn(window, binder(), inside));
    auto& middle = child<QVBoxLayout>(kNobody);
    middle.setSpacing(kSpacing);
    columns.addLayout(&middle, 1);
    middle.addWidget(&makeInstruments(window, binder(), inside), kInstrumentStretch);
    middle.addWidget(&makeValues(window, binder(), inside), kValueStretch);
    middle.addWidget(&makeTrends(window, binder(), inside), kTrendStretch);
    columns.addWidget(&makeStatusColumn(window, binder(), inside));
}

void MainView::orderTabs(live::FrmSarn2& window) {
    binder().setTabOrder({&window.ComboPort,  &window.ComboBaud,       &window.ComboRefresh,    &window.btnConnect,
                          &window.btnKartat,  &window.btnAsetukset,    &window.btnTuningHelp,   &window.Command1,
                          &window.Command7,   &window.btnDatalogTrend, &window.Command5,        &window.Command8,
                          &window.Command6,   &window.btnBackup,       &window.btnUploadEEPROM, &window.Command2,
                          &window.Command3,   &window.Command4,        &window.chkSlowTrend,    &window.chkUseSound,
                          &window.chkDatalog, &window.txtDatalogFile});
}

}  // namespace korvane::views
