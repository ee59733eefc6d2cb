#include "views/frame/VerifyPart.h"

#include <QHBoxLayout>
#include <QPushButton>

#include "views/frame/ObjectPart.h"
#include "views/widgets/Child.h"
#include "views/widgets/Palette.h"
#include "views/widgets/Spacing.h"
#include "views/widgets/values/LongLine.h"

namespace korvane::views {

namespace {

constexpr double kFailureShare = 0.3;  // of the text's colour in the red

QPushButton& makeAgainButton(fields::VerifyReport& report, controls::Window& window, Binder& binder, QWidget* parent) {
    auto& again = child<QPushButton>(parent, QStringLiteral("Send again"));
    again.setObjectName(QStringLiteral("sendAgain"));
    again.setToolTip(QStringLiteral("Sends once more what the ECU was not seen to have"));
    QObject::connect(&again, &QPushButton::clicked, &again, [&report, &window, &binder] {
        binder.act([&] { window.enter("send again", [&] { report.sendAgain(); }); });
    });
    return again;
}

}  // namespace

QCheckBox& makeVerifyBox(link::VerifySwitch& choice, Binder& binder, QWidget* parent) {
    auto& box = child<QCheckBox>(parent, QStringLiteral("Verify"));
    box.setObjectName(QStringLiteral("verify"));
    box.setToolTip(QStringLiteral("Reads back what was sent and compares it. This takes longer, and sends requests"));
    QObject::connect(&box, &QCheckBox::clicked, &box,
                     [&choice, &binder](bool on) { binder.act([&choice, on] { choice.On = on; }); });
    ObjectPart::bind(binder, {&choice}, [&choice, &box] { box.setChecked(choice.On); });
    return box;
}

QWidget& makeVerifyNote(fields::VerifyReport& report, controls::Window& window, Binder& binder, QWidget* parent) {
    auto& note = child<QWidget>(parent);
    note.setObjectName(QStringLiteral("verifyNote"));
    auto& row = child<QHBoxLayout>(&note);
    row.setContentsMargins(0, 0, 0, 0);
    row.setSpacing(kSpacing);
    auto& line = child<LongLine>(&note);
    line.setObjectName(QStringLiteral("verifyLine"));
    auto& again = makeAgainButton(report, window, binder, &note);
    row.addWidget(&line, 1);
    row.addWidget(&again);
    ObjectPart::bind(binder, {&report}, [&report, &note, &line, &again, parent] {
        const QPalette around = parent->palette();
        const auto ink = around.color(QPalette::WindowText);
        setOwnColor(line, QPalette::WindowText, report.Failed ? mixed(hues::kRedLamp, ink, kFailureShare) : QColor());
        line.setWords(QString::fromStdString(report.Text));
        again.setVisible(report.Failed);
        note.setVisible(!report.Text.get().empty());
    });
    return note;
}

}  // namespace korvane::views
