#include "views/Accessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include <memory>

#include "views/maps/MapGridSpeech.h"
#include "views/maps/MapGridView.h"
#include "views/widgets/charts/PictureView.h"
#include "views/widgets/values/BigFigures.h"
#include "views/widgets/values/Dial.h"
#include "views/widgets/values/Gauge.h"
#include "views/widgets/values/Lamp.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {

namespace {

// Name and value of a painted widget, read out together.
class Spoken : public QAccessibleWidget {
public:
    Spoken(QWidget* widget, QAccessible::Role role) : QAccessibleWidget(widget, role) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Value) {
            return value();
        }
        if (kind == QAccessible::Name && role() == QAccessible::StaticText) {
            const QString name = widget()->accessibleName();
            return name.isEmpty() ? value() : name + u' ' + value();
        }
        return QAccessibleWidget::text(kind);
    }

private:
    [[nodiscard]] QString value() const {
        if (const auto* readout = dynamic_cast<const Readout*>(widget())) {
            return readout->text();
        }
        if (const auto* figures = dynamic_cast<const BigFigures*>(widget())) {
            return figures->text();
        }
        if (const auto* lamp = dynamic_cast<const Lamp*>(widget())) {
            return lamp->picture() == controls::Picture::Grey ? QStringLiteral("off") : QStringLiteral("on");
        }
        if (const auto* dial = dynamic_cast<const Dial*>(widget())) {
            return dial->number();
        }
        const auto* gauge = dynamic_cast<const Gauge*>(widget());
        return gauge != nullptr ? gauge->number() : QString();
    }
};

QAccessibleInterface* speak(const QString&, QObject* object) {
    const auto spoken = [&](QAccessible::Role role) {
        return std::make_unique<Spoken>(qobject_cast<QWidget*>(object), role).release();
    };
    if (dynamic_cast<Readout*>(object) != nullptr || dynamic_cast<BigFigures*>(object) != nullptr) {
        return spoken(QAccessible::StaticText);
    }
    if (dynamic_cast<Lamp*>(object) != nullptr) {
        return spoken(QAccessible::Indicator);
    }
    if (dynamic_cast<Dial*>(object) != nullptr || dynamic_cast<Gauge*>(object) != nullptr) {
        return spoken(QAccessible::Dial);
    }
    if (auto* const grid = dynamic_cast<MapGridView*>(object); grid != nullptr) {
        return speakGrid(*grid);
    }
    return dynamic_cast<PictureView*>(object) != nullptr ? spoken(QAccessible::Chart) : nullptr;
}

}  // namespace

void installAccessibility() {
    QAccessible::installFactory(&speak);
}

}  // namespace korvane::views
