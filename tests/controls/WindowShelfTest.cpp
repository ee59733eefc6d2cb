#include <gmock/gmock.h>

#include "ModelBench.h"
#include "controls/WindowShelf.h"

namespace korvane::controls {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Tells when it is destroyed.
class CountedWindow : public NotingWindow {
public:
    CountedWindow(platform::Machine& machine, int& alive) : NotingWindow(machine, "frmBig"), alive_(alive) { ++alive_; }
    CountedWindow(const CountedWindow&) = delete;
    CountedWindow& operator=(const CountedWindow&) = delete;
    ~CountedWindow() override { --alive_; }

private:
    int& alive_;
};

class WindowShelfTest : public ModelBench {
protected:
    CountedWindow& open() { return shelf_.show(std::make_unique<CountedWindow>(machine_, alive_)); }

    int alive_ = 0;
    WindowShelf shelf_{pump_};
};

TEST_F(WindowShelfTest, ShowsWhatItTakesSeveralOfAKindAtOnce) {
    auto& first = open();
    auto& second = open();
    EXPECT_TRUE(first.Visible);
    EXPECT_THAT(windows_.loaded(), ElementsAre(&first, &second));
}

TEST_F(WindowShelfTest, AnUnloadedWindowGoesAndTheOthersStay) {
    auto& first = open();
    auto& second = open();
    EXPECT_TRUE(first.unload());
    EXPECT_EQ(alive_, 2) << "the call that unloads it may come from its own handler";
    pump_.wait(1000);
    EXPECT_EQ(alive_, 1);
    EXPECT_THAT(windows_.loaded(), ElementsAre(&second));
}

TEST_F(WindowShelfTest, AWindowLivesUntilItsHandlersHaveReturned) {
    auto& window = open();
    window.enter("test", [&] {
        EXPECT_TRUE(window.unload());
        pump_.wait(1000);
        EXPECT_EQ(alive_, 1);
    });
    pump_.wait(1000);
    EXPECT_EQ(alive_, 0);
}

TEST_F(WindowShelfTest, OneThatIsLoadedAgainWhileItsHandlerRunsStays) {
    auto& window = open();
    window.enter("test", [&] {
        EXPECT_TRUE(window.unload());
        pump_.wait(1000);
        window.show();
    });
    pump_.wait(1000);
    EXPECT_EQ(alive_, 1);
    EXPECT_TRUE(window.Visible);
}

TEST_F(WindowShelfTest, TheNewestOpenWindowOfAKindIsFound) {
    EXPECT_EQ(shelf_.open<CountedWindow>(), nullptr);
    auto& first = open();
    auto& second = open();
    shelf_.show(std::make_unique<NotingWindow>(machine_, "frmOther"));
    EXPECT_EQ(shelf_.open<CountedWindow>(), &second);
    EXPECT_TRUE(second.unload());
    EXPECT_EQ(shelf_.open<CountedWindow>(), &first)
        << "one that has been unloaded is not open, though it is still there";
}

TEST_F(WindowShelfTest, OneOfAKindIsMadeOnlyIfNoneIsOpen) {
    shelf_.show(std::make_unique<NotingWindow>(machine_, "frmOther"));
    const auto make = [this] { return std::make_unique<CountedWindow>(machine_, alive_); };
    auto& first = shelf_.one<CountedWindow>(make);
    EXPECT_FALSE(first.isLoaded());
    first.show();
    EXPECT_EQ(&shelf_.one<CountedWindow>(make), &first);
    EXPECT_TRUE(first.unload());
    EXPECT_NE(&shelf_.one<CountedWindow>(make), &first) << "it has been unloaded";
    EXPECT_EQ(alive_, 2);
}

TEST_F(WindowShelfTest, TheUnloadIsToldToWhoAskedBefore) {
    int told = 0;
    auto window = std::make_unique<CountedWindow>(machine_, alive_);
    window->Unloaded = [&] { ++told; };
    auto& shown = shelf_.show(std::move(window));
    EXPECT_TRUE(shown.unload());
    EXPECT_EQ(told, 1);
    pump_.wait(1000);
    EXPECT_EQ(alive_, 0) << "and the shelf deletes it";
}

TEST_F(WindowShelfTest, AllGoButThoseThatRefuse) {
    auto& stays = open();
    stays.refusesToGo = true;
    open();
    shelf_.unloadAll();
    pump_.wait(1000);
    EXPECT_EQ(alive_, 1);
    EXPECT_THAT(windows_.loaded(), ElementsAre(&stays));
}

TEST_F(WindowShelfTest, TheNewestGoesFirst) {
    std::vector<int> order;
    auto& first = open();
    auto& second = open();
    const auto note = [&](CountedWindow& window, int number) {
        window.Unloaded = [&order, number, then = window.Unloaded] {
            order.push_back(number);
            then();
        };
    };
    note(first, 1);
    note(second, 2);
    shelf_.unloadAll();
    EXPECT_THAT(order, ElementsAre(2, 1));
    pump_.wait(1000);
    EXPECT_EQ(alive_, 0);
}

TEST_F(WindowShelfTest, GoesWithItsWindows) {
    {
        WindowShelf shelf(pump_);
        shelf.show(std::make_unique<CountedWindow>(machine_, alive_));
    }
    EXPECT_EQ(alive_, 0);
    EXPECT_THAT(windows_.loaded(), IsEmpty());
}

}  // namespace
}  // namespace korvane::controls
