// A drive from beginning to end on real windows, with real mouse and keys and a clock that jumps: connect, tick, drive
// for two minutes, untick, open the log, look at it, replay it, and find the channels as they were.
#include <QCheckBox>
#include <QPushButton>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ecu/server/EcuSettings.h"
#include "support/EcuDevice.h"
#include "support/VirtualProgram.h"
#include "views/Views.h"

namespace korvane::app {
namespace {

using Channels = std::vector<double>;

constexpr std::size_t kLogged = 23;  // channels that a log keeps
constexpr int kRowsOfABatch = 101;

ecu::EcuSettings lap() {
    ecu::EcuSettings settings;
    EXPECT_EQ(ecu::parseKeyList(settings, "type=11,drive=lap"), "");
    return settings;
}

class LogStory : public testing::Test {
protected:
    LogStory() { views::addViews(views_); }

    template <class Widget = QWidget>
    Widget& find(const controls::Window& window, const char* name) {
        auto* const widget = views_.viewOf(window)->findChild<Widget*>(QString::fromLatin1(name));
        if (widget == nullptr) {
            throw std::runtime_error(name);
        }
        return *widget;
    }
    void click(const controls::Window& window, const char* name) {
        auto& widget = find(window, name);
        // The hot part of a check box is its left edge.
        QTest::mouseClick(&widget, Qt::LeftButton, {}, {8, widget.height() / 2});
        show();
    }
    void show() {
        views_.clock().tick();
        QApplication::processEvents();
    }
    // Lets time pass and keeps the channels of each row that is logged meanwhile.
    void drive(int milliseconds) {
        for (int ms = 0; ms < milliseconds; ++ms) {
            const auto before = run_.tables.logDataCount;
            run_.pump.wait(1);
            if (run_.tables.logDataCount != before) {
                driven_.push_back(channels());
            }
        }
    }
    [[nodiscard]] Channels channels() const {
        Channels values;
        for (std::size_t i = 0; i < kLogged; ++i) {
            values.push_back(run_.tables.liveValues[i].value);
        }
        return values;
    }
    [[nodiscard]] trend::FrmTrend_txt& viewer() { return *run_.program.logViewer().window(); }

    support::EcuDevice ecu_{lap()};
    support::VirtualProgram run_{&ecu_};
    views::ViewHost views_{run_.windows};
    std::vector<Channels> driven_;
};

// A cell keeps ten characters of a number.
testing::Matcher<Channels> asLogged(const Channels& live) {
    return testing::Pointwise(testing::DoubleNear(1e-6), live);
}

TEST_F(LogStory, ADriveIsRecordedLookedAtAndReplayed) {
    auto& main = run_.window;
    click(main, "btnConnect");
    run_.pump.wait(2000);
    click(main, "chkDatalog");
    ASSERT_EQ(main.chkDatalog.Value, 1);
    drive(120'000);
    click(main, "chkDatalog");
    ASSERT_EQ(main.chkDatalog.Value, 0);
    const int rows = static_cast<int>(driven_.size()) / kRowsOfABatch * kRowsOfABatch;
    ASSERT_GT(rows, 500);

    click(main, "btnDatalogTrend");
    run_.dialogs.answerFile((run_.folder / (main.txtDatalogFile.Text.get() + ".txt")).string());
    click(viewer(), "btnLoad");
    ASSERT_EQ(viewer().lblMaxpoints.Caption.get(), std::to_string(rows));

    auto& plot = find(viewer(), "Picture1");
    viewer().Combopoints.choose(0);
    show();
    click(viewer(), "btnNext");
    EXPECT_GT(viewer().line().firstRow, 0);
    QTest::keyClick(&plot, Qt::Key_PageUp);
    EXPECT_EQ(viewer().line().firstRow, 0);
    QTest::mouseMove(&plot, plot.rect().center());
    QTest::mouseClick(&plot, Qt::LeftButton, {}, plot.rect().center());
    const int marked = viewer().Cursor.Row;
    QTest::keyClick(&plot, Qt::Key_Left);
    EXPECT_EQ(viewer().Cursor.Row, marked + 1);

    click(viewer(), "btnSimulate");
    EXPECT_FALSE(main.isConnected);
    int replayed = 0;
    for (int ms = 0; viewer().TimerSim.Enabled && ms < 600'000; ++ms) {
        const int before = viewer().reader().replayRow();
        run_.pump.wait(1);
        if (viewer().reader().replayRow() != before) {
            ASSERT_THAT(channels(), asLogged(driven_.at(static_cast<std::size_t>(before) - 1))) << "row " << before;
            ++replayed;
        }
    }
    EXPECT_EQ(replayed, rows - 1);
    show();
    EXPECT_EQ(find<QPushButton>(viewer(), "btnSimulate").text().remove(u'&').toStdString(), "STOP");
    EXPECT_TRUE(run_.dialogs.takeMessages().empty());
}

}  // namespace
}  // namespace korvane::app
