#include "views/maps/MapNotes.h"

#include <QLabel>

#include "views/frame/ObjectPart.h"
#include "views/widgets/Child.h"
#include "views/widgets/Palette.h"
#include "views/widgets/values/NoteLine.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {

namespace {

constexpr double kWarningShare = 0.35;  // of the colour in the ground
constexpr double kFailureShare = 0.3;   // of the text's colour in the red
constexpr double kPlateShare = 0.12;
constexpr int kMargin = 6;

struct NoteWords {
    const char* name;
    const char* spoken;
    const char* toolTip;
};

// The text of a model of answers, red where they have failed. It asks for no more width than the text has.
template <class Model>
QWidget& makeNote(Model& model, const NoteWords& words, Binder& binder, QWidget* parent) {
    auto& note = child<Readout>(parent, Readout::Look{.elided = true});
    note.setMinimumWidth(1);
    note.setObjectName(QLatin1String(words.name));
    note.setToolTip(QLatin1String(words.toolTip));
    note.setAccessibleName(QLatin1String(words.spoken));
    ObjectPart::bind(binder, {&model}, [&model, &note, parent] {
        const QPalette around = parent->palette();
        setOwnColor(note, QPalette::WindowText,
                    model.Failed ? mixed(hues::kRedLamp, around.color(QPalette::WindowText), kFailureShare) : QColor());
        const QString told = QString::fromStdString(model.Text);
        note.setReserve(told);
        note.setText(told);
    });
    return note;
}

}  // namespace

QWidget& makeTransferNote(maps::TransferWatch& watch, Binder& binder, QWidget* parent) {
    return makeNote(watch,
                    {"transferNote", "Answer of the ECU", "What the ECU was heard to answer to the last transfer"},
                    binder, parent);
}

QWidget& makeAnswersNote(fields::Answers& answers, Binder& binder, QWidget* parent) {
    return makeNote(answers,
                    {"answersNote", "Answer of the ECU to parameters",
                     "What the ECU was heard to answer to the last read or save of parameters"},
                    binder, parent);
}

QWidget& makeSizeNote(maps::SizeNote& note, Binder& binder, QWidget* parent) {
    auto& line = child<NoteLine>(parent);
    line.setObjectName(QStringLiteral("sizeNote"));
    line.setMargin(kMargin);
    ObjectPart::bind(binder, {&note}, [&note, &line, parent] {
        setOwnColor(line, QPalette::Window, mixed(shades::surface(parent->palette()), hues::kPeak, kWarningShare));
        line.setText(QString::fromStdString(note.words()));
        line.setVisible(!note.words().empty());
    });
    return line;
}

void addNeverReadNote(maps::MapGrid& grid, MapGridView& view, Binder& binder) {
    auto& note = child<QLabel>(&view, QStringLiteral("Not read from the ECU yet"));
    note.setObjectName(QStringLiteral("neverRead"));
    note.setAttribute(Qt::WA_TransparentForMouseEvents);
    note.setAutoFillBackground(true);
    note.setMargin(kMargin);
    view.setOverlay(note);
    ObjectPart::bind(binder, {&grid.fill}, [&grid, &note, &view] {
        const QPalette around = view.palette();
        setOwnColor(note, QPalette::Window,
                    mixed(shades::surface(around), around.color(QPalette::WindowText), kPlateShare));
        note.setVisible(grid.fill.NeverRead);
    });
}

}  // namespace korvane::views
