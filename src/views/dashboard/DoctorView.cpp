#include "views/dashboard/DoctorView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/TextList.h"

namespace korvane::views {

DoctorView::DoctorView(doctor::FrmDoctor& window, FrameClock& clock) : WindowView(window, clock), window_(window) {
    auto& rows = child<QVBoxLayout>(this);
    rows.setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    rows.setSpacing(kSpacing);
    rows.addWidget(&makeFindings(), 1);
    rows.addWidget(&makeTrial(), 1);
    rows.addLayout(&makeButtons());
    binder().setTabOrder({&window.lstFindings, &window.lstSpeeds, &window.btnAgain, &window.btnAsk});
}

QWidget& DoctorView::makeLine(controls::Label& label, QWidget& card, const char* spoken) {
    auto& line = child<QLabel>(&card);
    line.setWordWrap(true);
    line.setTextInteractionFlags(Qt::TextSelectableByMouse);
    line.setAccessibleName(QLatin1String(spoken));
    binder().bind(label, line);
    return line;
}

QWidget& DoctorView::makeFindings() {
    auto& card = child<Card>(static_cast<QWidget*>(this), QStringLiteral("Found without sending"));
    auto& rows = child<QVBoxLayout>(&card);
    rows.addWidget(&makeLine(window_.lblPort, card, "Port"));
    auto& list = child<TextList>(&card);
    list.setWordWrap(true);
    list.setUniformItemSizes(false);
    list.setResizeMode(QListView::Adjust);
    list.setAccessibleName(QStringLiteral("What was found"));
    binder().bind(window_.lstFindings, list);
    rows.addWidget(&list, 1);
    card.fitMargins();
    return card;
}

QWidget& DoctorView::makeTrial() {
    auto& card = child<Card>(static_cast<QWidget*>(this), QStringLiteral("Asked at each speed"));
    auto& rows = child<QVBoxLayout>(&card);
    rows.addWidget(&makeLine(window_.lblWarning, card, "Before you ask"));
    auto& list = child<TextList>(&card);
    list.setAccessibleName(QStringLiteral("What came back at each speed"));
    binder().bind(window_.lstSpeeds, list);
    rows.addWidget(&list, 1);
    card.fitMargins();
    return card;
}

QLayout& DoctorView::makeButtons() {
    auto& row = child<QHBoxLayout>(kNobody);
    row.setSpacing(kSpacing);
    row.addWidget(&makeLine(window_.lblVerdict, *this, "Result"), 1);
    const auto add = [&](controls::CommandButton& button, char mnemonic) {
        auto& widget = child<QPushButton>(static_cast<QWidget*>(this));
        binder().bind(button, widget, mnemonic);
        row.addWidget(&widget);
    };
    add(window_.btnAgain, 't');
    add(window_.btnAsk, 'a');
    return row;
}

}  // namespace korvane::views
