// Continues Binder: labels, buttons and other controls; lists and text boxes have files of their own.
#include <QAccessible>
#include <QCheckBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTabBar>

#include "views/frame/Binder.h"
#include "views/widgets/Palette.h"
#include "views/widgets/charts/PictureView.h"
#include "views/widgets/values/Dial.h"
#include "views/widgets/values/Gauge.h"
#include "views/widgets/values/Lamp.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {

namespace {

constexpr int kTwipsPerPixel = 15;

class LabelBinding : public Binding {
public:
    LabelBinding(Binder& binder, controls::Label& label, QLabel& widget)
        : Binding(binder, label, widget), label_(label), text_(widget) {
        text_.setTextFormat(Qt::PlainText);
    }

protected:
    void showContent() override { text_.setText(QString::fromStdString(label_.Caption)); }

private:
    controls::Label& label_;
    QLabel& text_;
};

class ReadoutBinding : public Binding {
public:
    ReadoutBinding(Binder& binder, controls::Label& label, Readout& widget, QWidget* named)
        : Binding(binder, label, widget), label_(label), readout_(widget), named_(named) {}

protected:
    void showContent() override {
        readout_.setText(QString::fromStdString(label_.Caption));
        if (named_ != nullptr) {
            named_->setAccessibleName(readout_.text());
        }
    }

private:
    controls::Label& label_;
    Readout& readout_;
    QWidget* named_;
};

class ButtonBinding : public Binding {
public:
    ButtonBinding(Binder& binder, controls::CommandButton& button, QPushButton& widget, char mnemonic)
        : Binding(binder, button, widget), button_(button), push_(widget), mnemonic_(mnemonic) {
        connect(&push_, &QPushButton::clicked, this, [this] { press(); });
    }

protected:
    // The accessible name of a button without a caption is its tool-tip.
    void showContent() override {
        push_.setText(captionText(button_.Caption, mnemonic_));
        push_.setAccessibleName(
            QString::fromStdString(button_.Caption.get().empty() ? button_.ToolTipText : button_.Caption));
    }
    [[nodiscard]] Roles roles() const override { return {.back = QPalette::Button, .fore = QPalette::ButtonText}; }

    bool characterTyped(QKeyEvent& event) override {
        if (Binding::characterTyped(event)) {
            return true;
        }
        const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
        if (enter && !event.isAutoRepeat()) {
            push_.click();
        }
        return enter;
    }

private:
    controls::CommandButton& button_;
    QPushButton& push_;
    char mnemonic_;
};

class CheckBoxBinding : public Binding {
public:
    CheckBoxBinding(Binder& binder, controls::CheckBox& box, QCheckBox& widget, char mnemonic)
        : Binding(binder, box, widget), box_(box), check_(widget), mnemonic_(mnemonic) {
        connect(&check_, &QCheckBox::clicked, this, [this] { pressed(); });
    }

protected:
    void showContent() override {
        check_.setText(captionText(box_.Caption, mnemonic_));
        if (!box_.Caption.get().empty()) {
            check_.setAccessibleName(QString::fromStdString(box_.Caption));
        }
        check_.setChecked(box_.Value == 1);
    }

private:
    // The toolkit has toggled the box already; the control's value, which the program may change, is what counts.
    void pressed() {
        press();
        if (binder().isAttached()) {
            showContent();
        }
    }

    controls::CheckBox& box_;
    QCheckBox& check_;
    char mnemonic_;
};

class OptionBinding : public Binding {
public:
    OptionBinding(Binder& binder, controls::OptionButton& option, QRadioButton& widget, char mnemonic)
        : Binding(binder, option, widget), option_(option), radio_(widget), mnemonic_(mnemonic) {
        radio_.setAutoExclusive(false);
        connect(&radio_, &QRadioButton::clicked, this, [this] { pressed(); });
    }

protected:
    void showContent() override {
        radio_.setText(captionText(option_.Caption, mnemonic_));
        radio_.setAccessibleName(QString::fromStdString(option_.Caption));
        radio_.setChecked(option_.Value);
    }

private:
    // As with a check box; and a press on the chosen option must not switch it off.
    void pressed() {
        press();
        if (binder().isAttached()) {
            showContent();
        }
    }

    controls::OptionButton& option_;
    QRadioButton& radio_;
    char mnemonic_;
};

class TabStripBinding : public Binding {
public:
    TabStripBinding(Binder& binder, controls::TabStrip& strip, QTabBar& widget)
        : Binding(binder, strip, widget), strip_(strip), bar_(widget) {
        for (int tab = 1; tab <= strip_.tabCount(); ++tab) {
            bar_.addTab(captionText(strip_.tabCaption(tab), 0));
        }
        connect(&bar_, &QTabBar::currentChanged, this, [this](int index) { chosen(index + 1); });
    }

protected:
    void showContent() override {
        const QSignalBlocker quiet(bar_);
        for (int tab = 1; tab <= strip_.tabCount(); ++tab) {
            showCaption(tab - 1, captionText(strip_.tabCaption(tab), 0));
        }
        bar_.setCurrentIndex(strip_.SelectedItem - 1);
    }

private:
    void showCaption(int index, const QString& caption) {
        if (bar_.tabText(index) != caption) {
            bar_.setTabText(index, caption);
        }
    }
    void chosen(int tab) {
        act([&] {
            if (strip_.usable()) {
                strip_.choose(tab);
            }
        });
        if (binder().isAttached()) {
            showContent();
        }
    }

    controls::TabStrip& strip_;
    QTabBar& bar_;
};

class ProgressBinding : public Binding {
public:
    ProgressBinding(Binder& binder, controls::ProgressBar& progress, QProgressBar& widget)
        : Binding(binder, progress, widget), progress_(progress), bar_(widget) {}

protected:
    void showContent() override {
        bar_.setRange(0, progress_.Max);
        bar_.setValue(progress_.Value);
    }

private:
    controls::ProgressBar& progress_;
    QProgressBar& bar_;
};

class ContainerBinding : public Binding {
public:
    using Binding::Binding;

protected:
    void showContent() override {}
};

class FrameBinding : public Binding {
public:
    FrameBinding(Binder& binder, controls::Frame& frame, QGroupBox& widget)
        : Binding(binder, frame, widget), frame_(frame), group_(widget), usualTitle_(widget.title()) {}

protected:
    // A frame without a caption keeps the heading that its view has given it.
    void showContent() override {
        group_.setTitle(frame_.Caption.get().empty() ? usualTitle_ : captionText(frame_.Caption, 0));
    }

private:
    controls::Frame& frame_;
    QGroupBox& group_;
    QString usualTitle_;
};

class LampBinding : public Binding {
public:
    LampBinding(Binder& binder, controls::Image& image, Lamp& widget)
        : Binding(binder, image, widget), image_(image), lamp_(widget) {}

protected:
    void showContent() override { lamp_.setPicture(image_.Shown); }

private:
    controls::Image& image_;
    Lamp& lamp_;
};

class PictureBinding : public Binding {
public:
    PictureBinding(Binder& binder, controls::PictureBox& picture, PictureView& widget)
        : Binding(binder, picture, widget), picture_(picture), view_(widget) {
        view_.onResized([this](QSize size) { resized(size); });
    }

protected:
    void showContent() override {
        view_.setDrawing(picture_.drawing(), picture_.Width, colorOf(picture_.BackColor, QPalette()));
    }

private:
    void resized(QSize size) {
        act([&] {
            picture_.Width = size.width();
            picture_.Height = size.height();
        });
    }

    controls::PictureBox& picture_;
    PictureView& view_;
};

class DialBinding : public Binding {
public:
    DialBinding(Binder& binder, live::SarnMeter& meter, Dial& widget)
        : Binding(binder, meter, widget), meter_(meter), dial_(widget) {
        dial_.onResized([this](int side) { act([&] { meter_.resize(side * kTwipsPerPixel); }); });
    }

protected:
    void showContent() override {
        dial_.setPose(
            {meter_.needle(), meter_.peakLine(), QString::fromStdString(meter_.number()), meter_.MeterType()});
        dial_.setAccessibleName(dial_.name());
    }

private:
    live::SarnMeter& meter_;
    Dial& dial_;
};

class GaugeBinding : public Binding {
public:
    GaugeBinding(Binder& binder, live::SarnGauge& gauge, Gauge& widget)
        : Binding(binder, gauge, widget), gauge_(gauge), view_(widget) {}

protected:
    void showContent() override {
        const QString caption = QString::fromStdString(gauge_.shownCaption());
        view_.setPose({gauge_.pointerTip(), gauge_.value(), QString::fromStdString(gauge_.number()), caption});
        view_.setAccessibleName(caption);
    }

private:
    live::SarnGauge& gauge_;
    Gauge& view_;
};

}  // namespace

void Binder::bind(controls::Label& label, QLabel& widget) {
    add(std::make_unique<LabelBinding>(*this, label, widget));
}

void Binder::bind(controls::Label& label, Readout& widget, QWidget* named) {
    add(std::make_unique<ReadoutBinding>(*this, label, widget, named));
}

void Binder::bind(controls::CommandButton& button, QPushButton& widget, char mnemonic) {
    add(std::make_unique<ButtonBinding>(*this, button, widget, mnemonic));
}

void Binder::bind(controls::CheckBox& box, QCheckBox& widget, char mnemonic) {
    add(std::make_unique<CheckBoxBinding>(*this, box, widget, mnemonic));
}

void Binder::bind(controls::OptionButton& option, QRadioButton& widget, char mnemonic) {
    add(std::make_unique<OptionBinding>(*this, option, widget, mnemonic));
}

void Binder::bind(controls::TabStrip& strip, QTabBar& widget) {
    add(std::make_unique<TabStripBinding>(*this, strip, widget));
}

void Binder::bind(controls::ProgressBar& bar, QProgressBar& widget) {
    add(std::make_unique<ProgressBinding>(*this, bar, widget));
}

void Binder::bindContainer(controls::Control& container, QWidget& widget) {
    add(std::make_unique<ContainerBinding>(*this, container, widget));
}

void Binder::bind(controls::Frame& frame, QGroupBox& widget) {
    add(std::make_unique<FrameBinding>(*this, frame, widget));
}

void Binder::bind(controls::Image& image, Lamp& widget) {
    add(std::make_unique<LampBinding>(*this, image, widget));
}

void Binder::bind(controls::PictureBox& picture, PictureView& widget) {
    add(std::make_unique<PictureBinding>(*this, picture, widget));
}

void Binder::bind(live::SarnMeter& meter, Dial& widget) {
    add(std::make_unique<DialBinding>(*this, meter, widget));
}

void Binder::bind(live::SarnGauge& gauge, Gauge& widget) {
    add(std::make_unique<GaugeBinding>(*this, gauge, widget));
}

}  // namespace korvane::views
