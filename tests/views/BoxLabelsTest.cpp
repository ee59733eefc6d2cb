// What messages call the boxes of the ignition boxes' windows is what stands beside them, and no two boxes of a group
// are called the same.
#include <QWidget>

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "fields/Fields.h"
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
                const auto label = QString::fromStdString(control->label());
                EXPECT_TRUE(widget->accessibleName().endsWith(label) || widget->accessibleDescription() == label)
                    << control->path() << widget->accessibleName().toStdString();
                ++labels;
            }
        }
        EXPECT_EQ(labels, expected);
    }
    static void expectDifferentNames(const controls::Window& opened) {
        std::multiset<std::string> names;
        for (const auto* control : opened.controls()) {
            if (!control->label().empty()) {
                names.insert(fields::calledName(*control) + " in " + fields::titleOf(control->container()));
            }
        }
        const auto twice = std::adjacent_find(names.begin(), names.end());
        EXPECT_TRUE(twice == names.end()) << *twice;
    }
};

TEST_F(BoxLabelsTest, OfTheLimiterAreThoseThatAreShown) {
    expectLabels(open(window.Command7), 6 + 2 + 2 * 4 + 4 * 3);
}

TEST_F(BoxLabelsTest, OfTheIgnitionBoxAreThoseThatAreShown) {
    tables.SWType = 32;
    expectLabels(open(window.btnKartat), 6 + 5 + 1);
}

TEST_F(BoxLabelsTest, DifferWithinAGroup) {
    expectDifferentNames(open(window.Command7));
    expectDifferentNames(open(window.btnAsetukset));
    tables.SWType = 32;
    expectDifferentNames(open(window.btnKartat));
}

// Both have the same name beside them, in one group.
TEST_F(BoxLabelsTest, TellThePreLimitsApart) {
    auto& limiter = open(window.Command7);
    for (const auto& [control, limit] :
         {std::pair("txtrpmlimitLOWpre", "Launch RPM limit"), std::pair("txtrpmlimitHIGHpre", "RPM limit")}) {
        const auto& box = findIn<QWidget>(*host.viewOf(limiter), control);
        EXPECT_EQ(box.accessibleName(), "Pre limit");
        EXPECT_EQ(box.accessibleDescription().toStdString(), std::string("Pre limit (") + limit + ")");
    }
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
