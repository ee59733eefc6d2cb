#include "views/maps/LiveStripView.h"

#include <QGridLayout>

#include <string>

#include "views/frame/ObjectPart.h"
#include "views/widgets/Child.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {

namespace {

constexpr int kGap = 8;
constexpr double kNameScale = 0.8;

using Text = controls::Property<std::string>;

// A number of the strip.
struct Entry {
    const char* objectName;
    const char* name;
    const char* longest;
    const char* toolTip;
    Text maps::LiveStrip::*text;
    bool ofFuel = false;
};

const Entry kEntries[] = {
    {"stripRpm", "RPM", "10500", "Engine speed, 1/min", &maps::LiveStrip::Rpm},
    {"stripLoad", "Load bar", "2.55", "Pressure in the manifold, absolute", &maps::LiveStrip::Load},
    {"stripMixture", "AFR/target", "12.46/12.5",
     "Air-fuel ratio of the sensor, and the analyser's target for the cell in which the engine runs",
     &maps::LiveStrip::Mixture},
    {"stripThrottle", "Thr. %", "100", "Opening of the throttle", &maps::LiveStrip::Throttle},
    {"stripPulse", "Pulse ms", "10.222",
     "Injection time of the cell in which the engine runs, as the fuel map shows it", &maps::LiveStrip::Pulse, true},
    {"stripDuty", "Duty %", "100.0", "Share of the time that the injectors are open", &maps::LiveStrip::Duty, true},
};

// Where no target is shown none is named.
QString nameOf(const Entry& entry, const maps::LiveStrip& strip) {
    const bool hasTarget = strip.Mixture.get().find('/') != std::string::npos;
    return entry.text != &maps::LiveStrip::Mixture || hasTarget ? QString::fromLatin1(entry.name)
                                                                : QString::fromStdString(strip.MixtureName);
}

void add(const Entry& entry, maps::LiveStrip& strip, Binder& binder, QWidget& parent, QGridLayout& places) {
    const int column = places.columnCount();
    auto& name = child<Readout>(&parent, Readout::Look{.scale = kNameScale, .muted = true});
    auto& value = child<Readout>(&parent, Readout::Look{.bold = true});
    name.setReserve(QString::fromLatin1(entry.name));
    value.setReserve(QString::fromLatin1(entry.longest));
    value.setObjectName(QString::fromLatin1(entry.objectName));
    value.setFromEcu();
    value.setToolTip(QString::fromLatin1(entry.toolTip));
    name.setToolTip(value.toolTip());
    places.addWidget(&name, 0, column);
    places.addWidget(&value, 1, column);
    ObjectPart::bind(binder, {&strip}, [&entry, &strip, &name, &value] {
        name.setText(nameOf(entry, strip));
        value.setAccessibleName(name.text());
        value.setText(QString::fromStdString(strip.*entry.text));
    });
}

}  // namespace

QWidget& makeLiveStrip(maps::LiveStrip& strip, bool fuel, Binder& binder, QWidget* parent) {
    auto& widget = child<QWidget>(parent);
    widget.setObjectName(QStringLiteral("liveStrip"));
    QSizePolicy policy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
    auto& places = child<QGridLayout>(&widget);
    places.setContentsMargins(0, 0, 0, 0);
    places.setHorizontalSpacing(kGap);
    places.setVerticalSpacing(0);
    for (const auto& entry : kEntries) {
        if (fuel || !entry.ofFuel) {
            add(entry, strip, binder, widget, places);
        }
    }
    return widget;
}

}  // namespace korvane::views
