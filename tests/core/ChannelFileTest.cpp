#include <gmock/gmock.h>

#include "core/files/ChannelFile.h"
#include "core/tables/SharedTables.h"
#include "platform/QueuedDialogs.h"
#include "platform/RuntimeError.h"
#include "support/TempFolder.h"

namespace korvane::core {
namespace {

constexpr const char* kDefaultsMessage = "Settings_par.ini file not found.\r\n\r\nUsing default parameter settings";

// A file with a section for each channel of [0, count) but `without`.
std::string channelFile(int count, int without = -1) {
    std::string content;
    for (int i = 0; i < count; ++i) {
        if (i != without) {
            const std::string n = std::to_string(i);
            content += "[Par" + n + "]\r\nchannel " + n + "\r\ntext " + n + "\r\n2.5\r\n-" + n + "\r\n900\r\n";
        }
    }
    return content;
}

class ChannelFile : public testing::Test {
protected:
    void load(std::string_view content) {
        folder_.write("Settings_par.ini", content);
        load();
    }
    void load() { loadChannelNames(tables_, folder_.path(), dialogs_); }

    std::vector<std::string> texts() {
        std::vector<std::string> texts;
        for (const auto& message : dialogs_.takeMessages()) {
            texts.push_back(message.text);
        }
        return texts;
    }

    void expectRead(std::size_t channel) {
        const LiveValue& values = tables_.liveValues.at(channel);
        EXPECT_EQ(values.name, "channel " + std::to_string(channel));
        EXPECT_EQ(values.description, "text " + std::to_string(channel));
        EXPECT_EQ(values.gain, 2.5);
        EXPECT_EQ(values.offset, -static_cast<double>(channel));
        EXPECT_EQ(values.limit, 900.0);
    }

    void expectDefaults(std::size_t channel) {
        const LiveValue& values = tables_.liveValues.at(channel);
        EXPECT_EQ(values.name, "name_" + std::to_string(channel));
        EXPECT_EQ(values.description, "");
        EXPECT_EQ(values.gain, 1.0);
        EXPECT_EQ(values.offset, 0.0);
        EXPECT_EQ(values.limit, 10000.0);
    }

    SharedTables tables_;
    support::TempFolder folder_;
    platform::QueuedDialogs dialogs_;
};

TEST_F(ChannelFile, AMissingFileGivesDefaultsAndOneMessage) {
    load();
    expectDefaults(0);
    expectDefaults(30);
    EXPECT_THAT(texts(), testing::ElementsAre(kDefaultsMessage));
}

TEST_F(ChannelFile, AWholeFileIsReadWithoutAWord) {
    load(channelFile(31));
    expectRead(0);
    expectRead(30);
    EXPECT_THAT(texts(), testing::IsEmpty());
}

TEST_F(ChannelFile, SectionsUpTo24GiveDefaultsFrom25WithoutAMessage) {
    load(channelFile(25));
    expectRead(24);
    for (std::size_t i = 25; i <= 30; ++i) {
        expectDefaults(i);
    }
    EXPECT_THAT(texts(), testing::IsEmpty());
}

TEST_F(ChannelFile, WithoutPar5AllFrom5OnAreDefaultsAndAMessageSaysSo) {
    load(channelFile(31, 5));
    expectRead(4);
    for (std::size_t i = 5; i <= 30; ++i) {
        expectDefaults(i);
    }
    EXPECT_THAT(texts(), testing::ElementsAre(kDefaultsMessage));
}

TEST_F(ChannelFile, Channel19IsTheLastThatIsMissed) {
    load(channelFile(19));
    EXPECT_THAT(texts(), testing::ElementsAre(kDefaultsMessage));
    load(channelFile(20));
    EXPECT_THAT(texts(), testing::IsEmpty());
}

TEST_F(ChannelFile, LinesThatASectionLacksLeaveDefaults) {
    load("[Par0]\nRPM\nEngine speed\n0.5\n[Par1]\n");
    EXPECT_EQ(tables_.liveValues.at(0).name, "RPM");
    EXPECT_EQ(tables_.liveValues.at(0).gain, 0.5);
    EXPECT_EQ(tables_.liveValues.at(0).offset, 0.0);
    EXPECT_EQ(tables_.liveValues.at(0).limit, 10000.0);
    expectDefaults(1);
}

TEST_F(ChannelFile, NumbersAreReadLeniently) {
    load("[Par0]\nRPM\nspeed\nfast\n1,5\n1e999\n");
    EXPECT_EQ(tables_.liveValues.at(0).gain, 0.0);
    EXPECT_EQ(tables_.liveValues.at(0).offset, 1.0);
    EXPECT_EQ(tables_.liveValues.at(0).limit, std::numeric_limits<double>::max());
}

TEST_F(ChannelFile, LoadingLeavesLiveValuesAlone) {
    tables_.liveValues.at(3).value = 13.8;
    tables_.liveValues.at(3).raw = 138.0;
    load(channelFile(31));
    EXPECT_EQ(tables_.liveValues.at(3).value, 13.8);
    EXPECT_EQ(tables_.liveValues.at(3).raw, 138.0);
}

TEST_F(ChannelFile, SavingWritesFiveLinesInOrder) {
    LiveValue& channel = tables_.liveValues.at(4);
    channel.name = "MAP";
    channel.description = "Pressure";
    channel.gain = 0.5;
    channel.offset = -1.25;
    channel.limit = 2.5;
    SaveParDef(tables_, folder_.path(), 4);
    EXPECT_EQ(folder_.read("Settings_par.ini"), "\r\n[Par4]\r\nMAP\r\nPressure\r\n0.5\r\n-1.25\r\n2.5\r\n");
}

TEST_F(ChannelFile, SavingReplacesOnlyItsOwnSection) {
    load(channelFile(31));
    tables_.liveValues.at(3).name = "Battery";
    SaveParDef(tables_, folder_.path(), 3);
    load();
    EXPECT_EQ(tables_.liveValues.at(3).name, "Battery");
    EXPECT_EQ(tables_.liveValues.at(3).gain, 2.5);
    expectRead(2);
    expectRead(30);
}

// Empty lines do not count: the gain is read as the description, and each of the others moves up.
TEST_F(ChannelFile, AnEmptyDescriptionShiftsWhatFollows) {
    load(channelFile(31));
    tables_.liveValues.at(3).description.clear();
    SaveParDef(tables_, folder_.path(), 3);
    load();
    const LiveValue& values = tables_.liveValues.at(3);
    EXPECT_EQ(values.name, "channel 3");
    EXPECT_EQ(values.description, "2.5");
    EXPECT_EQ(values.gain, -3.0);
    EXPECT_EQ(values.offset, 900.0);
    EXPECT_EQ(values.limit, 10000.0);
    expectRead(4);
}

TEST_F(ChannelFile, TheNextStartAfterAFileMadeAnewFindsNoFirstChannel) {
    SaveParDef(tables_, folder_.path(), 3);
    load();
    expectDefaults(0);
    expectDefaults(3);
    EXPECT_THAT(texts(), testing::ElementsAre(kDefaultsMessage));
}

TEST_F(ChannelFile, AFolderThatCannotBeWrittenIsPassedOver) {
    SaveParDef(tables_, folder_ / "missing", 0);
    EXPECT_THAT(folder_.names(), testing::IsEmpty());
}

TEST_F(ChannelFile, AChannelThatDoesNotExistIsASubscriptFailure) {
    EXPECT_THROW(SaveParDef(tables_, folder_.path(), 31), platform::RuntimeError);
}

TEST_F(ChannelFile, InjectorSizesComeFromTheirSections) {
    folder_.write("Settings.ini", "[OldInjector]\r\n380\r\n[NewInjector]\r\n630.5\r\n");
    loadInjectorSizes(tables_, folder_.path());
    EXPECT_EQ(tables_.OldInjectorSize, 380.0F);
    EXPECT_EQ(tables_.NewInjectorSize, 630.5F);
}

TEST_F(ChannelFile, InjectorSizesThatCannotBeReadAre450And550) {
    loadInjectorSizes(tables_, folder_.path());
    EXPECT_EQ(tables_.OldInjectorSize, 450.0F);
    EXPECT_EQ(tables_.NewInjectorSize, 550.0F);
    for (const std::string size : {"1e300", "-1e300"}) {
        folder_.write("Settings.ini", "[OldInjector]\n; empty\n[NewInjector]\n" + size + "\n");
        loadInjectorSizes(tables_, folder_.path());
        EXPECT_EQ(tables_.OldInjectorSize, 450.0F);
        EXPECT_EQ(tables_.NewInjectorSize, 550.0F);
    }
}

}  // namespace
}  // namespace korvane::core
