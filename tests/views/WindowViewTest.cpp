#include "views/FormBench.h"

namespace korvane::views {
namespace {

using testing::ElementsAre;

struct WindowViewTest : testing::Test, FormBench {
    WindowViewTest() { show(); }
};

TEST_F(WindowViewTest, TitleAndVisibilityFollowTheWindow) {
    form.Caption = "Korvane";
    EXPECT_EQ(view().windowTitle(), "Korvane");
    EXPECT_TRUE(view().isVisible());
    form.Visible = false;
    EXPECT_FALSE(view().isVisible());
}

TEST_F(WindowViewTest, ALogicalPixelIsFifteenTwips) {
    EXPECT_EQ(view().size(), QSize(400, 600));
    form.Width = 500 * 15 + 7;
    EXPECT_EQ(view().width(), 500);
    EXPECT_EQ(form.Width, 500 * 15 + 7);
}

TEST_F(WindowViewTest, TheUsersSizeReachesTheWindow) {
    form.resizes = 0;
    view().resize(640, 700);
    settle();
    EXPECT_EQ(form.Width, 640 * 15);
    EXPECT_EQ(form.Height, 700 * 15);
    EXPECT_EQ(form.resizes, 1);
}

// Neither the new width with the old height nor any other size in between.
TEST_F(WindowViewTest, TheUsersSizeComesBackFromTheWindowUnchanged) {
    class Sizes : public QObject {
    public:
        std::vector<QSize> seen;

    protected:
        bool eventFilter(QObject* watched, QEvent* event) override {
            if (event->type() == QEvent::Resize) {
                seen.push_back(dynamic_cast<QWidget&>(*watched).size());
            }
            return false;
        }
    } sizes;
    view().installEventFilter(&sizes);
    view().resize(640, 700);
    settle();
    EXPECT_THAT(sizes.seen, ElementsAre(QSize(640, 700)));
}

TEST_F(WindowViewTest, AMaximizedViewKeepsItsSize) {
    view().showMaximized();
    settle();
    const QSize whole = view().size();
    form.Width = 500 * 15;
    settle();
    EXPECT_EQ(view().size(), whole);
}

TEST_F(WindowViewTest, AFlashIsSeenWithoutAFrame) {
    form.BackColor = controls::kRed;
    const QColor flash = view().grab().toImage().pixelColor(2, 2);
    EXPECT_EQ(flash, QColor(255, 0, 0));
    form.BackColor = controls::kButtonFace;
    const QColor usual = view().grab().toImage().pixelColor(2, 2);
    EXPECT_EQ(usual, QPalette().color(QPalette::Window));
}

TEST_F(WindowViewTest, TheCloseBoxUnloads) {
    view().close();
    EXPECT_FALSE(form.isLoaded());
    EXPECT_EQ(host.viewOf(form), nullptr);
}

TEST_F(WindowViewTest, AWindowThatRefusesToGoStaysOnTheScreen) {
    form.stays = true;
    EXPECT_FALSE(view().close());
    EXPECT_TRUE(form.isLoaded());
    EXPECT_TRUE(view().isVisible());
}

TEST_F(WindowViewTest, AKeyWithoutAFocusedControlReachesTheWindow) {
    form.setFocus(nullptr);
    key(view(), Qt::Key_F1);
    EXPECT_THAT(form.formKeys, ElementsAre(112));
}

TEST_F(WindowViewTest, AWindowClosedInItsOwnHandlerDisappearsAndNothingBreaks) {
    form.btnPress.Click = [this] {
        EXPECT_TRUE(form.unload());
        settle();
        form.lblLive.Caption = "gone";
    };
    click(find("btnPress"));
    EXPECT_EQ(host.viewOf(form), nullptr);
    settle();
    form.show();
    EXPECT_EQ(find<Readout>("lblLive").text(), "gone");
}

TEST_F(WindowViewTest, AWindowClosedByAKeyInItsOwnHandlerDisappearsAndNothingBreaks) {
    find("txtCell(17)").setFocus();
    form.txtCell.KeyDown = [this](int, int) { EXPECT_TRUE(form.unload()); };
    keyDown(find("txtCell(17)"), Qt::Key_A, {}, "a");
    EXPECT_EQ(host.viewOf(form), nullptr);
    EXPECT_EQ(form.txtCell.Text.get(), "");
}

TEST_F(WindowViewTest, AWindowComesBackWithAViewOfItsOwn) {
    form.btnPress.Caption = "Again";
    EXPECT_TRUE(form.unload());
    show();
    EXPECT_EQ(find<QPushButton>("btnPress").accessibleName(), "Again");
}

}  // namespace
}  // namespace korvane::views
