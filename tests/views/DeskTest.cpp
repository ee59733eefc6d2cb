#include <QApplication>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>

#include "views/FormBench.h"
#include "views/frame/Desk.h"
#include "views/frame/FittedView.h"

namespace korvane::views {
namespace {

class TallView : public FittedView {
public:
    TallView(Form& form, FrameClock& clock) : FittedView(form, clock, QSizeF(20, 20)) {
        child<QVBoxLayout>(&content()).addWidget(&part_);
        content().layout()->setContentsMargins(0, 0, 0, 0);
        need({500, 620});
    }
    void need(QSize size) { part_.setMinimumSize(size); }

private:
    QWidget& part_ = child<QWidget>(&content());
};

// The offscreen display has one screen of 800 by 800.
struct DeskTest : testing::Test, FormBench {
    DeskTest() { host.setDesk(&desk); }

    [[nodiscard]] static std::string screens() {
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        return controls::signatureOf(
            std::array{controls::Area{screen.x(), screen.y(), screen.width(), screen.height()}});
    }

    controls::PlaceMemory memory{preferences};
    Desk desk{&memory};
};

TEST_F(DeskTest, AWindowIsNotLargerThanTheScreen) {
    form.Width = 2000 * 15;
    form.Height = 1500 * 15;
    show();
    const QRect screen = view().screen()->availableGeometry();
    EXPECT_TRUE(screen.contains(view().frameGeometry()));
    EXPECT_GE(view().width(), screen.width() - 20);
}

TEST_F(DeskTest, AWindowOpensBesideTheOneItIsOpenedFrom) {
    form.Width = 310 * 15;
    form.Height = 500 * 15;
    show();
    view().move(10, 20);
    Form second(machine);
    second.Width = 310 * 15;
    second.Height = 480 * 15;
    second.show();
    const auto& opened = *host.viewOf(second);
    EXPECT_EQ(opened.size(), QSize(310, 480));
    EXPECT_EQ(opened.frameGeometry().left(), view().frameGeometry().right() + 1);
    EXPECT_EQ(opened.frameGeometry().top(), view().frameGeometry().top());
}

TEST_F(DeskTest, AWindowComesBackWhereItWas) {
    show();
    view().resize(420, 533);
    view().move(111, 77);
    settle();
    EXPECT_TRUE(form.unload());
    show();
    EXPECT_EQ(view().size(), QSize(420, 533));
    EXPECT_EQ(view().frameGeometry().topLeft(), QPoint(111, 77));
}

// Of no window the frame is known yet.
TEST_F(DeskTest, TheTitleOfTheFirstWindowHasRoomOnTheScreen) {
    memory.remember("frmTest", {{0, 0, 420, 533}, false}, screens());
    show();
    EXPECT_GE(view().geometry().top(), QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight));
}

// A window without a frame stands for one whose frame the display has not told yet.
TEST_F(DeskTest, AWindowWhoseFrameIsNotKnownYetKeepsItsTitleOnTheScreen) {
    show();
    const int title = view().geometry().top() - view().frameGeometry().top();
    ASSERT_GT(title, 0);
    Form second(machine);
    second.load();
    auto& opened = *host.viewOf(second);
    opened.setWindowFlag(Qt::FramelessWindowHint);
    second.show();
    opened.move(20, 0);
    ASSERT_EQ(opened.frameGeometry(), opened.geometry());
    desk.fit(opened, opened.size());
    EXPECT_EQ(opened.geometry().topLeft(), QPoint(20, title));
}

TEST_F(DeskTest, AWindowThatIsTooHighForTheScreenIsWiderByItsScrollBar) {
    host.add<TallView, Form>("frmTest");
    show();
    auto& tall = dynamic_cast<TallView&>(view());
    tall.need({520, 900});
    QFont larger = tall.font();
    larger.setPixelSize(QFontInfo(larger).pixelSize() + 3);
    tall.setFont(larger);
    settle();
    EXPECT_EQ(tall.width(), 520 + QApplication::style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    EXPECT_EQ(tall.findChild<QScrollArea*>()->horizontalScrollBar()->maximum(), 0);
}

TEST_F(DeskTest, AHiddenWindowIsRememberedToo) {
    show();
    view().move(111, 77);
    form.Visible = false;
    ASSERT_TRUE(memory.recall("frmTest", screens()).has_value());
    const QPoint inside = view().geometry().topLeft();
    EXPECT_EQ(memory.recall("frmTest", screens())->area, (controls::Area{inside.x(), inside.y(), 400, 600}));
}

TEST_F(DeskTest, AMaximizedWindowComesBackMaximized) {
    show();
    view().showMaximized();
    settle();
    EXPECT_TRUE(form.unload());
    show();
    EXPECT_TRUE(view().isMaximized());
}

TEST_F(DeskTest, APlaceOnOtherScreensIsDropped) {
    memory.remember("frmTest", {{111, 77, 420, 333}, false}, "1920x1080@0,0");
    show();
    EXPECT_EQ(view().size(), QSize(400, 600));
    EXPECT_NE(view().frameGeometry().topLeft(), QPoint(111, 77));
}

TEST_F(DeskTest, WithoutAMemoryNothingIsReadOrWritten) {
    const Desk forgetful{nullptr};
    host.setDesk(&forgetful);
    memory.remember("frmTest", {{111, 77, 420, 333}, false}, screens());
    show();
    EXPECT_EQ(view().size(), QSize(400, 600));
    view().move(5, 5);
    EXPECT_TRUE(form.unload());
    EXPECT_EQ(memory.recall("frmTest", screens())->area.left, 111);
}

TEST_F(DeskTest, WithoutADeskAWindowHasItsOwnSize) {
    host.setDesk(nullptr);
    form.Width = 2000 * 15;
    show();
    EXPECT_EQ(view().width(), 2000);
}

TEST_F(DeskTest, AWindowIsLargeEnoughForItsParts) {
    host.add<TallView, Form>("frmTest");
    show();
    EXPECT_EQ(view().size(), QSize(500, 620));
    EXPECT_EQ(form.Width, 500 * 15);
}

TEST_F(DeskTest, AWindowGrowsWithTheSystemsFont) {
    host.add<TallView, Form>("frmTest");
    show();
    auto& tall = dynamic_cast<TallView&>(view());
    view().move(view().screen()->availableGeometry().topLeft());
    tall.need({520, 640});
    QFont larger = tall.font();
    larger.setPixelSize(QFontInfo(larger).pixelSize() + 3);
    tall.setFont(larger);
    settle();
    EXPECT_EQ(view().size(), QSize(520, 640));
}

}  // namespace
}  // namespace korvane::views
