// Keeps the marks of the boxes of the settings window up to date, and the line that tells of lambda boxes not filled.
#pragma once

#include <unordered_map>
#include <unordered_set>

#include "settings/FrmMisc.h"
#include "views/frame/Binder.h"
#include "views/frame/BoundPart.h"
#include "views/widgets/values/ValueBox.h"

class QLabel;

namespace korvane::views {

class MarksPart : public BoundPart, private controls::Observer {
public:
    // All boxes are bound already.
    MarksPart(settings::FrmMisc& window, QLabel& lambdaLine, Binder& binder);
    MarksPart(const MarksPart&) = delete;
    MarksPart& operator=(const MarksPart&) = delete;
    ~MarksPart() override;

    void show() override;
    void showColorsAgain() override {}
    void detach(const ControlSet& alive) override;

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void objectGone(const controls::Object& object) override;
    void addBoxes();
    void mark(const void* box);

    struct Shown {
        controls::TextBox* box;
        ValueBox* widget;
    };

    settings::FrmMisc& window_;
    fields::BoxMarks* marks_;  // null when the window is destroyed
    QLabel& lambdaLine_;
    Binder& binder_;
    std::unordered_map<const void*, Shown> boxes_;  // by the box's address
    std::unordered_set<const void*> changed_;
    bool waiting_ = false;
};

}  // namespace korvane::views
