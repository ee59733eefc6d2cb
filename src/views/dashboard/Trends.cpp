// A part of MainParts: the live trends.
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include <memory>

#include "views/dashboard/LogCountsPart.h"
#include "views/dashboard/MainParts.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/charts/NotedPicture.h"

namespace korvane::views {

namespace {

constexpr int kOptionGap = 18;

QCheckBox& makeBox(controls::CheckBox& box, char mnemonic, Binder& binder, QWidget* parent) {
    auto& check = child<QCheckBox>(parent);
    binder.bind(box, check, mnemonic);
    return check;
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
    auto& counts = child<QLabel>(parent);
    counts.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    binder.bind(std::make_unique<LogCountsPart>(window.logCounts, counts, binder), {}, counts);
    row.addWidget(&counts, 1);
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
