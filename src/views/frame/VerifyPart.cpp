#include "views/frame/VerifyPart.h"

#include <QHBoxLayout>

#include "views/frame/ObjectPart.h"
#include "views/frame/WindowView.h"
#include "views/widgets/Child.h"
#include "views/widgets/Palette.h"
#include "views/widgets/Spacing.h"

namespace korvane::views {

namespace {

constexpr double kFailureShare = 0.3;  // of the text's colour in the red
constexpr int kAbove = 2;              // pixels that a button is higher than a line of text

// Little higher than a line of text.
class LowButton : public QPushButton {
public:
    explicit LowButton(QWidget* parent) : QPushButton(parent) { setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed); }

    [[nodiscard]] QSize sizeHint() const override {
        return {fontMetrics().horizontalAdvance(text()) + 2 * kSpacing, fontMetrics().height() + kAbove};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

QPushButton& setUpAgain(QPushButton& again, fields::VerifyReport& report, controls::Window& window, Binder& binder) {
    again.setText(QStringLiteral("Send again"));
    again.setObjectName(QStringLiteral("sendAgain"));
    again.setAccessibleName(again.text());
    again.setToolTip(QStringLiteral("Sends once more what the ECU was not seen to have"));
    QObject::connect(&again, &QPushButton::clicked, &again, [&report, &window, &binder] {
        binder.act([&] { window.enter("send again", [&] { report.sendAgain(); }); });
    });
    ObjectPart::bind(binder, {&report}, [&report, &again] { again.setVisible(report.Failed); });
    return again;
}

}  // namespace

QCheckBox& makeVerifyBox(link::VerifySwitch& choice, Binder& binder, QWidget* parent) {
    auto& box = child<QCheckBox>(parent, QStringLiteral("Verify"));
    box.setObjectName(QStringLiteral("verify"));
    box.setFocusPolicy(Qt::StrongFocus);
    box.setToolTip(QStringLiteral("Reads back what was sent and compares it. This takes longer, and sends requests"));
    QObject::connect(&box, &QCheckBox::clicked, &box,
                     [&choice, &binder](bool on) { binder.act([&choice, on] { choice.On = on; }); });
    ObjectPart::bind(binder, {&choice}, [&choice, &box] { box.setChecked(choice.On); });
    return box;
}

void putVerifyBehind(const controls::Control& control, WindowView& view) {
    QWidget::setTabOrder(view.binder().widgetOf(&control), view.findChild<QCheckBox*>(QStringLiteral("verify")));
}

LongLine& makeVerifyLine(fields::VerifyReport& report, Binder& binder, QWidget* parent) {
    auto& line = child<LongLine>(parent);
    line.setObjectName(QStringLiteral("verifyLine"));
    ObjectPart::bind(binder, {&report}, [&report, &line, parent] {
        const auto ink = parent->palette().color(QPalette::WindowText);
        setOwnColor(line, QPalette::WindowText, report.Failed ? mixed(hues::kRedLamp, ink, kFailureShare) : QColor());
        line.setWords(QString::fromStdString(report.Text));
        line.setVisible(!report.Text.get().empty());
    });
    return line;
}

QPushButton& makeAgainButton(fields::VerifyReport& report, controls::Window& window, Binder& binder, QWidget* parent) {
    return setUpAgain(child<QPushButton>(parent), report, window, binder);
}

QWidget& makeVerifyNote(fields::VerifyReport& report, controls::Window& window, Binder& binder, QWidget* parent) {
    auto& note = child<QWidget>(parent);
    auto& row = child<QHBoxLayout>(&note);
    row.setContentsMargins(0, 0, 0, 0);
    row.setSpacing(kSpacing);
    auto& line = makeVerifyLine(report, binder, &note);
    auto& again = setUpAgain(child<LowButton>(&note), report, window, binder);
    row.addWidget(&line, 1);
    row.addWidget(&again);
    ObjectPart::bind(binder, {&report}, [&report, &note] { note.setVisible(!report.Text.get().empty()); });
    return note;
}

}  // namespace korvane::views
