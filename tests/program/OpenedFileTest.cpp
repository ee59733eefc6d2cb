// Files that are opened at the start: each in its window, and nothing goes to the ECU.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "core/SettingsBench.h"
#include "keep/compare/FrmCompare.h"
#include "maps/MapForm.h"
#include "program/FileKind.h"
#include "support/LogText.h"
#include "support/VirtualProgram.h"
#include "trend/FrmTrend_txt.h"

namespace korvane::program {
namespace {

using testing::IsEmpty;

std::string repeated(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

// The fuel map is 61 in every cell.
const std::string kTune = core::smallMap("Injection", "61") + core::kIgnition + core::kMisc + core::kPwm;
const std::string kLargeTune =
    core::largeMap("Injection", "61") + core::largeMap("Ignition", "17") + core::kMisc + core::kPwm;

struct OpenedFileTest : testing::Test, support::VirtualProgram {
    FileKind kindOfText(const std::string& text, const std::string& name = "file.txt") {
        return kindOf(folderOfFiles.write(name, text));
    }
    void open(const std::string& text, const std::string& name = "file.txt") {
        program.openFile(folderOfFiles.write(name, text));
        pump.wait(1000);
    }
    template <class Kind>
    [[nodiscard]] Kind* shown() const {
        return dynamic_cast<Kind*>(windows.loaded().back());
    }

    support::TempFolder folderOfFiles;
};

TEST_F(OpenedFileTest, ATuneIsKnownByItsHeader) {
    EXPECT_EQ(kindOfText(kTune), FileKind::Tune);
    EXPECT_EQ(kindOfText("\xEF\xBB\xBF" + kTune), FileKind::Tune);
    EXPECT_EQ(kindOfText(" ,\r\nInjection,1"), FileKind::Tune);
    EXPECT_EQ(kindOfText(kLargeTune), FileKind::LargeTune);
    EXPECT_EQ(kindOfText("Injections\r\n"), FileKind::Log);
}

TEST_F(OpenedFileTest, AnImageHasAByteInEachLineOfAnUpload) {
    EXPECT_EQ(kindOfText(repeated(1011, " 255 \r\n")), FileKind::EepromImage);
    EXPECT_EQ(kindOfText(repeated(3001, " 255 \r\n")), FileKind::EepromImage);
    EXPECT_EQ(kindOfText(repeated(1011, "0\n")), FileKind::EepromImage);
    EXPECT_EQ(kindOfText(repeated(1010, " 255 \r\n")), FileKind::Log);
    EXPECT_EQ(kindOfText(repeated(1010, " 255 \r\n") + " 256 \r\n"), FileKind::Log);
}

TEST_F(OpenedFileTest, SetpointsAreKnownByTheirEnding) {
    EXPECT_EQ(kindOfText(" 12.5 \r\n", "targets.lam"), FileKind::Setpoints);
    EXPECT_EQ(kindOfText(" 12.5 \r\n", "TARGETS.LAM"), FileKind::Setpoints);
    EXPECT_EQ(kindOfText(" 12.5 \r\n"), FileKind::Log);
}

TEST_F(OpenedFileTest, AnythingElseIsALog) {
    EXPECT_EQ(kindOfText(support::numberedLog(3)), FileKind::Log);
    EXPECT_EQ(kindOfText(""), FileKind::Log);
    EXPECT_EQ(kindOf(folderOfFiles.nowhere()), FileKind::Log);
}

TEST_F(OpenedFileTest, ATuneOpensInAMapWindow) {
    open(kTune);
    EXPECT_NE(shown<maps::FrmMaps>(), nullptr);
    EXPECT_EQ(tables.FuelMapOut.at(159), 61);
    EXPECT_EQ(tables.IgnMapOut.at(0), 22);
    EXPECT_EQ(tables.MiscBlock.at(1), 1);
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(OpenedFileTest, ALargeTuneOpensInTheLargeMapWindow) {
    open(kLargeTune);
    EXPECT_NE(shown<maps::FrmMaps_Large>(), nullptr);
    EXPECT_EQ(tables.FuelMapOut.at(319), 61);
}

// The first reads of a map window would replace the tune that it was opened with.
TEST_F(OpenedFileTest, AConnectBehindItReadsNoMaps) {
    program.openFile(folderOfFiles.write("file.txt", kTune));
    program.connectTo(1);
    window.TimerRequestData.Enabled = false;
    window.TimerGetSettings.Enabled = false;
    pump.wait(90);
    static_cast<void>(sent());
    pump.wait(1000);
    EXPECT_TRUE(window.MSComm1.PortOpen());
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(OpenedFileTest, ATuneThatIsCutTellsWhatIsWrong) {
    open("Injection\r\n 1  2 ");
    EXPECT_NE(shown<maps::FrmMaps>(), nullptr);
    const auto messages = dialogs.takeMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages.front().text, "Error loading data:\r\nNot valid settings file");
}

TEST_F(OpenedFileTest, SetpointsOpenInTheAnalyser) {
    open(repeated(160, " 13.5 \r\n"), "targets.lam");
    auto* const form = shown<maps::FrmMaps>();
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->chkInjAnal.Value, 1);
    EXPECT_EQ(form->analys(159).Text.get(), "13.5");
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(OpenedFileTest, AnImageOpensInTheComparison) {
    open(repeated(3001, " 7 \r\n"), "EEPROM_12_00_00.txt");
    auto* const comparison = shown<keep::FrmCompare>();
    ASSERT_NE(comparison, nullptr);
    EXPECT_EQ(comparison->left.source().kind, keep::Source::Kind::Image);
    EXPECT_EQ(comparison->right.source().kind, keep::Source::Kind::Ecu);
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(OpenedFileTest, ALogOpensInTheViewer) {
    open(support::numberedLog(42));
    auto* const viewer = shown<trend::FrmTrend_txt>();
    ASSERT_NE(viewer, nullptr);
    EXPECT_EQ(viewer->lblMaxpoints.Caption.get(), "42");
    EXPECT_THAT(sent(), IsEmpty());
}

}  // namespace
}  // namespace korvane::program
