// The marks of the misc boxes that the ECU does not have.
#pragma once

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>

#include <functional>
#include <string>
#include <vector>

#include "maps/panes/MiscPane.h"
#include "views/frame/Binder.h"
#include "views/widgets/values/BoxMark.h"

namespace korvane::views {

// Everything that the marks depend on.
[[nodiscard]] std::vector<controls::Object*> miscBoxesOf(maps::MiscPane& pane);

// A widget with the mark of a changed box in its corner. The note of the mark comes before the widget's own tool-tip,
// and is its description for screen readers.
template <class Widget>
class Marked : public Widget {
public:
    explicit Marked(QWidget* parent) : Widget(parent) {}

    void setNote(const QString& note) {
        if (note != note_) {
            note_ = note;
            this->setAccessibleDescription(note);
            this->update();
        }
    }
    [[nodiscard]] const QString& note() const { return note_; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString note_;
};

extern template class Marked<QLineEdit>;
extern template class Marked<QCheckBox>;
extern template class Marked<QRadioButton>;

// Shows what `note` says whenever something of the pane's misc block changes.
template <class Widget>
void bindNote(maps::MiscPane& pane, Binder& binder, Marked<Widget>& widget, std::function<std::string()> note);

extern template void bindNote(maps::MiscPane&, Binder&, Marked<QLineEdit>&, std::function<std::string()>);
extern template void bindNote(maps::MiscPane&, Binder&, Marked<QCheckBox>&, std::function<std::string()>);
extern template void bindNote(maps::MiscPane&, Binder&, Marked<QRadioButton>&, std::function<std::string()>);

}  // namespace korvane::views
