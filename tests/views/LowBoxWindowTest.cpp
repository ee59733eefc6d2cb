// The windows of the ignition-only box and of the limiter box on a screen of 1920 by 1080 at 200 %: 960 by 540, less
// the panel and the title bar.
#include <QApplication>
#include <QComboBox>
#include <QFontInfo>
#include <QHelpEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QToolTip>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "maps/FrmMaps_QV_ign.h"
#include "views/CutTexts.h"
#include "views/ProgramViews.h"

namespace korvane::views {
namespace {

using testing::IsEmpty;

constexpr QSize kLow{960, 480};

// With live data, whose words make a window wider, and with the badge below its parts.
struct LowBoxWindow : testing::Test, ProgramViews {
    LowBoxWindow() {
        host.setLink(window.linkState, [] {});
    }

    template <class Window = controls::Window>
    Window& open(int swType, QSize size = kLow) {
        tables.SWType = swType;
        window.btnKartat.press();
        opened_ = windows.loaded().back();
        lookAt(*opened_);
        settle();
        resize(size);
        return dynamic_cast<Window&>(*opened_);
    }
    void resize(QSize size) {
        opened_->resize(size.width() * 15, size.height() * 15);
        view().activateWindow();
        frame();
    }
    [[nodiscard]] bool isInView(const char* name) const {
        const QWidget& widget = find(name);
        return widget.isVisible() && widget.visibleRegion().boundingRect() == widget.rect();
    }
    void expectNothingScrolled() const {
        const auto* const scroll = view().findChild<QScrollArea*>();
        EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0);
        EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0);
    }

    controls::Window* opened_ = nullptr;
};

TEST_F(LowBoxWindow, OfTheIgnitionBoxShowsTheMapTheSendButtonsAndTheStatusLine) {
    open(30);
    expectNothingScrolled();
    for (const char* name :
         {"txtIgn", "btnReadIgn", "btnWriteIgn", "btnReadMisc", "btnLoad", "btnHelp", "cellStatus"}) {
        EXPECT_TRUE(isInView(name)) << name;
    }
}

TEST_F(LowBoxWindow, OfTheIgnitionBoxBeginsInTheMap) {
    open(30);
    EXPECT_TRUE(find("txtIgn").hasFocus());
}

TEST_F(LowBoxWindow, OfTheIgnitionBoxHasItsGroupsOnASecondPage) {
    open(30);
    EXPECT_FALSE(find("txtchargetime").isVisible());
    find<QTabBar>("mapPages").setCurrentIndex(1);
    settle();
    expectNothingScrolled();
    EXPECT_THAT(cutTexts(find("FrameLaunch")), IsEmpty());
    for (const char* name : {"FrameIdleAdv", "FrameLaunch", "FrameIgn2", "btnSaveIdleAdv", "btnSaveLaunch",
                             "btnsaveign_2", "btnWriteIgn"}) {
        EXPECT_TRUE(isInView(name)) << name;
    }
    EXPECT_FALSE(find("txtIgn").isVisible());
}

TEST_F(LowBoxWindow, OfTheIgnitionBoxShowsThePageOfWhatGetsTheFocus) {
    auto& box = open<maps::FrmMaps_QV_ign>(30);
    box.setFocus(&box.txtchargetime);
    settle();
    EXPECT_TRUE(isInView("txtchargetime"));
    box.setFocus(&box.ign(17));
    settle();
    EXPECT_TRUE(isInView("txtIgn"));
}

TEST_F(LowBoxWindow, OfTheIgnitionBoxHasTheGroupsSideBySideBelowTheMapWhereThereIsRoom) {
    open(30);
    resize({1340, 690});
    expectNothingScrolled();
    EXPECT_FALSE(find("mapPages").isVisible());
    EXPECT_TRUE(isInView("txtIgn"));
    EXPECT_EQ(find("FrameIdleAdv").y(), find("FrameLaunch").y());
    EXPECT_EQ(find("FrameIgn2").y(), find("FrameLaunch").y());
    // The map has what the groups do not need.
    EXPECT_GT(find("FrameIgn").height(), find("FrameLaunch").height());
}

// Whatever its size, only the right column may be scrolled.
TEST_F(LowBoxWindow, OfTheIgnitionBoxIsNeverScrolledAsAWhole) {
    open(30);
    for (const int width : {960, 1100, 1160, 1340}) {
        for (int height = kLow.height(); height <= 760; height += 40) {
            resize({width, height});
            expectNothingScrolled();
        }
    }
}

TEST_F(LowBoxWindow, OfTheLimiterShowsEverything) {
    open(112, {960, 500});
    expectNothingScrolled();
    EXPECT_THAT(cutTexts(view()), IsEmpty());
    for (const char* name : {"btnSendSettings", "btnHelp", "FrameRpmLimit", "FrameLaunch", "btnSaveLaunch",
                             "FrameInput(0)", "FrameInput(2)", "txtInputFuncVal(2)"}) {
        EXPECT_TRUE(isInView(name)) << name;
    }
}

TEST_F(LowBoxWindow, OfTheLimiterShowsTheLongestChoiceWhole) {
    open(112, {960, 500});
    auto& list = find<QComboBox>("ComboInputFuncLow(5)");
    EXPECT_GE(list.width(), list.sizeHint().width());
    EXPECT_EQ(list.minimumSizeHint().width(), list.sizeHint().width()) << "in a still narrower window too";
}

TEST_F(LowBoxWindow, AChoiceThatIsCutHasItsWholeTextAsAToolTip) {
    open(112, {960, 500});
    auto& list = find<QComboBox>("ComboInputFuncLow(5)");
    const auto tip = [&list] {
        QToolTip::hideText();
        QHelpEvent help(QEvent::ToolTip, QPoint(1, 1), list.mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(&list, &help);
        return QToolTip::text();
    };
    EXPECT_NE(tip(), list.currentText());
    list.setFixedWidth(40);
    EXPECT_EQ(tip(), list.currentText());
}

}  // namespace
}  // namespace korvane::views
