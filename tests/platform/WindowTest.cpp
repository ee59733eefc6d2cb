#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "platform/Bench.h"
#include "platform/Controls.h"

namespace korvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Notes its events; refuses to go while `stays`.
class NotingWindow : public Window {
public:
    using Window::Window;

    bool stays = false;
    bool fails = false;
    std::vector<std::string> notes;

protected:
    void Form_Load() override { note("load"); }
    bool Form_Unload() override {
        note("unload");
        return !stays;
    }

private:
    void note(const char* what) {
        notes.emplace_back(what);
        if (fails) {
            throw RuntimeError(kErrorOverflow, "Overflow");
        }
    }
};

class Watcher : public Observer, public WindowListener {
public:
    void propertyChanged(Object&, const void* property) override { changes.push_back(property); }
    void windowLoaded(Window& window) override { notes.push_back("+" + std::string(window.name())); }
    void windowUnloaded(Window& window) override { notes.push_back("-" + std::string(window.name())); }

    std::vector<const void*> changes;
    std::vector<std::string> notes;
};

class WindowTest : public Bench {
protected:
    NotingWindow noting{machine, "frmNoting"};
    Watcher watcher;
};

TEST_F(WindowTest, LoadsOnceAndShowingLoadsIt) {
    windows.setListener(&watcher);
    noting.show();
    noting.load();
    noting.show();
    EXPECT_THAT(noting.notes, ElementsAre("load"));
    EXPECT_THAT(watcher.notes, ElementsAre("+frmNoting"));
    EXPECT_TRUE(noting.Visible);
    EXPECT_THAT(windows.loaded(), ElementsAre(&noting));
}

TEST_F(WindowTest, StaysIfItsUnloadEventRefuses) {
    windows.setListener(&watcher);
    noting.show();
    noting.stays = true;
    EXPECT_FALSE(noting.unload());
    EXPECT_TRUE(noting.isLoaded());
    EXPECT_TRUE(noting.Visible);
    noting.stays = false;
    EXPECT_TRUE(noting.unload());
    EXPECT_FALSE(noting.Visible);
    EXPECT_THAT(watcher.notes, ElementsAre("+frmNoting", "-frmNoting"));
}

TEST_F(WindowTest, FailuresOfItsEventsEndInTheLog) {
    noting.fails = true;
    noting.show();
    EXPECT_TRUE(noting.isLoaded());
    EXPECT_TRUE(noting.unload());
    EXPECT_THAT(log.lines, ElementsAre("frmNoting.frmNoting: Overflow", "frmNoting.frmNoting: Overflow"));
}

TEST_F(WindowTest, IsBusyWhileAHandlerRunsAndNoLongerAfterAFailure) {
    CommandButton button(window, "btnOne");
    bool busy = false;
    button.Click = [&] {
        busy = window.isBusy();
        throw std::out_of_range("no such element");
    };
    button.press();
    EXPECT_TRUE(busy);
    EXPECT_FALSE(window.isBusy());
    EXPECT_THAT(log.lines, ElementsAre("frmTest.btnOne: no such element"));
}

TEST_F(WindowTest, AnEqualValueTellsNobody) {
    window.addObserver(watcher);
    window.Caption = "one";
    window.Caption = std::string("one");
    window.Caption = "two";
    EXPECT_THAT(watcher.changes, ElementsAre(&window.Caption, &window.Caption));
    window.removeObserver(watcher);
    window.Caption = "three";
    EXPECT_EQ(watcher.changes.size(), 2U);
}

class FocusTest : public WindowTest {
protected:
    FocusTest() {
        window.show();
        for (auto* button : {&one, &two}) {
            button->GotFocus = [this, button] { notes.push_back("got " + button->path()); };
            button->LostFocus = [this, button] { notes.push_back("lost " + button->path()); };
        }
        inner.setContainer(&frame);
    }

    CommandButton one{window, "one"};
    CommandButton two{window, "two"};
    Frame frame{window, "frame"};
    CommandButton inner{window, "inner"};
    Label label{window, "label"};
    std::vector<std::string> notes;
};

TEST_F(FocusTest, MovesFromTheOldControlToTheNew) {
    window.setFocus(&one);
    window.setFocus(&one);
    window.setFocus(&two);
    window.setFocus(nullptr);
    EXPECT_THAT(notes, ElementsAre("got one", "lost one", "got two", "lost two"));
    EXPECT_EQ(window.activeControl(), nullptr);
}

TEST_F(FocusTest, GoesToNoControlThatIsDisabledOutOfSightOrCannotTakeIt) {
    window.setFocus(&one);
    two.Enabled = false;
    frame.Visible = false;
    for (Control* control : std::initializer_list<Control*>{&two, &inner, &label}) {
        window.setFocus(control);
        EXPECT_EQ(window.activeControl(), &one);
    }
    frame.Visible = true;
    frame.Enabled = false;
    window.setFocus(&inner);
    EXPECT_EQ(window.activeControl(), &one);
    frame.Enabled = true;
    frame.Left = -3001;
    window.setFocus(&inner);
    EXPECT_EQ(window.activeControl(), &one);
    frame.Left = -3000;
    window.setFocus(&inner);
    EXPECT_EQ(window.activeControl(), &inner);
}

TEST_F(FocusTest, AControlThatIsDestroyedTakesItAlong) {
    {
        CommandButton gone(window, "gone");
        window.setFocus(&gone);
        EXPECT_EQ(window.activeControl(), &gone);
    }
    EXPECT_EQ(window.activeControl(), nullptr);
}

TEST_F(FocusTest, AHandlerThatMovesItOnIsTheOneThatCounts) {
    two.GotFocus = [] {};
    one.LostFocus = [this] { window.setFocus(&inner); };
    window.setFocus(&one);
    notes.clear();
    two.GotFocus = [this] { notes.emplace_back("got two"); };
    window.setFocus(&two);
    EXPECT_EQ(window.activeControl(), &inner);
    EXPECT_THAT(notes, IsEmpty());
}

class ControlsTest : public Bench {};

TEST_F(ControlsTest, ACheckBoxClicksWhenItsValueChanges) {
    CheckBox box(window, "chk");
    int clicks = 0;
    box.Click = [&] { ++clicks; };
    box.Value = 1;
    box.Value = 1;
    EXPECT_EQ(clicks, 1);
    box.press();
    EXPECT_EQ(box.Value.get(), 0);
    EXPECT_EQ(clicks, 2);
}

TEST_F(ControlsTest, AListClicksWhenAnotherRowIsPicked) {
    ComboBox list(window, "Combo");
    int clicks = 0;
    list.Click = [&] { ++clicks; };
    list.AddItem("one");
    list.AddItem("two");
    EXPECT_EQ(list.Text(), "");
    EXPECT_EQ(clicks, 0);
    list.choose(1);
    list.choose(1);
    EXPECT_EQ(list.Text(), "two");
    EXPECT_EQ(clicks, 1);
    EXPECT_THROW(list.choose(2), RuntimeError);
    EXPECT_THROW(list.choose(-1), RuntimeError);
    EXPECT_EQ(list.ListIndex.get(), 1);
}

TEST_F(ControlsTest, AnArrayHasItsElementsAndNoOthers) {
    ControlArray<Label> labels(window, "lblValue", 12);
    labels(11).Caption = "last";
    EXPECT_EQ(labels(11).path(), "lblValue(11)");
    EXPECT_THROW(labels(12), RuntimeError);
    EXPECT_THROW(labels(-1), RuntimeError);
}

TEST_F(ControlsTest, MessageBoxesAndFileDialogsAreRecordedAndAnswered) {
    dialogs.answerFile("/tmp/one.txt");
    EXPECT_EQ(dialogs.choose({FileDialog::Kind::Save, "Save", "All Files (*.txt)|*.txt"}), "/tmp/one.txt");
    EXPECT_EQ(dialogs.choose({}), "");
    EXPECT_EQ(dialogs.takeFileDialogs().size(), 2U);
    dialogs.show({"Virhe", "text", MessageIcon::Exclamation});
    EXPECT_EQ(dialogs.takeMessages().size(), 1U);
    EXPECT_THAT(dialogs.takeMessages(), IsEmpty());
}

}  // namespace
}  // namespace korvane::platform
