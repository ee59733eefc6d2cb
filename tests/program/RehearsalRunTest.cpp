// "What would the agent do?" in the whole program.
#include "LogViewerBench.h"
#include "keep/compare/FrmCompare.h"
#include "link/Frames.h"
#include "steady/TinyCar.h"

namespace korvane::trend {
namespace {

using steady::TinyCar;
using support::LogText;

class RehearsalRunTest : public LogViewerBench {
protected:
    RehearsalRunTest() {
        run.tables.SWType = 11;
        const auto& places = run.tables.addresses;
        main.ecuMisc.has({0, 0, 0, 0, 0, 0, 0, 128, 6});
        main.ecuEeprom.told(places.LOAD_MODE, 0);
        main.ecuEeprom.told(places.MAPGAIN_OFF, 10);
        main.ecuEeprom.told(places.MAPOFFSET_OFF, 0);
        car.spoil(-8.0);
        std::ranges::copy(car.bytes(), run.tables.FuelMapOut.begin());
        for (int i = 0; i < 160; ++i) {
            run.program.analyser().Setpoint(12.5F, i);
        }
    }

    std::string drive(int frames) {
        LogText log;
        for (int i = 0; i < frames; ++i) {
            const auto& frame = car.next();
            const auto number = [](double value) { return std::to_string(value).substr(0, 8); };
            log.row(static_cast<int>(frame.seconds), {{1, number(frame.rpm)},
                                                      {2, number(frame.waterC)},
                                                      {5, number(frame.load / 100.0)},
                                                      {6, number(frame.throttle)},
                                                      {7, number(frame.lambda)},
                                                      {8, number(frame.duty)},
                                                      {22, std::to_string(frame.cell)},
                                                      {23, std::to_string(frame.lamps)}});
        }
        return log.text();
    }
    void rehearse() {
        viewer().btnRehearse.press();
        wait(200);
        ASSERT_FALSE(viewer().TimerRehearse.Enabled);
    }
    keep::FrmCompare* comparison() {
        for (auto* const window : run.windows.loaded()) {
            if (auto* const found = dynamic_cast<keep::FrmCompare*>(window)) {
                return found;
            }
        }
        return nullptr;
    }
    std::string line() { return viewer().lblLog.Caption; }

    TinyCar car{5};
};

TEST_F(RehearsalRunTest, TheProposalIsComparedWithTheWorkingMapAndItsCellsCanBeCopied) {
    load(drive(20000));
    const auto before = run.tables.FuelMapOut;
    rehearse();
    ASSERT_NE(comparison(), nullptr);
    auto& window = *comparison();
    EXPECT_EQ(window.left.source().kind, keep::Source::Kind::Proposal);
    EXPECT_EQ(window.right.source().kind, keep::Source::Kind::Desk);
    EXPECT_THAT(line(), testing::StartsWith("The agent would change "));
    EXPECT_THAT(window.left.words.Caption.get(), testing::StartsWith("Log log.txt. The agent would change "));
    EXPECT_EQ(run.tables.FuelMapOut, before) << "nothing is changed by itself";
    EXPECT_EQ(window.btnCopyMap.Enabled.get(), true);
    window.btnCopyMap.press();
    EXPECT_NE(run.tables.FuelMapOut, before);
    const auto& proposal = run.program.rehearsals().proposal()->maps.front().bytes;
    for (std::size_t cell = 0; cell < 160; ++cell) {
        EXPECT_EQ(run.tables.FuelMapOut.at(cell), proposal.at(cell)) << cell;
    }
    EXPECT_EQ(run.program.history().count(), 2U) << "the map of this test, and the copy as a step that can be undone";
}

TEST_F(RehearsalRunTest, EachTimeItProposesTheSame) {
    load(drive(8000));
    rehearse();
    const auto first = run.program.rehearsals().proposal();
    rehearse();
    EXPECT_EQ(run.program.rehearsals().proposal(), first);
}

TEST_F(RehearsalRunTest, TheAgentAtWorkIsNotTouchedAndNothingIsSent) {
    load(drive(8000));
    rehearse();
    EXPECT_EQ(run.program.steadyAgent().state(), "off");
    EXPECT_EQ(run.program.steadyAgent().baselineOf(0), std::nullopt);
    for (const auto& file : std::filesystem::directory_iterator(run.folder.path())) {
        EXPECT_FALSE(file.path().filename().string().starts_with("steady")) << file.path();
    }
}

TEST_F(RehearsalRunTest, ASecondPressStopsIt) {
    load(drive(20000));
    viewer().btnRehearse.press();
    EXPECT_EQ(viewer().btnRehearse.Caption.get(), "Stop");
    EXPECT_EQ(line(), "Rehearsal: 0 %");
    wait(3);
    EXPECT_NE(line(), "Rehearsal: 0 %");
    viewer().btnRehearse.press();
    EXPECT_EQ(viewer().btnRehearse.Caption.get(), "What would the agent do?");
    EXPECT_EQ(line(), "The rehearsal was stopped.");
    wait(200);
    EXPECT_EQ(comparison(), nullptr);
    EXPECT_FALSE(run.program.rehearsals().proposal());
}

TEST_F(RehearsalRunTest, AnotherLogOrTheCloseOfTheViewerEndsIt) {
    load(drive(20000));
    viewer().btnRehearse.press();
    load(drive(100), "other.txt");
    EXPECT_FALSE(viewer().TimerRehearse.Enabled);
    EXPECT_EQ(viewer().btnRehearse.Caption.get(), "What would the agent do?");
    viewer().btnRehearse.press();
    EXPECT_TRUE(viewer().unload());
    wait(200);
    EXPECT_EQ(comparison(), nullptr);
}

TEST_F(RehearsalRunTest, ThereIsNothingToPressBeforeALogIsLoaded) {
    EXPECT_FALSE(viewer().btnRehearse.Enabled);
    load("");
    rehearse();
    EXPECT_EQ(line(), "The log has no rows: there is nothing that the agent could do.");
    EXPECT_EQ(comparison(), nullptr);
}

TEST_F(RehearsalRunTest, WhatIsNotKnownOfTheEcuIsTold) {
    load(drive(100));
    main.ecuEeprom.lost(run.tables.addresses.MAPGAIN_OFF);
    rehearse();
    EXPECT_EQ(
        line(),
        "The agent would not start: the load calculation has not been read from the ECU since the program started");
}

}  // namespace
}  // namespace korvane::trend
