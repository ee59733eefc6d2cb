#include <array>
#include <gmock/gmock.h>

#include "ModelBench.h"

namespace korvane::controls {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowTest : public ModelBench {};

TEST_F(WindowTest, IsNeitherLoadedNorVisibleAtFirst) {
    EXPECT_FALSE(window_.isLoaded());
    EXPECT_FALSE(window_.Visible);
    EXPECT_THAT(windows_.loaded(), IsEmpty());
    EXPECT_THAT(window_.events, IsEmpty());
}

TEST_F(WindowTest, LoadsOnceAndStaysHidden) {
    window_.load();
    window_.load();
    EXPECT_THAT(window_.events, ElementsAre("load"));
    EXPECT_TRUE(window_.isLoaded());
    EXPECT_FALSE(window_.Visible);
    EXPECT_THAT(windows_.loaded(), ElementsAre(&window_));
}

TEST_F(WindowTest, ShowingLoadsItFirst) {
    window_.show();
    window_.show();
    EXPECT_THAT(window_.events, ElementsAre("load"));
    EXPECT_TRUE(window_.Visible);
}

TEST_F(WindowTest, IsToldOnceAfterEachLoadThatItCanBeSeen) {
    struct Shown : Window {
        using Window::Window;
        void Form_Shown() override { seen.push_back(Visible); }
        std::vector<bool> seen;
    };
    Shown shown{virtual_.machine, "frmShown"};
    shown.show();
    shown.show();
    EXPECT_EQ(shown.seen, std::vector<bool>{true});
    shown.unload();
    shown.load();
    EXPECT_EQ(shown.seen.size(), 1U);
    shown.show();
    EXPECT_EQ(shown.seen, (std::vector<bool>{true, true}));
}

TEST_F(WindowTest, UnloadingHidesItAndForgetsTheFocus) {
    TextBox box(window_, "txtTest");
    window_.show();
    window_.setFocus(&box);
    EXPECT_TRUE(window_.unload());
    EXPECT_FALSE(window_.isLoaded());
    EXPECT_FALSE(window_.Visible);
    EXPECT_EQ(window_.activeControl(), nullptr);
    EXPECT_THAT(windows_.loaded(), IsEmpty());
    EXPECT_THAT(window_.events, ElementsAre("load", "unload"));
}

TEST_F(WindowTest, MayRefuseToGo) {
    window_.show();
    window_.refusesToGo = true;
    EXPECT_FALSE(window_.unload());
    EXPECT_TRUE(window_.isLoaded());
    EXPECT_TRUE(window_.Visible);
    window_.refusesToGo = false;
    EXPECT_TRUE(window_.unload());
}

TEST_F(WindowTest, OneThatHidesStaysLoadedUntilItLeaves) {
    window_.hideOnClose();
    window_.show();
    EXPECT_FALSE(window_.unload());
    EXPECT_TRUE(window_.isLoaded());
    EXPECT_FALSE(window_.Visible);
    EXPECT_THAT(window_.events, ElementsAre("load"));
    window_.leave();
    EXPECT_FALSE(window_.isLoaded());
    EXPECT_THAT(window_.events, ElementsAre("load", "unload"));
}

TEST_F(WindowTest, ArrangesItsControlsByNameAndKeepsTheRestBehind) {
    TextBox other(window_, "txtOther");
    ControlArray<TextBox> boxes(window_, "txtBox", 2);
    TextBox first(window_, "txtFirst");
    window_.arrange(std::array<std::string_view, 3>{"txtFirst", "txtMissing", "txtBox"});
    EXPECT_THAT(window_.controls(), ElementsAre(&first, &boxes(0), &boxes(1), &other));
}

TEST_F(WindowTest, ItsOwnerLearnsWhenItHasBeenUnloaded) {
    std::vector<bool> loaded;
    window_.Unloaded = [&] { loaded.push_back(window_.isLoaded()); };
    window_.show();
    window_.refusesToGo = true;
    EXPECT_FALSE(window_.unload());
    EXPECT_THAT(loaded, IsEmpty());
    window_.refusesToGo = false;
    EXPECT_TRUE(window_.unload());
    EXPECT_THAT(loaded, ElementsAre(false));
}

TEST_F(WindowTest, UnloadingOneThatIsNotLoadedDoesNothing) {
    EXPECT_TRUE(window_.unload());
    EXPECT_THAT(window_.events, IsEmpty());
}

TEST_F(WindowTest, LoadsAgainAfterItsUnload) {
    window_.show();
    EXPECT_TRUE(window_.unload());
    window_.show();
    EXPECT_THAT(window_.events, ElementsAre("load", "unload", "load"));
    EXPECT_TRUE(window_.Visible);
}

TEST_F(WindowTest, AFailingLoadIsLoggedAndTheWindowIsThere) {
    window_.failsToLoad = true;
    EXPECT_NO_THROW(window_.show());
    EXPECT_THAT(log_.lines, ElementsAre("frmTest.frmTest: Overflow"));
    EXPECT_TRUE(window_.isLoaded());
}

TEST_F(WindowTest, TheDoorLogsOneLineForEachFailure) {
    window_.enter("txtFuel", [] { throw platform::RuntimeError(platform::kErrorSubscript, "Subscript out of range"); });
    EXPECT_THAT(log_.lines, ElementsAre("frmTest.txtFuel: Subscript out of range"));
    EXPECT_FALSE(window_.isBusy());
    window_.enter("txtFuel", [] {});
    EXPECT_EQ(log_.lines.size(), 1U);
}

TEST_F(WindowTest, IsBusyUntilTheOuterHandlerEnds) {
    window_.enter("outer", [&] {
        window_.enter("inner", [] { throw platform::RuntimeError(platform::kErrorOverflow, "Overflow"); });
        EXPECT_TRUE(window_.isBusy());
    });
    EXPECT_FALSE(window_.isBusy());
}

TEST_F(WindowTest, AResizeSetsBothSizesAndThenTellsOnce) {
    window_.resize(3000, 2000);
    EXPECT_THAT(window_.events, ElementsAre("resize 3000 2000"));
}

TEST_F(WindowTest, LoadedOnesStandInTheirOrder) {
    NotingWindow second(machine_, "frmSecond");
    second.load();
    window_.load();
    EXPECT_THAT(windows_.loaded(), ElementsAre(&second, &window_));
}

TEST_F(WindowTest, AnAssignedSizeOfALoadedWindowSetsOffTheResizeEvent) {
    window_.Width = 3000;
    window_.load();
    window_.events.clear();
    window_.Width = 4000;
    window_.Height = 2000;
    window_.Height = 2000;
    EXPECT_THAT(window_.events, ElementsAre("resize 4000 0", "resize 4000 2000"));
}

TEST_F(WindowTest, ASizeAssignedInTheResizeEventSetsOffNoOther) {
    class Square : public NotingWindow {
    public:
        using NotingWindow::NotingWindow;

    protected:
        void Form_Resize() override {
            NotingWindow::Form_Resize();
            Height = Width;
        }
    };
    Square square(machine_, "frmSquare");
    square.load();
    square.events.clear();
    square.resize(3000, 2000);
    square.Width = 5000;
    EXPECT_THAT(square.events, ElementsAre("resize 3000 2000", "resize 5000 3000"));
    EXPECT_EQ(square.Height, 5000);
}

TEST_F(WindowTest, OneThatGoesAwayIsNoLongerLoaded) {
    {
        NotingWindow second(machine_, "frmSecond");
        second.load();
    }
    EXPECT_THAT(windows_.loaded(), IsEmpty());
}

TEST_F(WindowTest, TheListenerHearsOfLoadsAndUnloads) {
    class Listening : public WindowListener {
    public:
        void windowLoaded(Window& window) override { heard.push_back("+" + std::string(window.name())); }
        void windowUnloaded(Window& window) override { heard.push_back("-" + std::string(window.name())); }
        std::vector<std::string> heard;
    };
    Listening listening;
    windows_.setListener(&listening);
    window_.show();
    EXPECT_TRUE(window_.unload());
    windows_.setListener(nullptr);
    EXPECT_THAT(listening.heard, ElementsAre("+frmTest", "-frmTest"));
}

}  // namespace
}  // namespace korvane::controls
