// The window of the line's quality, by real widgets.
#include <QScrollArea>
#include <QScrollBar>

#include <gtest/gtest.h>

#include "doctor/FrmLink.h"
#include "views/ProgramViews.h"

namespace korvane::views {
namespace {

struct LinkViewTest : testing::Test, ProgramViews {
    LinkViewTest() {
        EXPECT_TRUE(window.offerKey('L', controls::kControlMask));
        form = dynamic_cast<doctor::FrmLink*>(windows.loaded().back());
        lookAt(*form);
        view().activateWindow();
        frame();
    }

    doctor::FrmLink* form = nullptr;
};

TEST_F(LinkViewTest, AWindowLowerThanItsPartsScrolls) {
    form->resize(560 * 15, 340 * 15);
    settle();
    EXPECT_EQ(view().height(), 340);
    const auto* const scroll = view().findChild<QScrollArea*>();
    ASSERT_NE(scroll, nullptr);
    EXPECT_GT(scroll->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0);
}

TEST_F(LinkViewTest, InItsOwnSizeAllIsSeen) {
    settle();
    EXPECT_EQ(view().findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0);
}

TEST_F(LinkViewTest, ItsLeastHeightFitsALowScreen) {
    EXPECT_LE(view().minimumSize().expandedTo(view().minimumSizeHint()).height(), 480);
}

TEST_F(LinkViewTest, ThePlotsHaveABlackGround) {
    for (const char* name : {"picRoundTrip", "picFrames", "picFaults"}) {
        auto& plot = find(name);
        EXPECT_EQ(plot.grab().toImage().pixelColor(plot.width() - 2, 1), QColor(Qt::black)) << name;
    }
}

}  // namespace
}  // namespace korvane::views
