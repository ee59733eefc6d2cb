// What the view of the settings window shows beside the controls: marks of boxes, lines, a question.
#include <QAccessible>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolTip>

#include "views/CutTexts.h"
#include "views/MiscViewBench.h"
#include "views/widgets/values/LongLine.h"
#include "views/widgets/values/ValueBox.h"

namespace korvane::views {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

struct MiscMarksTest : testing::Test, MiscViewBench {
    [[nodiscard]] ValueBox& box(const std::string& name) const { return find<ValueBox>(name); }
    void openPort() {
        frmSarn2.MSComm1.Settings = "57600,N,8,1";
        frmSarn2.MSComm1.setPortOpen(true);
    }
    [[nodiscard]] int written() {
        int count = 0;
        for (const auto byte : recorder.takeBytes()) {
            count += byte == 'W' ? 1 : 0;
        }
        return count;
    }
    // A write of 7 to the address, by the mouse.
    [[nodiscard]] int write(const char* button, const char* address) {
        window.TextOs.Text = address;
        window.TextArvo.Text = "7";
        click(find(button));
        pump.wait(200);
        return written();
    }
};

TEST_F(MiscMarksTest, ABoxIsMarkedAsSoonAsItIsTypedInto) {
    window.UpdateReadEE(12, tables.addresses.IDLE_ADV0, false);
    frame();
    EXPECT_EQ(box("txtIdleAdv(0)").mark(), BoxMark::None);
    box("txtIdleAdv(0)").setFocus();
    type(box("txtIdleAdv(0)"), "3");
    EXPECT_EQ(box("txtIdleAdv(0)").mark(), BoxMark::Filled);
    EXPECT_FALSE(box("txtIdleAdv(0)").isZero());
    EXPECT_EQ(box("txtIdleAdv(0)").accessibleDescription(), "Not saved: the ECU last sent 12");
    EXPECT_EQ(box("txtIdleAdv(1)").mark(), BoxMark::None);
}

TEST_F(MiscMarksTest, ATextThatCountsAsZeroIsMarkedWhileItIsTyped) {
    box("txtIdleAdv(2)").setFocus();
    type(box("txtIdleAdv(2)"), "x");
    EXPECT_TRUE(box("txtIdleAdv(2)").isZero());
    key(box("txtIdleAdv(2)"), Qt::Key_Backspace, {}, "\b");
    type(box("txtIdleAdv(2)"), "5");
    EXPECT_FALSE(box("txtIdleAdv(2)").isZero());
}

TEST_F(MiscMarksTest, AMarkIsSeenAndLeavesTheNumberAlone) {
    const auto picture = [this] { return box("txtIdleAdv(0)").grab().toImage(); };
    window.UpdateReadEE(12, tables.addresses.IDLE_ADV0, false);
    frame();
    const QImage plain = picture();
    window.txtIdleAdv(0).Text = "1";
    window.txtIdleAdv(0).Text = "12";
    frame();
    EXPECT_EQ(picture(), plain);
    window.UpdateReadEE(13, tables.addresses.IDLE_ADV0, false);
    window.txtIdleAdv(0).Text = "12";
    frame();
    const QImage marked = picture();
    EXPECT_NE(marked.pixelColor(marked.width() - 4, 3), plain.pixelColor(plain.width() - 4, 3));
    EXPECT_EQ(marked.copy(0, 0, marked.width() / 2, marked.height()),
              plain.copy(0, 0, plain.width() / 2, plain.height()));
}

TEST_F(MiscMarksTest, TheToolTipSaysWhatTheMarkMeans) {
    window.UpdateReadEE(12, tables.addresses.IDLE_ADV0, false);
    window.txtIdleAdv(0).Text = "14";
    frame();
    auto& widget = box("txtIdleAdv(0)");
    const QPoint at = widget.rect().center();
    send(widget, QHelpEvent(QEvent::ToolTip, at, widget.mapToGlobal(at)));
    EXPECT_EQ(QToolTip::text(), "Not saved: the ECU last sent 12");
}

TEST_F(MiscMarksTest, ASteppedBoxKeepsItsOwnDescription) {
    window.UpdateReadEE(50, tables.addresses.CHARGE_TIME_OFF, false);
    window.txtchargetime.keyDown(controls::kKeyPlus, 0);
    frame();
    EXPECT_EQ(box("txtchargetime").accessibleDescription(),
              "changes by the keys + and -. Not saved: the ECU last sent 1");
}

TEST_F(MiscMarksTest, ASaveIsToldBelowThePages) {
    auto& told = find<LongLine>("saveLine");
    EXPECT_EQ(told.words(), "");
    openPort();
    window.btnSaveIdleAdv.press();
    frame();
    EXPECT_EQ(told.words(), "Idle Ignition: 5 values sent; nothing has come back yet");
    EXPECT_EQ(told.text(), told.words());
    EXPECT_EQ(told.accessibleName(), told.words());
    EXPECT_TRUE(told.isVisible());
    EXPECT_THAT(cutTexts(view()), IsEmpty());
}

TEST_F(MiscMarksTest, ALongReportIsCutAndItsToolTipIsWhole) {
    auto& told = find<LongLine>("saveLine");
    told.setWords(QString(500, u'm'));
    EXPECT_LT(told.text().size(), 500);
    EXPECT_EQ(told.toolTip().size(), 500);
}

TEST_F(MiscMarksTest, ThePageSaysThatTheLambdaBoxesAreNotFilled) {
    showTab(4);
    EXPECT_TRUE(find<QLabel>("lambdaLine").isVisible());
    EXPECT_THAT(cutTexts(view()), IsEmpty());
    for (int row = 0; row < 10; ++row) {
        window.setLambdaSetpoint(row, 1);
        window.setLambdaAuthority(row, 2);
    }
    frame();
    EXPECT_FALSE(find<QLabel>("lambdaLine").isVisible());
}

TEST_F(MiscMarksTest, ARawWriteToAnOddAddressIsAskedForOnce) {
    openPort();
    showTab(9);
    for (const char* button : {"Command1", "btnWriteEE16bit"}) {
        dialogs.answerQuestion({false, false});
        EXPECT_EQ(write(button, ""), 0) << button;
        EXPECT_THAT(dialogs.takeQuestions(), SizeIs(1)) << button;
        dialogs.answerQuestion({true, false});
        EXPECT_GT(write(button, ""), 0) << button;
        EXPECT_THAT(dialogs.takeQuestions(), SizeIs(1)) << button;
        dialogs.answerQuestion({false, false});
        EXPECT_EQ(write(button, "3001"), 0) << button;
        EXPECT_THAT(dialogs.takeQuestions(), SizeIs(1)) << button;
        EXPECT_GT(write(button, "16"), 0) << button;
        EXPECT_THAT(dialogs.takeQuestions(), IsEmpty()) << button;
    }
    EXPECT_THAT(dialogs.takeMessages(), IsEmpty());
}

TEST_F(MiscMarksTest, AWriteOfAScriptIsNotAskedFor) {
    openPort();
    window.TextOs.Text = "";
    window.TextArvo.Text = "7";
    window.Command1.press();
    pump.wait(200);
    EXPECT_EQ(written(), 1);
    EXPECT_THAT(dialogs.takeQuestions(), IsEmpty());
}

// What a message calls a box is what stands beside it, or what a screen reader says last of it.
TEST_F(MiscMarksTest, LabelsAreTheNamesThatAreShown) {
    for (const auto* control : window.controls()) {
        const auto* const box = dynamic_cast<const controls::TextBox*>(control);
        if (box != nullptr && !box->label().empty() && box->name() != "txtAccel") {
            const QString spoken = find(box->path()).accessibleName();
            EXPECT_TRUE(spoken.endsWith(QString::fromStdString(box->label()))) << box->path() << spoken.toStdString();
        }
    }
}

TEST_F(MiscMarksTest, TheLineOfASaveIsWholeBesideAVerification) {
    window.saveReport().Text = "Idle Ignition: 5 values sent; 5 came back the same";
    window.verifyReport().Text = "Idle Ignition: verified";
    frame();
    for (const char* name : {"saveLine", "verifyLine"}) {
        const auto& told = find<LongLine>(name);
        EXPECT_TRUE(told.isVisible()) << name;
        EXPECT_EQ(told.text(), told.words()) << name;
    }
}

TEST_F(MiscMarksTest, ATextThatCountsAsAnotherNumberKeepsItsCornerBehindASave) {
    openPort();
    window.UpdateReadEE(5, tables.addresses.IDLE_ADV0, false);
    window.txtIdleAdv(0).Text = "12x";
    window.btnSaveIdleAdv.press();
    frame();
    EXPECT_EQ(box("txtIdleAdv(0)").mark(), BoxMark::Filled);
    EXPECT_EQ(box("txtIdleAdv(0)").accessibleDescription(), "Saved, not read back: the ECU last sent 5. Counts as 12");
}

}  // namespace
}  // namespace korvane::views
