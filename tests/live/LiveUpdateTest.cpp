#include <gmock/gmock.h>

#include "LiveBench.h"

namespace korvane::live {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LiveUpdateTest : public LiveBench {
protected:
    void openEverything() {
        windows_.curMapWindow = &map_;
        windows_.frmMisc = &misc_;
        live_.setAnalyser(&analyser_);
        live_.setRowWriter(&rows_);
        window_.chkDatalog.Value = 1;
    }
    // From channel 0 on.
    void setChannels(const std::vector<double>& values) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            channel(i).value = values[i];
        }
    }
    void nextSecond() { pump_.wait(1000); }
    [[nodiscard]] std::string packets() { return window_.lblPackets.Caption.get(); }
};

TEST_F(LiveUpdateTest, LabelsShowTheirChannelsWithAllDecimals) {
    setChannels({2500, -12.5, 25, 13.8, 1.28, 50, 14.6875, 1.0 / 3.0});
    channel(10).value = 637.5;
    channel(11).value = 17.2;
    update();
    const std::vector<std::string> texts{"2500", "-12.5", "25", "13.8", "1.28", "50", "14.6875", "0.333333333333333"};
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(label(i), texts[static_cast<std::size_t>(i)]);
    }
    EXPECT_EQ(label(10), "637.5");
    EXPECT_EQ(label(11), "17.2");
}

TEST_F(LiveUpdateTest, TheLabelsOfTheTwoRegulatorsKeepTheirDesignText) {
    channel(8).value = 77;
    channel(9).value = 88;
    update();
    EXPECT_EQ(label(8), "0");
    EXPECT_EQ(label(9), "0");
    EXPECT_EQ(tables_.IdlePidWord, 77);
    EXPECT_EQ(tables_.BoostPidWord, 88);
}

TEST_F(LiveUpdateTest, ThereAreTwelveValueLabelsWithTheirNames) {
    const std::vector<std::string> names{"RPM:",   "TempW",    "TempA", "Voltage", "MAP:",   "Throttle",
                                         "Lambda", "Inj duty", "PID 1", "PID 2",   "K-type", "Ign adv."};
    ASSERT_EQ(window_.lblValue.count(), 12);
    for (int i = 0; i < 12; ++i) {
        EXPECT_EQ(window_.lblValueName(i).Caption.get(), names[static_cast<std::size_t>(i)]);
    }
}

TEST_F(LiveUpdateTest, TheMultiplexedLabelsShowChannels12To19) {
    for (std::size_t i = 12; i <= 20; ++i) {
        channel(i).value = 100.5 + static_cast<double>(i);
    }
    update();
    ASSERT_EQ(window_.lblValueMux.count(), 8);
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(window_.lblValueMux(i).Caption.get(), std::to_string(112 + i) + ".5");
    }
}

TEST_F(LiveUpdateTest, WordsAreRoundedHalfToEven) {
    channel(8).value = 2.5;
    channel(9).value = 3.5;
    channel(20).value = 6.5;
    channel(21).value = 7.5;
    update();
    EXPECT_EQ(tables_.IdlePidWord, 2);
    EXPECT_EQ(tables_.BoostPidWord, 4);
    EXPECT_EQ(tables_.AccelWord, 6);
    EXPECT_EQ(tables_.MapPlace, 8);
    EXPECT_EQ(window_.lblAccel.Caption.get(), "6");
}

TEST_F(LiveUpdateTest, AWordTooLargeFor16BitsKeepsTheOldOne) {
    channel(20).value = 5;
    channel(21).value = 6;
    update();
    channel(20).value = 32768;
    channel(21).value = -32769;
    update();
    EXPECT_EQ(tables_.AccelWord, 5);
    EXPECT_EQ(tables_.MapPlace, 6);
    EXPECT_EQ(window_.lblAccel.Caption.get(), "5");
    channel(20).value = 32767;
    channel(21).value = -32768;
    update();
    EXPECT_EQ(tables_.AccelWord, 32767);
    EXPECT_EQ(tables_.MapPlace, -32768);
}

TEST_F(LiveUpdateTest, ARegulatorsWordTooLargeFor32BitsKeepsTheOldOne) {
    channel(8).value = 70000;
    channel(9).value = -70000;
    update();
    EXPECT_EQ(tables_.IdlePidWord, 70000);
    EXPECT_EQ(tables_.BoostPidWord, -70000);
    channel(8).value = 3e9;
    channel(9).value = 4e9;
    update();
    EXPECT_EQ(tables_.IdlePidWord, 70000);
    EXPECT_EQ(tables_.BoostPidWord, -70000);
}

TEST_F(LiveUpdateTest, Channel23IsSetToItsConstant) {
    channel(23).value = 3;
    update();
    EXPECT_EQ(value(23), 16);
}

TEST_F(LiveUpdateTest, MetersAndGaugeFollowTheirChannels) {
    window_.SarnMeterRpm.setMeterType(1);
    window_.SarnMeterboost.setMeterType(0);
    channel(4).value = 1.5;
    channel(5).value = 42.5;
    channel(0).value = 5000;
    update();
    EXPECT_EQ(window_.SarnMeterboost.value(), 1.5);
    EXPECT_EQ(window_.SarnGauge3.value(), 42);
    EXPECT_EQ(window_.SarnMeterRpm.value(), 5000);
}

TEST_F(LiveUpdateTest, SamplesGoToTheTrendsInOrder) {
    setChannels({2500, 80, 25, 13.8, 1.28, 50, 14.7, 55, 100.4, 200.6});
    update();
    EXPECT_THAT(trends_.samples,
                ElementsAre(Sample{0, 1, 50},                                               // between the meters
                            Sample{0, 0, 1.28}, Sample{0, 2, 14.7}, Sample{0, 3, 21.4844},  // 55 / 2.56
                            Sample{0, 4, 250}, Sample{2, 0, 13.8}, Sample{2, 1, 80}, Sample{2, 2, 25},
                            Sample{2, 3, 100}, Sample{2, 4, 201}));
}

TEST_F(LiveUpdateTest, DutyIsRoundedToFourDecimalsAndSpeedToWholeNumbersTiesToEven) {
    const auto sampleOf = [&](int series) {
        for (const auto& sample : trends_.samples) {
            if (sample.trend == 0 && sample.series == series) {
                return sample.value;
            }
        }
        return -1.0;
    };
    channel(7).value = 2;  // 0.78125
    channel(0).value = 25;
    update();
    EXPECT_EQ(sampleOf(3), 0.7812);
    EXPECT_EQ(sampleOf(4), 2);
    trends_.samples.clear();
    channel(7).value = 6;  // 2.34375
    channel(0).value = 35;
    update();
    EXPECT_EQ(sampleOf(3), 2.3438);
    EXPECT_EQ(sampleOf(4), 4);
}

TEST_F(LiveUpdateTest, ASpeedTooLargeForItsSampleIsSkippedAndTheOthersCome) {
    channel(0).value = 327680;
    update();
    EXPECT_EQ(trends_.samples.size(), 9U);
    for (const auto& sample : trends_.samples) {
        EXPECT_FALSE(sample.trend == 0 && sample.series == 4);
    }
    EXPECT_EQ(trends_.samples.back(), (Sample{2, 4, 0}));
    trends_.samples.clear();
    channel(0).value = 327670;
    update();
    EXPECT_THAT(trends_.samples, testing::Contains(Sample{0, 4, 32767}));
}

TEST_F(LiveUpdateTest, ADutyTooLargeForItsSampleIsSkipped) {
    channel(7).value = 1e18;
    update();
    EXPECT_EQ(trends_.samples.size(), 9U);
}

// Counter 0 to 5 on the first six frames; the seventh sees 6 and draws, and then every sixth one.
TEST_F(LiveUpdateTest, EverySixthFrameDraws) {
    std::vector<int> drawn;
    for (int frame = 1; frame <= 31; ++frame) {
        const int before = trends_.draws;
        update();
        if (trends_.draws != before) {
            drawn.push_back(frame);
        }
    }
    EXPECT_THAT(drawn, ElementsAre(7, 13, 19, 25, 31));
}

TEST_F(LiveUpdateTest, TheDrawCounterDoesNotLookAtTheClock) {
    for (int i = 0; i < 13; ++i) {
        update();
        nextSecond();
    }
    EXPECT_EQ(trends_.draws, 2);
}

TEST_F(LiveUpdateTest, ASlowTrendDrawsAtTheFirstFrameOfEachSecond) {
    window_.chkSlowTrend.Value = 1;
    updates(20);
    EXPECT_EQ(trends_.draws, 0) << "the second of the start counts as known";
    for (int second = 1; second <= 3; ++second) {
        nextSecond();
        updates(20);
        EXPECT_EQ(trends_.draws, second);
    }
}

TEST_F(LiveUpdateTest, ASlowTrendNeverDrawsTwiceInASecond) {
    window_.chkSlowTrend.Value = 1;
    std::vector<int> seconds;
    for (int i = 0; i < 3000; ++i) {
        const int before = trends_.draws;
        update();
        ASSERT_LE(trends_.draws - before, 1);
        if (trends_.draws != before) {
            seconds.push_back(static_cast<int>(pump_.milliseconds() / 1000));
        }
        pump_.wait(10);
    }
    EXPECT_EQ(std::adjacent_find(seconds.begin(), seconds.end()), seconds.end());
    EXPECT_EQ(seconds.size(), 29U);
}

TEST_F(LiveUpdateTest, TheFrameThatOpensASecondShowsTheCountOfTheOneBefore) {
    updates(5);
    EXPECT_EQ(packets(), "0");
    nextSecond();
    update();
    EXPECT_EQ(packets(), "5");
    updates(3);
    EXPECT_EQ(packets(), "5");
    nextSecond();
    update();
    EXPECT_EQ(packets(), "3") << "the frame that opened the second is not counted";
    nextSecond();
    update();
    EXPECT_EQ(packets(), "0");
}

TEST_F(LiveUpdateTest, WithoutFramesThePacketCountStands) {
    updates(5);
    nextSecond();
    update();
    pump_.wait(30000);
    EXPECT_EQ(packets(), "5");
}

TEST_F(LiveUpdateTest, ARowIsLoggedOnlyWhileTheBoxIsTicked) {
    live_.setRowWriter(&rows_);
    update();
    EXPECT_EQ(rows_.rows, 0);
    window_.chkDatalog.Value = 1;
    updates(3);
    EXPECT_EQ(rows_.rows, 3);
}

TEST_F(LiveUpdateTest, TheSettingsWindowMarksTheAccelRowAndTheMapWindowItsPlace) {
    openEverything();
    channel(20).value = 4;
    update();
    channel(20).value = 12;
    update();
    EXPECT_THAT(misc_.marked, ElementsAre(4, 12)) << "which rows exist is the settings window's business";
    EXPECT_EQ(map_.places, 2);
}

TEST_F(LiveUpdateTest, TheFrameCounterWrapsAt3998) {
    update();
    EXPECT_EQ(live_.frameCounter(), 1);
    updates(3996);
    EXPECT_EQ(live_.frameCounter(), 3997);
    int highest = 0;
    bool wrapped = false;
    for (int i = 0; i < 10; ++i) {
        update();
        highest = std::max(highest, live_.frameCounter());
        wrapped = wrapped || live_.frameCounter() == 0;
    }
    EXPECT_LE(highest, 3998);
    EXPECT_TRUE(wrapped);
}

TEST_F(LiveUpdateTest, TheAnalyserGetsLambdaCellSpeedAndLoadInThatOrder) {
    live_.setAnalyser(&analyser_);
    channel(0).value = 1500;
    channel(4).value = 0.85;
    channel(5).value = 30;
    channel(6).value = 12.5;
    channel(21).value = 42;
    update();
    EXPECT_THAT(analyser_.samples, ElementsAre(ElementsAre(12.5F, 42.0F, 1500.0F, 0.85F)));
}

TEST_F(LiveUpdateTest, TheAnalyserGetsNothingInOverrun) {
    live_.setAnalyser(&analyser_);
    const auto fed = [&](double rpm, double throttle) {
        analyser_.samples.clear();
        channel(0).value = rpm;
        channel(5).value = throttle;
        update();
        return analyser_.samples.size();
    };
    EXPECT_EQ(fed(2500, 1.5), 0U);
    EXPECT_EQ(fed(2500, 2.0), 1U);
    EXPECT_EQ(fed(2500, 1.999), 0U);
    EXPECT_EQ(fed(2000, 0), 1U);
    EXPECT_EQ(fed(2001, 0), 0U);
    EXPECT_EQ(fed(1000, 0), 1U);
}

TEST_F(LiveUpdateTest, NobodyThereIsNoFailure) {
    window_.chkDatalog.Value = 1;
    channel(0).value = 2500;
    updates(20);
    EXPECT_EQ(live_.frameCounter(), 20);
    EXPECT_EQ(label(0), "2500");
    EXPECT_EQ(trends_.samples.size(), 200U);
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(LiveUpdateTest, AStepThatFailsIsSkippedAndTheNextOnesRun) {
    openEverything();
    rows_.fails = true;
    misc_.fails = true;
    analyser_.fails = true;
    for (const std::size_t number : {0U, 5U, 8U, 20U, 21U, 22U}) {
        channel(number).value = 1e12;
    }
    window_.chkSlowTrend.Value = 1;
    updates(4);
    nextSecond();
    EXPECT_NO_THROW(update());
    EXPECT_EQ(rows_.rows, 5);
    EXPECT_EQ(trends_.draws, 1);
    EXPECT_EQ(packets(), "4");
    EXPECT_EQ(misc_.marked.size(), 5U);
    EXPECT_EQ(analyser_.samples.size(), 5U);
    EXPECT_EQ(map_.places, 5);
    EXPECT_EQ(window_.SarnGauge3.value(), 0);
    EXPECT_EQ(window_.SarnMeterRpm.value(), 100) << "clamped, behind the gauge that failed";
    EXPECT_EQ(live_.frameCounter(), 5);
}

TEST_F(LiveUpdateTest, AReplayFillsTheChannelsAndUpdatesTheSameWay) {
    openEverything();
    channel(0).value = 3210;
    channel(5).value = 50;
    update();
    EXPECT_EQ(label(0), "3210");
    EXPECT_EQ(rows_.rows, 1);
    EXPECT_EQ(map_.places, 1);
}

}  // namespace
}  // namespace korvane::live
