// What messages call the boxes of the ignition boxes' windows is what stands beside them.
#include <QWidget>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "views/ProgramViews.h"

namespace korvane::views {
namespace {

using testing::HasSubstr;

struct BoxLabelsTest : testing::Test, ProgramViews {
    [[nodiscard]] controls::Window& open(controls::CommandButton& button) {
        button.press();
        settle();
        return *windows.loaded().back();
    }
    void expectLabels(controls::Window& opened, int expected) {
        int labels = 0;
        for (const auto* control : opened.controls()) {
            const auto* const widget =
                host.viewOf(opened)->findChild<QWidget*>(QString::fromStdString(control->path()));
            if (widget != nullptr && !control->label().empty()) {
                EXPECT_TRUE(widget->accessibleName().endsWith(QString::fromStdString(control->label())))
                    << control->path() << widget->accessibleName().toStdString();
                ++labels;
            }
        }
        EXPECT_EQ(labels, expected);
    }
};

TEST_F(BoxLabelsTest, OfTheLimiterAreThoseThatAreShown) {
    expectLabels(open(window.Command7), 6 + 2 + 2 * 4 + 4 * 3);
}

TEST_F(BoxLabelsTest, OfTheIgnitionBoxAreThoseThatAreShown) {
    tables.SWType = 32;
    expectLabels(open(window.btnKartat), 6 + 5 + 1);
}

TEST_F(BoxLabelsTest, AreWhatAMessageNames) {
    auto& limiter = dynamic_cast<maps::FrmMaps_ign_limiter&>(open(window.Command7));
    limiter.txtCylCount.Text = "70000";
    limiter.btnSendSettings.press();
    pump.wait(1000);
    const auto messages = dialogs.takeMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_THAT(messages[0].text, HasSubstr("Cylinder count in "));
}

}  // namespace
}  // namespace korvane::views
