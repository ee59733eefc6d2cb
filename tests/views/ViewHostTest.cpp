#include <QEventLoop>
#include <QImage>
#include <QPointer>
#include <QTimer>

#include "views/FormBench.h"
#include "views/widgets/Icons.h"

namespace korvane::views {
namespace {

// Runs `action` as an event of a running event loop, and the loop until what the action set off has run as well.
template <class Action>
void runInLoop(Action action) {
    QEventLoop loop;
    QTimer::singleShot(0, &loop, action);
    QTimer::singleShot(1, &loop, &QEventLoop::quit);
    loop.exec();
}

struct ViewHostTest : testing::Test, FormBench {};

TEST_F(ViewHostTest, AWindowLoadedHiddenHasAViewThatIsNotSeen) {
    form.load();
    ASSERT_NE(host.viewOf(form), nullptr);
    EXPECT_FALSE(view().isVisible());
}

TEST_F(ViewHostTest, AWindowLoadedBeforeItsViewWasKnownGetsItThen) {
    controls::WindowList list;
    platform::Machine other{pump, line, dialogs, preferences, log, list, folder.path(), '.', {}};
    Form early(other);
    early.show();
    ViewHost late(list);
    EXPECT_EQ(late.viewOf(early), nullptr);
    late.add<FormView, Form>("frmTest");
    ASSERT_NE(late.viewOf(early), nullptr);
    EXPECT_TRUE(late.viewOf(early)->isVisible());
}

TEST_F(ViewHostTest, EachWindowBearsTheProgramsIcon) {
    form.load();
    const QImage icon = view().windowIcon().pixmap(32).toImage();
    ASSERT_FALSE(icon.isNull());
    EXPECT_EQ(icon, programIcon().pixmap(32).toImage());
}

TEST_F(ViewHostTest, AWindowThatNoFactoryKnowsHasNoView) {
    controls::Window plain(machine, "frmPlain");
    plain.show();
    EXPECT_EQ(host.viewOf(plain), nullptr);
    EXPECT_EQ(host.screenshot("frmPlain", folder / "plain.png"), "frmPlain has no picture");
}

TEST_F(ViewHostTest, AWindowThatDiesLoadedTakesItsViewAlong) {
    auto dying = std::make_unique<Form>(machine);
    dying->show();
    settle();
    const auto* const address = dying.get();
    dying.reset();
    EXPECT_EQ(host.viewOf(*address), nullptr);
    settle();
}

TEST_F(ViewHostTest, AViewGoesWhenItsWindowIsUnloaded) {
    show();
    const QPointer<QWidget> gone = &view();
    runInLoop([&] {
        EXPECT_TRUE(form.unload());
        EXPECT_FALSE(gone->isVisible());
    });
    EXPECT_TRUE(gone.isNull());
}

// The handler waits inside the press of the button, and events of all kinds run meanwhile.
TEST_F(ViewHostTest, AViewLivesUntilTheHandlerThatItHasCalledReturns) {
    show();
    const QPointer<QWidget> leaving = &view();
    bool survived = false;
    form.btnPress.Click = [&] {
        runInLoop([&] { EXPECT_TRUE(form.unload()); });
        runInLoop([] {});
        survived = !leaving.isNull();
    };
    runInLoop([&] { click(find("btnPress")); });
    EXPECT_TRUE(survived);
    runInLoop([] {});
    EXPECT_TRUE(leaving.isNull());
}

TEST_F(ViewHostTest, AWindowThatIsLoadedAgainHasANewView) {
    show();
    const QPointer<QWidget> old = &view();
    runInLoop([&] {
        EXPECT_TRUE(form.unload());
        form.show();
    });
    EXPECT_TRUE(old.isNull());
    ASSERT_NE(host.viewOf(form), nullptr);
    EXPECT_TRUE(view().isVisible());
}

TEST_F(ViewHostTest, APictureShowsWhatHasChangedSinceTheLastFrame) {
    show();
    form.imgLamp.Shown = controls::Picture::Green;
    ASSERT_EQ(host.screenshot("frmTest", folder / "form.png"), "");
    const QImage picture(QString::fromStdString((folder / "form.png").string()));
    ASSERT_EQ(picture.size(), QSize(400, 600));
    const auto& lamp = find("imgLamp");
    const QColor middle = picture.pixelColor(lamp.mapTo(&view(), lamp.rect().center()));
    EXPECT_GT(middle.green(), middle.red() + 80);
}

TEST_F(ViewHostTest, AHiddenWindowHasAPictureToo) {
    form.load();
    EXPECT_EQ(host.screenshot(form, folder / "hidden.png"), "");
    EXPECT_EQ(QImage(QString::fromStdString((folder / "hidden.png").string())).size(), QSize(400, 600));
}

TEST_F(ViewHostTest, TheSecondWindowOfANameHasItsNumber) {
    Form second(machine);
    second.Width = 200 * 15;
    second.Height = 300 * 15;
    show();
    second.show();
    ASSERT_EQ(host.screenshot("frmTest#2", folder / "second.png"), "");
    const QSize size = QImage(QString::fromStdString((folder / "second.png").string())).size();
    EXPECT_EQ(size, host.viewOf(second)->size());
    EXPECT_EQ(host.screenshot("frmTest#3", folder / "third.png"), "no window frmTest#3 is loaded");
}

TEST_F(ViewHostTest, AFileThatCannotBeWrittenIsNamed) {
    show();
    const auto file = folder / "no/such/folder.png";
    EXPECT_EQ(host.screenshot(form, file), file.string() + " can't be written");
}

}  // namespace
}  // namespace korvane::views
