// A part of MainParts: the buttons.
#include <QEvent>
#include <QGridLayout>
#include <QHelpEvent>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>
#include <numeric>
#include <vector>

#include "views/dashboard/MainParts.h"
#include "views/frame/ObjectPart.h"
#include "views/frame/TransferBar.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/Icons.h"
#include "views/widgets/Palette.h"
#include "views/widgets/Spacing.h"

namespace korvane::views {

namespace {

constexpr int kButtonGap = 5;
constexpr double kSpareOfText = 2.4;  // at most this much of the text's height is added to a button's
constexpr double kIconOfText = 1.2;
constexpr double kDimmedShare = 0.5;  // of the button's face in its text

// Can be as narrow as its caption.
class ServiceButton : public QPushButton {
public:
    explicit ServiceButton(QWidget* parent) : QPushButton(parent) {}

    // What its caption says is not so, and why; empty: it is so.
    void setUntrue(const QString& why) {
        if (why != why_) {
            why_ = why;
            setAccessibleDescription(why);
            update();
        }
    }

    [[nodiscard]] QSize sizeHint() const override {
        const QFontMetrics metrics = fontMetrics();
        const int words = metrics.size(Qt::TextShowMnemonic, text()).width();
        return {std::max(words, icon().isNull() ? 0 : iconSize().width()) + metrics.height(),
                QPushButton::sizeHint().height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::ToolTip && !why_.isEmpty()) {
            QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), why_ + u'\n' + toolTip(), this);
            return true;
        }
        return QPushButton::event(event);
    }
    void initStyleOption(QStyleOptionButton* option) const override {
        QPushButton::initStyleOption(option);
        if (!why_.isEmpty()) {
            const auto face = option->palette.color(QPalette::Button);
            option->palette.setColor(QPalette::ButtonText,
                                     mixed(option->palette.color(QPalette::ButtonText), face, kDimmedShare));
        }
    }

private:
    QString why_;
};

// Gives the buttons of all its groups one height.
class Column : public QWidget {
public:
    explicit Column(QWidget* parent) : QWidget(parent), groups_(child<QVBoxLayout>(this)) {
        setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
        groups_.setContentsMargins(0, 0, 0, 0);
        groups_.setSpacing(kSpacing);
        groups_.addStretch(1);
    }

    // `buttons` is the number of the card's rows that grow.
    void add(Card& card, int buttons) {
        groups_.insertWidget(groups_.count() - 1, &card);
        buttons_.push_back(buttons);
    }

protected:
    void resizeEvent(QResizeEvent*) override { share(); }
    bool event(QEvent* event) override {
        if (event->type() == QEvent::LayoutRequest) {
            share();
        } else if (event->type() == QEvent::FontChange || event->type() == QEvent::Polish) {
            fitIcons();
        }
        return QWidget::event(event);
    }

private:
    [[nodiscard]] QWidget& cardAt(int group) const { return *groups_.itemAt(group)->widget(); }

    void fitIcons() {
        const int side = static_cast<int>(fontMetrics().height() * kIconOfText);
        for (auto* button : findChildren<QPushButton*>()) {
            button->setIconSize({side, side});
        }
    }

    void share() {
        const int count = static_cast<int>(buttons_.size());
        int spare = height() - (count - 1) * kSpacing;
        for (int group = 0; group < count; ++group) {
            spare -= cardAt(group).sizeHint().height();
        }
        const int all = std::accumulate(buttons_.begin(), buttons_.end(), 0);
        const int each =
            std::clamp(spare / std::max(all, 1), 0, static_cast<int>(fontMetrics().height() * kSpareOfText));
        for (int group = 0; group < count; ++group) {
            const int buttons = buttons_[static_cast<std::size_t>(group)];
            groups_.setStretch(group, cardAt(group).sizeHint().height() + buttons * each);
        }
        groups_.setStretch(count, std::max(spare - all * each, 0));
    }

    QVBoxLayout& groups_;
    std::vector<int> buttons_;
};

class Group {
public:
    Group(const QString& title, Binder& binder, QWidget* parent)
        : binder_(binder), card_(child<Card>(parent, title)), rows_(child<QGridLayout>(&card_)) {
        rows_.setSpacing(kButtonGap);
    }

    [[nodiscard]] Card& card() { return card_; }

    ServiceButton& add(controls::CommandButton& button, char mnemonic) {
        auto& push = make(button, mnemonic);
        rows_.addWidget(&push, row_++, 0, 1, 2);
        return push;
    }

    // Two buttons that share a row; returns the second.
    QPushButton& addPair(controls::CommandButton& left, char leftMnemonic, controls::CommandButton& right,
                         char rightMnemonic) {
        rows_.addWidget(&make(left, leftMnemonic), row_, 0);
        auto& second = make(right, rightMnemonic);
        rows_.addWidget(&second, row_++, 1);
        return second;
    }

    void add(QWidget& widget) { rows_.addWidget(&widget, row_++, 0, 1, 2); }

private:
    ServiceButton& make(controls::CommandButton& button, char mnemonic) {
        auto& push = child<ServiceButton>(&card_);
        binder_.bind(button, push, mnemonic);
        push.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
        return push;
    }

    Binder& binder_;
    Card& card_;
    QGridLayout& rows_;
    int row_ = 0;
};

Card& makeTuning(live::FrmSarn2& window, Binder& binder, QWidget* parent) {
    Group group(QStringLiteral("Tuning"), binder, parent);
    group.add(window.btnKartat, 'k');
    group.add(window.btnAsetukset, 'a');
    group.add(window.btnTuningHelp, 't');
    group.add(window.Command1, 'l');
    group.add(window.Command7, 'o');
    return group.card();
}

Card& makeTools(live::FrmSarn2& window, Binder& binder, QWidget* parent) {
    Group group(QStringLiteral("Tools"), binder, parent);
    group.add(window.btnDatalogTrend, 'v');
    group.add(window.Command5, 'i');
    auto& bigReadout = group.addPair(window.Command8, '8', window.Command6, 0);
    bigReadout.setIcon(bigReadoutIcon());
    bigReadout.setShortcut(QKeySequence(Qt::ALT | Qt::Key_6));
    return group.card();
}

// The loop behind a transfer goes on counting when the port is closed.
void showLostPort(ServiceButton& push, controls::CommandButton& button, live::FrmSarn2& window, Binder& binder,
                  const QString& why) {
    ObjectPart::bind(binder, {&button, &window.linkState}, [&push, &button, &link = window.linkState, why] {
        const bool lost = !button.Enabled && link.state() == link::LinkState::State::Closed;
        push.setUntrue(lost ? why : QString());
    });
}

Card& makeService(live::FrmSarn2& window, Binder& binder, QWidget* parent) {
    Group group(QStringLiteral("Service"), binder, parent);
    auto& backup = group.add(window.btnBackup, 'b');
    auto& upload = group.add(window.btnUploadEEPROM, 'u');
    showLostPort(backup, window.btnBackup, window, binder, QStringLiteral("The port is closed: nothing is read."));
    showLostPort(upload, window.btnUploadEEPROM, window, binder,
                 QStringLiteral("The port is closed: nothing is written."));
    auto& progress = makeTransferBar(window.prgEeprom, binder, &group.card(), QStringLiteral("EEPROM transfer"));
    progress.setMinimumWidth(0);
    progress.setMaximumSize(QWIDGETSIZE_MAX, progress.fontMetrics().height() / 2);
    group.add(progress);
    group.add(window.Command2, 'd');
    Group test(QString(), binder, &group.card());
    binder.bind(window.FrameOptTest, test.card());
    test.addPair(window.Command3, '3', window.Command4, '4');
    test.card().fitMargins();
    test.card().setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    group.add(test.card());
    return group.card();
}

}  // namespace

QWidget& makeServiceColumn(live::FrmSarn2& window, Binder& binder, QWidget* parent) {
    auto& column = child<Column>(parent);
    column.add(makeTuning(window, binder, &column), 5);
    column.add(makeTools(window, binder, &column), 3);
    column.add(makeService(window, binder, &column), 3);
    return column;
}

}  // namespace korvane::views
