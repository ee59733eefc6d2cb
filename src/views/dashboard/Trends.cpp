// A part of MainParts: the live trends.
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "views/dashboard/MainParts.h"
#include "views/frame/BoundWidgets.h"
#include "views/frame/ObjectPart.h"
#include "views/frame/OpenButton.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/PlainTip.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/charts/NotedPicture.h"

namespace korvane::views {

namespace {

constexpr int kOptionGap = 18;
const QString kRows = QStringLiteral("%1 rows on disk, %2 waiting");
constexpr int kManyRows = 10000;  // keeps the layout still while the numbers grow

// How many rows of the log are on the disk and how many wait, and the file's path.
QLabel& makeLogCounts(logs::LogCounts& counts, Binder& binder, QWidget* parent) {
    auto& label = child<QLabel>(parent);
    label.setObjectName(QStringLiteral("logCounts"));
    label.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    ObjectPart::bind(binder, {&counts}, [&counts, &label] {
        if (counts.onDisk.get() != 0 || counts.waiting.get() != 0 || !label.text().isEmpty()) {
            label.setText(kRows.arg(counts.onDisk.get()).arg(counts.waiting.get()));
            label.setMinimumWidth(label.fontMetrics().horizontalAdvance(kRows.arg(kManyRows).arg(kManyRows)));
        }
        label.setToolTip(plainTip(QString::fromStdString(counts.path)));
    });
    return label;
}

// The windows that keep a tune.
void addOpeners(QHBoxLayout& row, const link::KeepWindows& keep, Binder& binder, QWidget* parent) {
    if (keep.compare && keep.restore) {
        auto& openers = child<QHBoxLayout>(kNobody);
        openers.addWidget(&makeOpenButton(kCompareButton, binder, parent, keep.compare));
        openers.addWidget(&makeOpenButton(kRestoreButton, binder, parent, keep.restore));
        row.addLayout(&openers);
    }
}

QLayout& makeOptions(live::FrmSarn2& window, Binder& binder, QWidget* parent) {
    auto& row = child<QHBoxLayout>(kNobody);
    row.setSpacing(kOptionGap);
    row.addWidget(&makeBox(window.chkSlowTrend, 'w', binder, parent));
    row.addWidget(&makeBox(window.chkUseSound, 'n', binder, parent));
    row.addStretch(1);
    auto& file = child<QLineEdit>(parent);
    file.setAccessibleName(QStringLiteral("Data file"));
    binder.bind(window.txtDatalogFile, file);
    row.addWidget(&makeBox(window.chkDatalog, 'e', binder, parent));
    row.addWidget(&file, 2);
    row.addWidget(&makeLogCounts(window.logCounts, binder, parent), 1);
    addOpeners(row, window.keepWindows, binder, parent);
    return row;
}

}  // namespace

QWidget& makeTrends(live::FrmSarn2& window, Binder& binder, QWidget* parent) {
    auto& card = child<Card>(parent);
    auto& rows = child<QVBoxLayout>(&card);
    auto& pictures = child<QHBoxLayout>(kNobody);
    pictures.setSpacing(kSpacing);
    for (auto* picture : {&window.picTrend, &window.picTrend2}) {
        const auto& span = picture == &window.picTrend ? window.trendSpan : window.trendSpan2;
        auto& view = child<NotedPicture>(&card, [&binder, &span] {
            return binder.isAttached() ? QString::fromStdString(live::spanText(span)) : QString();
        });
        view.setAccessibleName(picture == &window.picTrend ? QStringLiteral("Engine trend")
                                                           : QStringLiteral("Supply and temperature trend"));
        view.setFromEcu();
        binder.bind(*picture, view);
        pictures.addWidget(&view, 1);
    }
    rows.addLayout(&pictures, 1);
    rows.addLayout(&makeOptions(window, binder, &card));
    card.fitMargins();
    return card;
}

}  // namespace korvane::views
