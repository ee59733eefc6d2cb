// Binds the widgets of a view to the controls of its window.
#pragma once

#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "controls/Chart.h"
#include "controls/Controls.h"
#include "controls/ListBox.h"
#include "controls/ListView.h"
#include "controls/PictureBox.h"
#include "controls/Window.h"
#include "live/SarnGauge.h"
#include "live/SarnMeter.h"
#include "views/frame/Binding.h"
#include "views/frame/FrameClock.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QTabBar;

namespace korvane::views {

class ChartWidget;
class Dial;
class DropDown;
class Gauge;
class Lamp;
class ListTable;
class PictureView;
class Readout;
class TextList;

// Every bound widget gets its control's path as object name and goes both ways: what the program changes is shown with
// the next frame while the view can be seen, what the user does reaches the model at once. Widgets outlive the binder.
class Binder : public FrameClock::Client {
public:
    Binder(controls::Window& window, QWidget& view, FrameClock& clock);
    Binder(const Binder&) = delete;
    Binder& operator=(const Binder&) = delete;
    ~Binder() override;

    void bind(controls::Label& label, QLabel& widget);
    // A label that names another widget: screen readers read its text before that widget's own.
    void bind(controls::Label& label, Readout& widget, QWidget* named = nullptr);
    // `mnemonic` is a letter of the caption, 0 for none.
    void bind(controls::CommandButton& button, QPushButton& widget, char mnemonic = 0);
    void bind(controls::CheckBox& box, QCheckBox& widget, char mnemonic = 0);
    // The toolkit's own grouping is switched off: which options exclude each other is the program's.
    void bind(controls::OptionButton& option, QRadioButton& widget, char mnemonic = 0);
    void bind(controls::TabStrip& strip, QTabBar& widget);
    void bind(controls::ProgressBar& bar, QProgressBar& widget);
    void bind(controls::ComboBox& box, DropDown& widget);
    void bind(controls::ListView& list, ListTable& widget);
    void bind(controls::ListBox& list, TextList& widget);
    void bind(controls::TextBox& box, QLineEdit& widget);
    void bind(controls::Frame& frame, QGroupBox& widget);
    void bind(controls::Image& image, Lamp& widget);
    void bind(controls::PictureBox& picture, PictureView& widget);
    void bind(controls::Chart& chart, ChartWidget& widget);
    // The widget contains the widgets of the controls in `container`, and is shown and hidden with it.
    void bindContainer(controls::Control& container, QWidget& widget);
    void bind(live::SarnMeter& meter, Dial& widget);
    void bind(live::SarnGauge& gauge, Gauge& widget);

    void bind(std::unique_ptr<BoundPart> part);
    // A part that keeps the widget of many controls up to date.
    void bind(std::unique_ptr<BoundPart> part, const std::vector<const controls::Control*>& controls, QWidget& widget);

    // Tab goes through the widgets of these controls in this order.
    void setTabOrder(const std::vector<controls::Control*>& controls);

    // Called before a press of the user reaches the control; false drops the press.
    void setGuard(const controls::Control& control, std::function<bool()> guard);
    // Whether a press may reach the control. Its guard may ask the user, and the view may be detached meanwhile.
    [[nodiscard]] bool lets(const controls::Control& control) const;

    // What the tool-tip of each control that is bound later says behind the control's own.
    void setHints(std::function<QString(const controls::Control&)> hints) { hints_ = std::move(hints); }
    [[nodiscard]] QString hintOf(const controls::Control& control) const;

    // The widget bound to the control; null when there is none.
    [[nodiscard]] QWidget* widgetOf(const controls::Control* control) const;

    // The window is going: nothing of it is used from now on.
    void detach();
    [[nodiscard]] bool isAttached() const { return attached_; }

    // Shows everything that has changed, seen or not.
    void showAll();
    void frame() override;
    void wake();
    void showColorsAgain();

    // The model's focus, shown in the view.
    void showFocus();
    void focusArrived(controls::Control& control);

    void marked(BoundPart& part);

    // The view calls the model, which must not delete the view meanwhile. A view whose window is unloaded is deleted
    // after its last visit.
    class Visit {
    public:
        explicit Visit(Binder& binder) : binder_(binder) { ++binder_.visits_; }
        Visit(const Visit&) = delete;
        Visit& operator=(const Visit&) = delete;
        ~Visit() { binder_.endVisit(); }

    private:
        Binder& binder_;
    };
    [[nodiscard]] bool isVisiting() const { return visits_ > 0; }

    // Something the user has done: `action` goes to the model, and what it changed is shown at once.
    template <class Action>
    void act(Action action) {
        if (!attached_) {
            return;
        }
        const Visit visit(*this);
        action();
        if (attached_) {
            showAll();
        }
    }

private:
    void add(std::unique_ptr<Binding> binding);
    void endVisit();

    controls::Window& window_;
    QWidget& view_;
    FrameClock& clock_;
    std::vector<std::unique_ptr<BoundPart>> parts_;
    std::vector<BoundPart*> marked_;
    std::vector<BoundPart*> shown_;
    std::unordered_map<const controls::Control*, QWidget*> byControl_;
    std::unordered_map<const controls::Control*, std::function<bool()>> guards_;
    std::function<QString(const controls::Control&)> hints_;
    bool attached_ = true;
    bool showing_ = false;
    int visits_ = 0;
};

// A caption as the toolkit wants it: with the letter that Alt reaches it by, everything else unchanged.
[[nodiscard]] QString captionText(const std::string& caption, char mnemonic);

template <class Action>
void Binding::act(Action action) {
    binder_.act(std::move(action));
}

}  // namespace korvane::views
