// One control of a window and the widget that shows it.
#pragma once

#include <QObject>
#include <QPalette>
#include <QString>
#include <QWidget>

#include <optional>

#include "controls/Control.h"
#include "views/frame/BoundPart.h"

namespace korvane::views {

class Binder;

// Shows the control's state and turns the toolkit's events into the control's. Changes of the control only mark the
// binding; show() brings the widget up to date.
class Binding : public QObject, public BoundPart, private controls::Observer {
public:
    Binding(Binder& binder, controls::Control& control, QWidget& widget);

    [[nodiscard]] controls::Control& control() const { return control_; }
    [[nodiscard]] QWidget& widget() const { return widget_; }

    void show() override;
    void showColorsAgain() override;
    void detach(const ControlSet& alive) override;

protected:
    // Brings everything but the properties that all controls share up to date.
    virtual void showContent() = 0;
    [[nodiscard]] virtual QString toolTip() const;
    // Two lines, or one where the other is empty.
    [[nodiscard]] static QString joined(const QString& first, const QString& second);
    // A key that makes a character, before the widget gets it; true keeps it from the widget.
    virtual bool characterTyped(QKeyEvent& event);

    // The widget that gets the control's colours.
    struct Roles {
        QPalette::ColorRole back = QPalette::Window;
        QPalette::ColorRole fore = QPalette::WindowText;
        controls::Color usualBack = controls::kButtonFace;
        controls::Color usualFore = controls::kButtonText;
    };
    [[nodiscard]] virtual Roles roles() const { return {}; }

    bool eventFilter(QObject* watched, QEvent* event) override;
    [[nodiscard]] Binder& binder() const { return binder_; }

    // As Binder::act().
    template <class Action>
    void act(Action action);

    // The user presses the control, with the mouse, a key or its letter. It gets the focus first in all cases,
    // so that what has been typed elsewhere is taken before.
    void press();

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    [[nodiscard]] bool isCommon(const void* property) const;
    void showCommon();
    void showFont();
    void showColors();
    bool keyPressed(QKeyEvent& event);
    void keyReleased(const QKeyEvent& event);
    void mouseReleased(const QMouseEvent& event);

    Binder& binder_;
    controls::Control& control_;
    QWidget& widget_;
    bool contentChanged_ = true;
    bool commonChanged_ = true;
    bool waiting_ = false;
};

}  // namespace korvane::views
