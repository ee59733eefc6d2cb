// The big readout on the screen, with the resize events of a drag.
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QImage>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include "live/readout/FrmBigText.h"
#include "support/VirtualProgram.h"
#include "views/Events.h"
#include "views/Find.h"
#include "views/Pixels.h"
#include "views/Views.h"
#include "views/dashboard/BigTextView.h"
#include "views/widgets/values/BigFigures.h"

namespace korvane::views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kStep = 20;  // ms between two moves of the mouse

// Notes the sizes that a view gets.
class Sizes : public QObject {
public:
    explicit Sizes(QWidget& widget) : widget_(widget) { widget.installEventFilter(this); }
    std::vector<QSize> seen;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == &widget_ && event->type() == QEvent::Resize) {
            seen.push_back(widget_.size());
        }
        return false;
    }

private:
    QWidget& widget_;
};

// A display that gives a window the size that it likes.
class Stubborn : public QObject {
public:
    Stubborn(QWidget& widget, QSize size) : widget_(widget), size_(size) {
        widget.installEventFilter(this);
        widget_.resize(size_);
    }
    int refusals = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Resize && widget_.size() != size_) {
            ++refusals;
            QMetaObject::invokeMethod(
                &widget_, [this] { widget_.resize(size_); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    QWidget& widget_;
    QSize size_;
};

struct BigTextViewTest : testing::Test, support::VirtualMachine {
    BigTextViewTest() {
        addViews(host);
        table.liveValues[0].name = "RPM";
        table.liveValues[0].value = 850;
        table.liveValues[0].limit = 6000;
        window.show();
        view().activateWindow();
        settle();
    }

    [[nodiscard]] WindowView& view() const { return *host.viewOf(window); }
    [[nodiscard]] BigFigures& figures() const { return find<BigFigures>("Label1"); }
    template <class Widget>
    [[nodiscard]] Widget& find(const char* name) const {
        return findIn<Widget>(view(), name);
    }

    void pass(int milliseconds) {
        pump.wait(milliseconds);
        host.clock().tick();
        settle();
    }
    // The mouse takes a corner there in ten moves.
    void drag(QSize to) {
        const QSize from = view().size();
        for (int move = 1; move <= 10; ++move) {
            view().resize(from + (to - from) * move / 10);
            settle();
            pass(kStep);
        }
    }
    void rest() { pass(BigTextView::kRest); }

    core::LiveTable table;
    live::BigTexts bigTexts;
    live::FrmBigText window{machine, table, bigTexts};
    ViewHost host{windows};
};

// 7850 and 3750 twips.
TEST_F(BigTextViewTest, OpensAtItsDesignSize) {
    EXPECT_EQ(view().size(), QSize(523, 250));
    rest();
    EXPECT_EQ(window.Width, 7850);
    EXPECT_EQ(window.Height, 3750);
}

TEST_F(BigTextViewTest, ADragGoesWithTheMouseAndTheShapeFollowsWhenItRests) {
    Sizes sizes(view());
    drag({700, 500});
    EXPECT_EQ(sizes.seen.size(), 10U) << "the program answered with sizes of its own";
    EXPECT_EQ(view().size(), QSize(700, 500));
    EXPECT_EQ(window.Width, 7850) << "the window was told before the drag had ended";
    sizes.seen.clear();
    rest();
    // (10500 - 350) / 3 + 1250 = 4633 twips.
    EXPECT_THAT(sizes.seen, ElementsAre(QSize(700, 308)));
    EXPECT_EQ(window.Width, 10500);
    EXPECT_EQ(window.Height, 4633);
    sizes.seen.clear();
    pass(2000);
    EXPECT_THAT(sizes.seen, IsEmpty());
}

TEST_F(BigTextViewTest, EitherEdgeKeepsTheRatio) {
    for (const QSize to : {QSize(900, 250), QSize(523, 600), QSize(400, 250), QSize(523, 200)}) {
        view().resize(523, 250);
        rest();
        drag(to);
        rest();
        EXPECT_NEAR(window.Label1.Width, 3 * window.Label1.Height, 2) << to.width() << " " << to.height();
        EXPECT_EQ(view().size(), QSize(window.Width / 15, window.Height / 15));
        EXPECT_NEAR(figures().width(), 3 * figures().height(), 4);
    }
}

TEST_F(BigTextViewTest, TheFiguresFollowTheDrag) {
    pass(200);
    for (const QSize to : {QSize(700, 500), QSize(300, 300), QSize(1200, 260)}) {
        view().resize(to);
        settle();
        EXPECT_GE(figures().x(), 0);
        EXPECT_LE(figures().geometry().bottom(), to.height());
        EXPECT_TRUE(QRectF(figures().rect()).contains(figures().inkPlace()));
        EXPECT_GT(figures().fontPixels(),
                  figures().width() / 6 < figures().height() ? figures().width() / 6 : figures().height() / 2);
    }
}

TEST_F(BigTextViewTest, ADisplayThatRefusesTheShapeIsAskedOnce) {
    Stubborn display(view(), {700, 500});
    for (int i = 0; i < 10; ++i) {
        rest();
        rest();
    }
    EXPECT_EQ(display.refusals, 1);
    EXPECT_EQ(view().size(), QSize(700, 500));
    EXPECT_EQ(window.Width, 10500);
    EXPECT_EQ(window.Height, 4633);
}

TEST_F(BigTextViewTest, TheSameDragLaterIsCorrectedAgain) {
    for (int i = 0; i < 2; ++i) {
        view().resize(700, 500);
        settle();
        rest();
        EXPECT_EQ(view().size(), QSize(700, 308)) << i;
        rest();
    }
}

TEST_F(BigTextViewTest, AMaximizedWindowStaysSo) {
    view().showMaximized();
    settle();
    const QSize whole = view().size();
    ASSERT_GT(whole.width(), 523);
    rest();
    rest();
    EXPECT_EQ(view().size(), whole);
    EXPECT_TRUE(view().isMaximized());
    EXPECT_NEAR(window.Label1.Width, 3 * window.Label1.Height, 2);
}

TEST_F(BigTextViewTest, AScriptsSizeIsShown) {
    window.resize(9000, 4000);
    settle();
    EXPECT_EQ(window.Width, 8600);
    EXPECT_EQ(view().size(), QSize(573, 266));
    rest();
    EXPECT_EQ(window.Width, 8600);
}

TEST_F(BigTextViewTest, AWindowThatGoesDuringADragLeavesNothingBehind) {
    view().resize(700, 500);
    EXPECT_TRUE(window.unload());
    rest();
    rest();
    EXPECT_EQ(window.Width, 7850);
}

TEST_F(BigTextViewTest, ShowsTheValueAndItsTitle) {
    pass(200);
    EXPECT_EQ(figures().text(), "850");
    EXPECT_EQ(view().windowTitle(), "RPM  850");
}

TEST_F(BigTextViewTest, AnAlarmIsPaintedRed) {
    const auto redPixels = [this] { return countOf(figures().grab().toImage(), QColor(255, 0, 0)); };
    table.liveValues[0].value = 6001;
    pass(200);
    EXPECT_EQ(redPixels(), 0);
    find<QCheckBox>("Check1").click();
    pass(200);
    EXPECT_GT(redPixels(), 1000);
    table.liveValues[0].value = 6000;
    pass(200);
    EXPECT_EQ(redPixels(), 0);
}

TEST_F(BigTextViewTest, AnotherChannelIsNotKeptSmallByTheOneBefore) {
    table.liveValues[0].value = 14.7265625;
    table.liveValues[1].value = 80;
    pass(200);
    const int small = figures().fontPixels();
    window.Combo1.choose(1);
    pass(200);
    EXPECT_EQ(figures().text(), "80");
    EXPECT_GT(figures().fontPixels(), small * 3 / 2);
}

TEST_F(BigTextViewTest, TabGoesFromTheChannelToTheAlarms) {
    find<QComboBox>("Combo1").setFocus();
    key(*view().focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(view().focusWidget(), &find<QCheckBox>("Check1"));
    key(*view().focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(view().focusWidget(), &find<QComboBox>("Combo1"));
}

TEST_F(BigTextViewTest, ScreenReadersHearTheChannelTheBoxAndTheValue) {
    pass(200);
    EXPECT_EQ(find<QComboBox>("Combo1").accessibleName(), "Channel");
    EXPECT_EQ(find<QCheckBox>("Check1").accessibleName(), "Alarms");
    auto* const heard = QAccessible::queryAccessibleInterface(&figures());
    ASSERT_NE(heard, nullptr);
    EXPECT_EQ(heard->text(QAccessible::Name), "850");
}

TEST_F(BigTextViewTest, TheSmallestWindowHasRoomForAll) {
    view().resize(1, 1);
    settle();
    rest();
    const auto& box = find<QCheckBox>("Check1");
    EXPECT_LE(box.mapTo(&view(), QPoint(box.minimumSizeHint().width(), 0)).x(), view().width());
    EXPECT_GT(figures().height(), 40);
    EXPECT_NEAR(window.Label1.Width, 3 * window.Label1.Height, 2);
}

}  // namespace
}  // namespace korvane::views
