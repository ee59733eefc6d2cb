// The window that tests a port and the button that opens it, by real widgets.
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

#include <gtest/gtest.h>

#include "doctor/FrmDoctor.h"
#include "views/ProgramViews.h"
#include "views/widgets/TextList.h"

namespace korvane::views {
namespace {

struct DoctorViewTest : testing::Test, ProgramViews {
    doctor::FrmDoctor& open() {
        window.portDoubt.test();
        auto& test = dynamic_cast<doctor::FrmDoctor&>(*windows.loaded().back());
        lookAt(test);
        pump.wait(1500);
        frame();
        return test;
    }
};

TEST_F(DoctorViewTest, TheButtonIsBesideConnectWhileThereIsAReason) {
    lookAt(window);
    frame();
    auto& button = find<QToolButton>("testPort");
    EXPECT_TRUE(button.isHidden());
    window.portDoubt.connectFailed();
    frame();
    EXPECT_FALSE(button.isHidden());
    button.click();
    EXPECT_EQ(windows.loaded().back()->name(), "frmDoctor");
}

TEST_F(DoctorViewTest, TheWindowShowsWhatWasFound) {
    open();
    EXPECT_EQ(find<TextList>("lstFindings").rowCount(), 2);
    EXPECT_EQ(find<QLabel>("lblVerdict").text(), "Nothing has been sent so far.");
    EXPECT_TRUE(find<QPushButton>("btnAsk").isEnabled());
}

TEST_F(DoctorViewTest, OnlyALongSentenceTakesSeveralLines) {
    auto& test = open();
    auto& list = find<TextList>("lstFindings");
    test.lstFindings.AddItem("Hint: " + std::string(40, 'w') + " " + std::string(40, 'w') + " " + std::string(40, 'w'));
    view().resize(view().minimumSize());
    frame();
    const auto heightOf = [&](int row) { return list.visualRect(list.model()->index(row, 0)).height(); };
    EXPECT_GT(heightOf(2), heightOf(1));
    EXPECT_LT(heightOf(1), 2 * list.fontMetrics().lineSpacing());
}

TEST_F(DoctorViewTest, APressAsksAtEachSpeed) {
    open();
    find<QPushButton>("btnAsk").click();
    frame();
    EXPECT_FALSE(find<QPushButton>("btnAsk").isEnabled());
    pump.wait(4000);
    frame();
    EXPECT_EQ(find<TextList>("lstSpeeds").rowCount(), 7);
}

}  // namespace
}  // namespace korvane::views
