#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>

#include "views/CutTexts.h"
#include "views/MiscViewBench.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {
namespace {

using testing::IsEmpty;
using testing::IsSupersetOf;

struct MiscViewTest : testing::Test, MiscViewBench {
    [[nodiscard]] static bool isShown(const controls::Control& control) { return control.kind() != "timer"; }
    // A label's own texts, page by page or all.
    [[nodiscard]] std::vector<std::string> labels(const QWidget& inside) const {
        std::vector<std::string> texts;
        for (const auto* label : inside.findChildren<QLabel*>()) {
            texts.push_back(label->text().toStdString());
        }
        return texts;
    }
    [[nodiscard]] QWidget& page(int tab) const { return find("picOptions(" + std::to_string(tab - 1) + ")"); }
    [[nodiscard]] bool belongsTo(const controls::Control& control, int tab) {
        const controls::Control* container = &control;
        while (container != nullptr && container != &window.picOptions(tab - 1)) {
            container = container->container();
        }
        return container != nullptr;
    }
    void expectNothingCut() {
        for (int tab = 1; tab <= settings::kPages; ++tab) {
            showTab(tab);
            EXPECT_THAT(cutTexts(view()), IsEmpty()) << tab;
            const auto* const scroll = view().findChild<QScrollArea*>();
            EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0) << tab;
            EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0) << tab;
        }
    }
    // The last of the ALS boxes' values is 67.5, of the other scaled boxes' 2.7778 is as long as any.
    [[nodiscard]] static std::string longest(const controls::TextBox& box) {
        const bool als = box.path().starts_with("txtALS");
        return !box.Locked ? "255" : als ? "67.5" : "2.7778";
    }
    // The longest number of each kind.
    void fill() {
        for (auto* control : window.controls()) {
            if (auto* const box = dynamic_cast<controls::TextBox*>(control); box != nullptr) {
                box->Text = longest(*box);
            }
        }
        window.prgLoad.start(100);
        window.Caption = "Receiving data from target device!:  Loading.. 70.5%";
        frame();
    }
};

TEST_F(MiscViewTest, EveryControlHasOneWidgetOfItsName) {
    for (const auto* control : window.controls()) {
        const auto found = view().findChildren<QWidget*>(QString::fromStdString(control->path()));
        EXPECT_EQ(found.size(), isShown(*control) ? 1 : 0) << control->path();
    }
}

TEST_F(MiscViewTest, WhatStandsInAFrameStandsInItsWidget) {
    for (const auto* control : window.controls()) {
        if (control->container() != nullptr) {
            EXPECT_TRUE(find(control->container()->path()).isAncestorOf(&find(control->path()))) << control->path();
        }
    }
}

TEST_F(MiscViewTest, EveryWidgetThatAUserReachesHasAnAccessibleName) {
    for (const auto* control : window.controls()) {
        if (isShown(*control) && control->canFocus()) {
            auto* const spoken = QAccessible::queryAccessibleInterface(&find(control->path()));
            ASSERT_NE(spoken, nullptr);
            EXPECT_FALSE(spoken->text(QAccessible::Name).trimmed().isEmpty()) << control->path();
        }
    }
}

TEST_F(MiscViewTest, ThePagesBringTheirTextsToTheLetter) {
    EXPECT_THAT(labels(page(1)), IsSupersetOf({"RPM", "600", "700", "800"}));
    EXPECT_THAT(labels(page(2)),
                IsSupersetOf({"<13", "<12", "80", "8.0", "delay                               engine rounds"}));
    EXPECT_THAT(labels(page(3)), IsSupersetOf({"1.5", "8.0"}));
    EXPECT_THAT(labels(page(4)), IsSupersetOf({"0.6", "1.9"}));
    EXPECT_THAT(labels(page(9)), IsSupersetOf({"Nimi", "Selite", "Math:(val +                         ) *", "Warning",
                                               "Osote                 arvo"}));
}

TEST_F(MiscViewTest, FinnishToolTipsAreKept) {
    EXPECT_EQ(find("chkMisc2(3)").toolTip(), QStringLiteral("sytys myöhästetty"));
    EXPECT_EQ(find("btn0thr").toolTip(), QStringLiteral("Nosta kaasu kokonaan pois ja paina tätä nappia."));
    EXPECT_EQ(find("btn100thr").toolTip(), QStringLiteral("Paina kaasu pohjaan ja paina tätä nappia."));
}

TEST_F(MiscViewTest, TheMouseChangesTheTab) {
    auto& tabs = find<QTabBar>("tbsOptions");
    ASSERT_EQ(tabs.count(), 9);
    for (int tab = 9; tab >= 1; --tab) {
        click(tabs, tabs.tabRect(tab - 1).center());
        EXPECT_EQ(window.tbsOptions.SelectedItem, tab);
        for (int other = 1; other <= 9; ++other) {
            EXPECT_EQ(page(other).isVisible(), other == tab) << other;
        }
    }
}

TEST_F(MiscViewTest, ControlAndTabGoThroughTheTabsFromAnywhere) {
    find("txtIgnEdge").setFocus();
    for (int step = 1; step <= 10; ++step) {
        auto* const focused = view().focusWidget();
        key(focused != nullptr ? *focused : view(), Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(window.tbsOptions.SelectedItem, step % 9 + 1);
        EXPECT_EQ(find<QTabBar>("tbsOptions").currentIndex(), step % 9);
        EXPECT_TRUE(page(step % 9 + 1).isVisible());
    }
}

// What Tab goes through from the tab strip until it is back there.
std::vector<std::string> tabChain(const MiscViewBench& bench) {
    auto& tabs = bench.find("tbsOptions");
    tabs.setFocus();
    std::vector<std::string> visited;
    do {
        visited.push_back(bench.view().focusWidget()->objectName().toStdString());
        key(*bench.view().focusWidget(), Qt::Key_Tab);
    } while (bench.view().focusWidget() != &tabs && visited.size() < 200);
    return visited;
}

TEST_F(MiscViewTest, TabReachesAllThatAPersonNeeds) {
    for (int tab = 1; tab <= settings::kPages; ++tab) {
        showTab(tab);
        std::vector<std::string> expected{"tbsOptions", "verify", "btnLoad", "btnReadFromFile"};
        for (const auto* control : window.controls()) {
            if (belongsTo(*control, tab) && control->canFocus() && control->usable()) {
                expected.push_back(control->path());
            }
        }
        EXPECT_THAT(tabChain(*this), testing::UnorderedElementsAreArray(expected)) << tab;
    }
}

TEST_F(MiscViewTest, TabGoesThroughThePageAsItIsRead) {
    const std::vector<std::vector<std::string>> pages{
        {"FrameIdleAdv", "FrameIgnEdge", "FrameChargeTime", "FrameMotorbrake"},
        {"FrameInjMode", "FrameStartHelp", "FrameVolt", "FrameInjAdv", "FrameAccel"},
        {"FramePWM1", "FramePWM2", "picOptions(2)", "FrameIdleValve", "FrameBoost"},
        {"FrameLambdaType", "FrameLambda", "FrameIdlemap"},
        {"FrameMapSensor", "FrameThrottle", "FrameNTC", "FrameLoadCalc"},
        {"FrameFlags"},
        {"FrameWarnings"},
        {"FrameLaunch"},
        {"FrameParams", "FrameMisc2", "Frame13", "picOptions(8)"}};
    for (int tab = 1; tab <= settings::kPages; ++tab) {
        showTab(tab);
        std::vector<std::string> groups{""};
        for (const auto& name : tabChain(*this)) {
            for (const auto* control : window.controls()) {
                if (control->path() == name && control->container() != nullptr &&
                    control->container()->path() != groups.back()) {
                    groups.push_back(control->container()->path());
                }
            }
        }
        groups.erase(groups.begin());
        EXPECT_EQ(groups, pages.at(static_cast<std::size_t>(tab) - 1)) << tab;
    }
}

TEST_F(MiscViewTest, EveryPageFitsALaptop) {
    resize(1366, 768);
    fill();
    expectNothingCut();
    const int usual = QFontInfo(view().font()).pixelSize();
    EXPECT_GT(QFontInfo(find("btnLoad").font()).pixelSize(), usual);
}

TEST_F(MiscViewTest, EveryPageFitsWithFontsTwiceAsLarge) {
    QFont large = view().font();
    large.setPixelSize(QFontInfo(large).pixelSize() * 2);
    view().setFont(large);
    resize(1366 * 2, 768 * 2);
    fill();
    expectNothingCut();
}

TEST_F(MiscViewTest, OpensAsLargeAsItsPagesNeedAndCanBeMadeSmaller) {
    EXPECT_GT(view().width(), 520);
    EXPECT_LE(view().width(), 1366);
    EXPECT_LE(view().height(), 728);
    fill();
    expectNothingCut();
    resize(520, 453);
    EXPECT_EQ(view().size(), QSize(520, 453));
    window.Visible = false;
    window.show();
    settle();
    EXPECT_EQ(view().size(), QSize(520, 453));
}

TEST_F(MiscViewTest, NoNumberIsWiderThanItsBox) {
    resize(866, 560);
    fill();
    std::ptrdiff_t edits = 0;
    for (int tab = 1; tab <= settings::kPages; ++tab) {
        showTab(tab);
        for (const auto* edit : page(tab).findChildren<QLineEdit*>()) {
            const int needed = edit->fontMetrics().horizontalAdvance(edit->text()) + edit->textMargins().left();
            EXPECT_GE(edit->width() - 6, needed) << edit->objectName().toStdString();
            ++edits;
        }
    }
    const auto controls = window.controls();
    EXPECT_EQ(edits, std::count_if(controls.begin(), controls.end(), [](const auto* control) {
                  return dynamic_cast<const controls::TextBox*>(control) != nullptr;
              }));
}

TEST_F(MiscViewTest, StatusLineRepeatsTheCaption) {
    EXPECT_EQ(find<Readout>("status").text(), "Misc");
    window.Caption = "Receiving data from target device!:  Loading.. 70.5%";
    EXPECT_EQ(find<Readout>("status").text(), "Receiving data from target device!:  Loading.. 70.5%");
}

TEST_F(MiscViewTest, ProgressStandsBesideTheStatusWhileAReadRuns) {
    resize(1366, 768);
    auto& bar = find<QProgressBar>("prgLoad");
    EXPECT_FALSE(bar.isVisible());
    const int at = find("btnLoad").x();
    window.prgLoad.start(135);
    window.prgLoad.Value = 27;
    frame();
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(bar.value(), 27);
    EXPECT_EQ(bar.maximum(), 135);
    EXPECT_EQ(find("btnLoad").x(), at);
    const auto& status = find("status");
    EXPECT_EQ(bar.parentWidget(), status.parentWidget());
    EXPECT_GT(bar.x(), status.geometry().right());
    EXPECT_LT(bar.x(), status.x() + status.sizeHint().width() + bar.height() * 2);
}

// 1920 by 1080 at 200 %, less the title bar.
TEST_F(MiscViewTest, ALowWindowScrollsItsPagesAboveTheFoot) {
    resize(960, 500);
    const auto isInView = [this](const char* name) {
        return find(name).visibleRegion().boundingRect() == find(name).rect();
    };
    for (int tab = 1; tab <= settings::kPages; ++tab) {
        showTab(tab);
        for (const char* name : {"tbsOptions", "btnLoad", "btnReadFromFile", "status"}) {
            EXPECT_TRUE(isInView(name)) << tab << name;
        }
        for (const auto* scroll : view().findChildren<QScrollArea*>()) {
            EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0) << tab;
        }
    }
    showTab(2);
    EXPECT_FALSE(isInView("btnAccel"));
    find("btnSaveInjAdv").setFocus();
    for (int i = 0; i < 20 && !find("btnAccel").hasFocus(); ++i) {
        key(*view().focusWidget(), Qt::Key_Tab);
    }
    settle();
    EXPECT_TRUE(isInView("btnAccel"));
    showTab(1);
    EXPECT_TRUE(isInView("btnSaveMotorbrake"));
}

TEST_F(MiscViewTest, AFullReadFillsThePageOnShowAndLeavesTheTabsUsable) {
    click(find("btnLoad"));
    EXPECT_EQ(find<Readout>("status").text(), "Receiving data from target device!:  Received 100%");
    EXPECT_FALSE(find("prgLoad").isVisible());
    auto& tabs = find<QTabBar>("tbsOptions");
    click(tabs, tabs.tabRect(4).center());
    EXPECT_TRUE(page(5).isVisible());
}

}  // namespace
}  // namespace korvane::views
