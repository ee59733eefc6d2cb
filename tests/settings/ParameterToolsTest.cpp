// The list of parameters, the raw tools, the editor of the live channels and the program's option.
#include "MiscBench.h"
#include "core/tables/ModuleReg.h"
#include "settings/ParameterTools.h"

namespace korvane::settings {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A window of its own beside the one that takes replies.
class ParameterToolsTest : public MiscBench {
protected:
    ParameterToolsTest() {
        openPort();
        tools_.fill();
    }

    [[nodiscard]] std::string cells(int row) const {
        return window_.ListView1.Cell(row, 1) + "|" + window_.ListView1.Cell(row, 2);
    }
    [[nodiscard]] int rowOf(const std::string& name) const {
        int row = 1;
        while (window_.ListView1.Cell(row, 1) != name) {
            ++row;
        }
        return row;
    }
    Lines press(controls::CommandButton& button, const char* address, const char* value = "") {
        window_.TextOs.Text = address;
        window_.TextArvo.Text = value;
        button.press();
        return sent();
    }
    Lines write(const char* address, const char* value) { return press(window_.Command1, address, value); }
    Lines writeWord(const char* address, const char* value) { return press(window_.btnWriteEE16bit, address, value); }

    std::string onlyMessage() {
        const auto messages = virtual_.dialogs.takeMessages();
        EXPECT_EQ(messages.size(), 1U);
        return messages.empty() ? std::string() : messages[0].text;
    }
    void expectSilence() { EXPECT_THAT(virtual_.dialogs.takeMessages(), IsEmpty()); }

    MiscControls window_{machine_};
    ParameterTools tools_{window_, tables_, eeprom_};
};

TEST_F(ParameterToolsTest, ListsTheNamedAddressesInTheirOrder) {
    EXPECT_EQ(window_.ListView1.column(1).heading, "Parameter name");
    EXPECT_EQ(window_.ListView1.column(1).tag, "ParName");
    EXPECT_EQ(window_.ListView1.column(2).heading, "address");
    EXPECT_EQ(window_.ListView1.column(2).tag, "Address");
    EXPECT_EQ(cells(1), "MISC2_OFF|0001");
    EXPECT_EQ(cells(2), "RPM_LIMIT_LOW_OFF|0002");
    EXPECT_EQ(cells(15), "INJ_OFF|0016");
    EXPECT_EQ(cells(rowOf(" IGNORDER_OFF")), " IGNORDER_OFF|0513");
    EXPECT_EQ(cells(window_.ListView1.rowCount() - 1), "SW_VER|2999");
    EXPECT_EQ(cells(window_.ListView1.rowCount()), "SW_TYPE|3000");
}

TEST_F(ParameterToolsTest, AddressZeroIsListedWhenItHasAName) {
    tables_.EEParams[0].name = "first";
    tools_.fill();
    EXPECT_EQ(cells(1), "first|0000");
}

TEST_F(ParameterToolsTest, FillingAgainDoublesNothing) {
    const int rows = window_.ListView1.rowCount();
    tools_.fill();
    EXPECT_EQ(window_.ListView1.rowCount(), rows);
    EXPECT_EQ(window_.ListView1.columnCount(), 2);
    EXPECT_EQ(window_.Combo1.ListCount(), 31);
}

TEST_F(ParameterToolsTest, ARowPutsItsAddressIntoTheBox) {
    window_.TextArvo.Text = "7";
    window_.ListView1.clickRow(rowOf("LAUNCHCONTROL_LO"));
    EXPECT_EQ(window_.TextOs.Text, "511");
    window_.ListView1.clickRow(1);
    EXPECT_EQ(window_.TextOs.Text, "1");
    EXPECT_EQ(window_.TextArvo.Text, "7");
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(ParameterToolsTest, TwoClicksOnAHeadTurnTheOrder) {
    window_.ListView1.clickColumn(2);
    EXPECT_EQ(cells(1), "SW_TYPE|3000");
    window_.ListView1.clickColumn(2);
    EXPECT_EQ(cells(1), "MISC2_OFF|0001");
    window_.ListView1.clickColumn(1);
    EXPECT_EQ(cells(1), "WBO2_MODE_OFF|0518");
    window_.ListView1.clickColumn(1);
    EXPECT_EQ(cells(1), " IGNORDER_OFF|0513");
}

TEST_F(ParameterToolsTest, ARowOfTheSortedListHasItsOwnAddress) {
    window_.ListView1.clickColumn(2);
    window_.ListView1.clickRow(1);
    EXPECT_EQ(window_.TextOs.Text, "3000");
}

TEST_F(ParameterToolsTest, ReadsAByteOrAWord) {
    EXPECT_THAT(press(window_.Command2, "507"), ElementsAre("0 R 507"));
    EXPECT_THAT(press(window_.btnEEread16bit, "1005"), ElementsAre("0 U 1005"));
}

TEST_F(ParameterToolsTest, AnAddressIsRoundedDownAndWordsAreZero) {
    EXPECT_THAT(press(window_.Command2, "12.9"), ElementsAre("0 R 12"));
    EXPECT_THAT(press(window_.Command2, "words"), ElementsAre("0 R 0"));
    EXPECT_THAT(press(window_.Command2, ""), ElementsAre("0 R 0"));
    EXPECT_THAT(write("12,9", "1"), ElementsAre("0 12=1"));
    expectSilence();
}

TEST_F(ParameterToolsTest, ReadingTestsNoRange) {
    EXPECT_THAT(press(window_.Command2, "5000"), ElementsAre("0 R 5000"));
    EXPECT_THAT(press(window_.Command2, "-0.5"), ElementsAre("0 R 65535"));
    expectSilence();
}

TEST_F(ParameterToolsTest, WritesAByteAsItIsTyped) {
    EXPECT_THAT(write("100", "7"), ElementsAre("0 100=7"));
    EXPECT_THAT(write("100", "300"), ElementsAre("0 100=44"));
    EXPECT_THAT(write("100", "-1"), ElementsAre("0 100=255"));
    EXPECT_THAT(write("100", "2.5"), ElementsAre("0 100=2"));
    EXPECT_THAT(write("100", "1e9"), ElementsAre("0 100=0"));  // 1000000000 is 256 * 3906250
    EXPECT_THAT(write("100", "words"), ElementsAre("0 100=0"));
    expectSilence();
}

TEST_F(ParameterToolsTest, WritesTheRowOfAWordAsTwoBytes) {
    EXPECT_THAT(write("511", "3500"), ElementsAre("0 511=172", "50 512=13"));
}

TEST_F(ParameterToolsTest, WritesAWordToAnyAddressWithoutAPause) {
    EXPECT_THAT(writeWord("100", "300"), ElementsAre("0 100=44", "0 101=1"));
    EXPECT_THAT(writeWord("100", "-2"), ElementsAre("0 100=254", "0 101=255"));
}

TEST_F(ParameterToolsTest, WritesAWordToItsOwnRowLowByteFirst) {
    EXPECT_THAT(writeWord("511", "3500"), ElementsAre("0 511=172", "50 512=0", "50 512=13"));
}

TEST_F(ParameterToolsTest, AWordKeepsItsAddressAndValueWhileEventsRun) {
    at(20, [this] {
        window_.TextOs.Text = "9";
        window_.TextArvo.Text = "0";
    });
    EXPECT_THAT(writeWord("511", "3500"), ElementsAre("0 511=172", "50 512=0", "50 512=13"));
}

TEST_F(ParameterToolsTest, AValueThatDoesNotFitIsToldOnceAndNotSent) {
    for (const char* value : {"32768", "70000", "1e9", "-32769", "32767.5"}) {
        EXPECT_THAT(writeWord("100", value), IsEmpty()) << value;
        EXPECT_EQ(onlyMessage(), "arvo holds a value that does not fit: it must be from -32768 to 32767.");
    }
    for (const char* value : {"2147483648", "1e10", "-1e400"}) {
        EXPECT_THAT(write("100", value), IsEmpty()) << value;
        EXPECT_EQ(onlyMessage(), "arvo holds a value that does not fit: it must be from -2147483648 to 2147483647.");
    }
}

TEST_F(ParameterToolsTest, AnAddressThatDoesNotFitIsToldOnceAndNotSent) {
    for (auto* button : {&window_.Command1, &window_.Command2, &window_.btnEEread16bit, &window_.btnWriteEE16bit}) {
        for (const char* address : {"32768", "1e9", "-32769"}) {
            EXPECT_THAT(press(*button, address, "1"), IsEmpty());
            EXPECT_THAT(onlyMessage(), HasSubstr("Osote holds a value that does not fit"));
        }
    }
}

TEST_F(ParameterToolsTest, AnAddressThatTheEepromHasNotGotIsToldOnceAndNotWritten) {
    for (const char* address : {"3001", "-1", "32767"}) {
        EXPECT_THAT(write(address, "1"), IsEmpty());
        EXPECT_EQ(onlyMessage(), "The EEPROM has no such address: it must be from 0 to 3000.");
    }
    EXPECT_THAT(writeWord("3000", "300"), ElementsAre("0 3000=44"));
    EXPECT_EQ(onlyMessage(), "The EEPROM has no such address: it must be from 0 to 3000.");
}

TEST_F(ParameterToolsTest, OnAClosedPortNothingIsSentOrTold) {
    main_.MSComm1.setPortOpen(false);
    EXPECT_THAT(press(window_.Command2, "1"), IsEmpty());
    EXPECT_THAT(press(window_.btnEEread16bit, "1"), IsEmpty());
    EXPECT_THAT(write("511", "1"), IsEmpty());
    EXPECT_THAT(writeWord("3000", "1"), IsEmpty());
    expectSilence();
    EXPECT_THAT(writeWord("32767", "1"), IsEmpty());
    EXPECT_EQ(onlyMessage(), "Osote holds a value that does not fit: it must be an address from 0 to 3000.");
}

TEST_F(ParameterToolsTest, TheChannelsStandUnderTheirNamesWithTheFirstPicked) {
    tables_.liveValues[0] = {"RPM", "Engine speed", 7500, 2.5, -0.25, 0, 0};
    tables_.liveValues[30].name = "last";
    tools_.fill();
    EXPECT_EQ(window_.Combo1.ListCount(), 31);
    EXPECT_EQ(window_.Combo1.List(30), "last");
    EXPECT_EQ(window_.Combo1.Text(), "RPM");
    EXPECT_EQ(window_.txtParName.Text, "RPM");
    EXPECT_EQ(window_.txtParDesc.Text, "Engine speed");
    EXPECT_EQ(window_.txtParOffset.Text, "-0.25");
    EXPECT_EQ(window_.txtParScale.Text, "2.5");
    EXPECT_EQ(window_.txtParWarning.Text, "7500");
}

TEST_F(ParameterToolsTest, PickingAChannelShowsItsFields) {
    tables_.liveValues[4] = {"MAP", "", 2.5, 1, 0, 0, 0};
    window_.Combo1.choose(4);
    EXPECT_EQ(window_.txtParName.Text, "MAP");
    EXPECT_EQ(window_.txtParDesc.Text, "");
    EXPECT_EQ(window_.txtParWarning.Text, "2.5");
}

class ChannelEditorTest : public ParameterToolsTest {
protected:
    ChannelEditorTest() {
        virtual_.folder.write("Settings_par.ini", kFile);
        window_.Combo1.choose(1);
        window_.txtParName.Text = "Lambda";
        window_.txtParDesc.Text = "wide band";
        window_.txtParOffset.Text = "-5";
        window_.txtParScale.Text = "0.1";
        window_.txtParWarning.Text = "1.2";
    }
    void expectChannel() {
        const auto& channel = tables_.liveValues[1];
        EXPECT_EQ(channel.name, "Lambda");
        EXPECT_EQ(channel.description, "wide band");
        EXPECT_EQ(channel.offset, -5.0);
        EXPECT_EQ(channel.gain, 0.1);
        EXPECT_EQ(channel.limit, 1.2);
    }

    static constexpr const char* kFile = "[Par0]\r\nRPM\r\n[Par1]\r\nold\r\nolder\r\n1\r\n0\r\n9\r\n[Par2]\r\nMAP\r\n";
};

TEST_F(ChannelEditorTest, SavesTheChannelIntoItsSection) {
    window_.btnSaveParam.press();
    expectChannel();
    const std::string file = virtual_.folder.read("Settings_par.ini");
    EXPECT_THAT(file, HasSubstr("[Par1]\r\nLambda\r\nwide band\r\n0.1\r\n-5\r\n1.2\r\n"));
    EXPECT_THAT(file, HasSubstr("[Par0]\r\nRPM\r\n"));
    EXPECT_THAT(file, HasSubstr("[Par2]\r\nMAP\r\n"));
    EXPECT_THAT(file, testing::Not(HasSubstr("old")));
    expectSilence();
}

TEST_F(ChannelEditorTest, TheListKeepsTheOldName) {
    const std::string old = window_.Combo1.List(1);
    window_.btnSaveParam.press();
    EXPECT_EQ(window_.Combo1.List(1), old);
    EXPECT_NE(old, "Lambda");
}

TEST_F(ChannelEditorTest, WhatIsNoNumberCountsAsZero) {
    window_.txtParOffset.Text = "words";
    window_.txtParScale.Text = "1,5";
    window_.txtParWarning.Text = "";
    window_.btnSaveParam.press();
    EXPECT_EQ(tables_.liveValues[1].offset, 0.0);
    EXPECT_EQ(tables_.liveValues[1].gain, 1.0);
    EXPECT_EQ(tables_.liveValues[1].limit, 0.0);
}

TEST_F(ChannelEditorTest, AFileThatIsReadOnlyStaysAndTheChannelChangesAllTheSame) {
    std::filesystem::permissions(virtual_.folder / "Settings_par.ini", std::filesystem::perms::owner_read);
    window_.btnSaveParam.press();
    expectChannel();
    EXPECT_EQ(virtual_.folder.read("Settings_par.ini"), kFile);
    expectSilence();
}

TEST_F(ChannelEditorTest, AFileThatIsGoneIsMadeAnew) {
    std::filesystem::remove(virtual_.folder / "Settings_par.ini");
    window_.btnSaveParam.press();
    expectChannel();
    EXPECT_THAT(virtual_.folder.read("Settings_par.ini"),
                HasSubstr("[Par1]\r\nLambda\r\nwide band\r\n0.1\r\n-5\r\n1.2\r\n"));
}

TEST_F(ChannelEditorTest, WithNoChannelPickedNothingHappens) {
    window_.Combo1.ListIndex = -1;
    EXPECT_EQ(window_.txtParName.Text, "Lambda");
    window_.btnSaveParam.press();
    EXPECT_NE(tables_.liveValues[1].name, "Lambda");
    EXPECT_EQ(virtual_.folder.read("Settings_par.ini"), kFile);
    EXPECT_THAT(virtual_.log.lines, IsEmpty());
}

TEST_F(ParameterToolsTest, TheOffsetTypeHoldsAtOnceAndForTheNextStart) {
    const auto stored = [this] { return core::RegReadString(virtual_.preferences, core::kSettingsKey, "InjOff_type"); };
    window_.opt_injofftype(0).press();
    EXPECT_EQ(tables_.InjOff_type, 0);
    window_.Command3.press();
    EXPECT_EQ(tables_.InjOff_type, 1);
    EXPECT_EQ(stored(), "1");
    window_.opt_injofftype(1).press();
    window_.Command3.press();
    EXPECT_EQ(tables_.InjOff_type, 0);
    EXPECT_EQ(stored(), "0");
}

}  // namespace
}  // namespace korvane::settings
