// The program itself behind the console: its tables, members and procedures by name.
#include <gtest/gtest.h>

#include "console/ProgramBench.h"

namespace korvane::console {
namespace {

class ProgramNames : public testing::Test, public ProgramBench {};

TEST_F(ProgramNames, SharedTablesAreReadByIndex) {
    auto& tables = program->tables();
    tables.FuelMapOut[17] = 200;
    tables.liveValues[4].value = 0.5;
    tables.logData.set(0, 3, "12:00:00");
    EXPECT_EQ(run("get FuelMapOut(17)"), "ok 200");
    EXPECT_EQ(run("get FuelMapOut(320)"), "error FuelMapOut(320) does not exist: the index must be 0 to 319");
    EXPECT_EQ(run("get liveValues(4).value"), "ok 0.5");
    EXPECT_EQ(run("get liveValues(30).name"), "ok \"name_30\"");
    EXPECT_EQ(run("get liveValues(0).limit"), "ok 10000");
    EXPECT_EQ(run("get liveValues(4).size"),
              "error liveValues(4).size does not exist (liveValues has description, gain, limit, name, offset, raw, "
              "value)");
    EXPECT_EQ(run("get BitMask(3)"), "ok 8");
    EXPECT_EQ(run("get EEParams(511).name"), "ok \"LAUNCHCONTROL_LO\"");
    EXPECT_EQ(run("get EEParams(511).is16bit"), "ok true");
    EXPECT_EQ(run("get EEParams(511).reserved"), "ok 0");
    EXPECT_EQ(run("get logData(0,3)"), "ok \"12:00:00  \"");
    EXPECT_EQ(run("get logData(3)"), "error logData() needs an index: 0 to 26, 0 to 100");
    EXPECT_EQ(run("get SWTypeNames(11)"), "ok \"Korvane3 full engine control\"");
}

// The first identity blocks the program for 300 ms. Meanwhile the second falls due, which blocks it until 600 ms, and
// then the single byte: 8 + 8 + 1.
TEST_F(ProgramNames, ACommandEndsBehindTheEventsThatFallDueWhileOthersTakeTheirTime) {
    EXPECT_EQ(run("click frmSarn2.btnConnect"), "ok");
    EXPECT_EQ(run("set frmSarn2.TimerRequestData.Enabled false"), "ok");
    EXPECT_EQ(run("set frmSarn2.TimerGetSettings.Enabled false"), "ok");
    EXPECT_EQ(run("at 299 receive 7905000000000086"), "ok");
    EXPECT_EQ(run("at 598 receive 00"), "ok");
    EXPECT_EQ(run("receive 7905000000000086"), "ok");
    EXPECT_EQ(run("get frmSarn2.bytesReceived"), "ok 17");
    EXPECT_EQ(run("now"), "ok 600");
}

TEST_F(ProgramNames, AValueNeverReadIsNull) {
    EXPECT_EQ(run("get EEParams(511).value"), "ok null");
    EXPECT_EQ(run("get EEParams(3000).value"), "ok 0");
    EXPECT_EQ(run("set EEParams(511).value 7000"), "ok");
    EXPECT_EQ(run("get EEParams(511).value"), "ok 7000");
    EXPECT_EQ(run("set EEParams(1).value 256"),
              "error EEParams(1).value: the value must be a whole number from 0 to 255");
    EXPECT_EQ(run("set EEParams(511).value null"), "ok");
    EXPECT_EQ(run("get EEParams(511).value"), "ok null");
    EXPECT_EQ(run("get EETime(5)"), "ok \"\"");
}

TEST_F(ProgramNames, SharedValuesStartAsTheProgramSays) {
    EXPECT_EQ(run("get SWType"), "ok 0");
    EXPECT_EQ(run("get Features"), "ok -1");
    EXPECT_EQ(run("get HwVersion"), "ok 3.1");
    EXPECT_EQ(run("get MapPlace"), "ok 0");
    EXPECT_EQ(run("get LAUNCHCONTROL_LO"), "ok 511");
    EXPECT_EQ(run("get MISC2_OFF"), "ok 1");
    EXPECT_EQ(run("get CYL_COUNT_OFF"), "ok 1960");
    EXPECT_EQ(run("get TickB"), "ok 0.027777777777777776");
    EXPECT_EQ(run("get OldInjectorSize"), "ok 450");
    EXPECT_EQ(run("get logDataCount"), "ok 0");
    EXPECT_EQ(run("get swtype"), "error no open window, table or value is named swtype");
}

TEST_F(ProgramNames, TablesTakeValuesInTheirRangeOnly) {
    EXPECT_EQ(run("set FuelMapOut(0) 255"), "ok");
    EXPECT_EQ(program->tables().FuelMapOut[0], 255);
    EXPECT_EQ(run("set FuelMapOut(0) 256"), "error FuelMapOut(0): the value must be a whole number from 0 to 255");
    EXPECT_EQ(run("set FuelMapOut(0) -1"), "error FuelMapOut(0): the value must be a whole number from 0 to 255");
    EXPECT_EQ(run("set FuelMapOut(0) \"5\""), "error FuelMapOut(0): the value must be a whole number from 0 to 255");
    EXPECT_EQ(run("set MapPlace 40000"), "error MapPlace: the value must be a whole number from -32768 to 32767");
    EXPECT_EQ(run("set liveValues(2).gain 0.25"), "ok");
    EXPECT_EQ(run("get liveValues(2).gain"), "ok 0.25");
    EXPECT_EQ(run("set liveValues(2).name 5"), "error liveValues(2).name: the value must be a text");
    EXPECT_EQ(run("set useSound 1"), "error useSound: the value must be true or false");
    EXPECT_EQ(run("set HwVersion 1.13"), "ok");
    EXPECT_EQ(run("get HwVersion"), "ok 1.13");
    EXPECT_EQ(run("set LAUNCHCONTROL_LO 5"), "ok");
    EXPECT_EQ(program->tables().addresses.LAUNCHCONTROL_LO, 5);
    EXPECT_EQ(run("set ignWindowOpen true"), "ok");
    EXPECT_TRUE(program->tables().ignWindowOpen);
    EXPECT_EQ(run("set SWTypeNames(3) \"x\""), "error SWTypeNames(3) can only be read");
    EXPECT_EQ(program->tables().FuelMapOut[0], 255);
}

TEST_F(ProgramNames, TheReceiveMachineIsSeenThroughTheMainWindow) {
    EXPECT_EQ(run("click frmSarn2.btnConnect"), "ok");
    EXPECT_EQ(run("receive 000052020304"), "ok");
    EXPECT_EQ(run("get frmSarn2.rxPosition"), "ok 4");
    EXPECT_EQ(run("get frmSarn2.rxCommand"), "ok 82");
    EXPECT_EQ(run("get frmSarn2.rxLength"), "ok 2");
    EXPECT_EQ(run("get frmSarn2.rxTotal"), "ok 4");
    EXPECT_EQ(run("get frmSarn2.rxReady"), "ok false");
    EXPECT_EQ(run("get frmSarn2.rxPayload(0)"), "ok 3");
    EXPECT_EQ(run("get frmSarn2.rxPayload(1)"), "ok 4");
    EXPECT_EQ(run("get frmSarn2.rxPayload(2)"), "error frmSarn2.rxPayload(2): the payload has 2 bytes");
    EXPECT_EQ(run("get frmSarn2.bytesReceived"), "ok 6");
    EXPECT_EQ(run("get frmSarn2.isConnected"), "ok true");
    EXPECT_EQ(run("get frmSarn2.baudSettings(2)"), "ok \"38400,N,8,1\"");
    EXPECT_EQ(run("set frmSarn2.rxPosition 0"), "error frmSarn2.rxPosition can only be read");
}

TEST_F(ProgramNames, AnEmptyPayloadHasNoBytes) {
    EXPECT_EQ(run("get frmSarn2.rxPayload(0)"), "error frmSarn2.rxPayload(0): the payload has 0 bytes");
}

TEST_F(ProgramNames, AnIdentityFrameGoesThroughToTheCaption) {
    EXPECT_EQ(run("choose frmSarn2.ComboPort 2"), "ok");
    EXPECT_EQ(run("click frmSarn2.btnConnect"), "ok");
    EXPECT_EQ(run("watch frmSarn2.Caption"), "ok");
    EXPECT_EQ(run("receive 7905ffff0d3a0b86"), "ok");
    EXPECT_EQ(run("get SWType"), "ok 11");
    EXPECT_EQ(run("get frmSarn2.lblHWVer.Caption"), "ok \"hwVer: 3.386\"");
    EXPECT_EQ(run("get frmSarn2.Caption"), "ok \"Korvane Tuner v1.3 by Dulmer  Korvane3 full engine control\"");
    EXPECT_EQ(run("changes"),
              "ok [[0,\"frmSarn2.Caption\",\"Korvane Tuner v1.3 by Dulmer  Korvane3 full engine control\"]]");
    EXPECT_EQ(run("get EEParams(2999).value"), "ok 3.386");
    EXPECT_EQ(run("get frmSarn2.lblValue(0).Text"),
              "error frmSarn2.lblValue(0) has no property Text (a label has Caption)");
}

TEST_F(ProgramNames, PollsAreSentAtTheirTimes) {
    EXPECT_EQ(run("click frmSarn2.btnConnect"), "ok");
    EXPECT_EQ(run("choose frmSarn2.ComboRefresh 4"), "ok");
    EXPECT_EQ(run("sent"), "ok \"\"");
    EXPECT_EQ(run("wait 250"), "ok");
    EXPECT_EQ(run("sent times"), "ok [[100,\"78\"],[200,\"78\"]]");
}

TEST_F(ProgramNames, EepromProceduresWriteTheirFrames) {
    EXPECT_EQ(run("call WriteEE 1 300"), "ok");
    EXPECT_EQ(run("sent"), "ok \"\"");
    EXPECT_EQ(run("set frmSarn2.MSComm1.PortOpen true"), "ok");
    EXPECT_EQ(run("call WriteEE 1 300"), "ok");
    EXPECT_EQ(run("sent"), "ok \"5701002c2ca8\"");
    EXPECT_EQ(run("call WriteEE 100 300 true"), "ok");
    EXPECT_EQ(run("sent"), "ok \"5764002c2ca85765000101a8\"");
    EXPECT_EQ(run("call ReadEE 511"), "ok");
    EXPECT_EQ(run("call ReadEE16 511"), "ok");
    EXPECT_EQ(run("call ReadEE 511 0 true"), "ok");
    EXPECT_EQ(run("sent"), "ok \"52ff01ad55ff01aa\"");
    EXPECT_EQ(run("call WriteEE 3001 1"), "error WriteEE: Subscript out of range");
    EXPECT_EQ(run("call WriteEE 40000 1"), "error WriteEE: the value must be a whole number from -32768 to 32767");
    EXPECT_EQ(run("call WriteEE \"x\" 1"), "error WriteEE: the value must be a whole number from -32768 to 32767");
    EXPECT_EQ(run("call WriteEE 1"), "error WriteEE takes the arguments ADDR VALUE [FORCE16]");
    EXPECT_EQ(run("call WriteEE 1 1 1"), "error WriteEE: the value must be true or false");
}

TEST_F(ProgramNames, IniProceduresWorkInTheProgramsFolder) {
    EXPECT_EQ(run("call ReadIniSection \"a.ini\" \"One\""), "ok {\"error\":1,\"lines\":[\"\"]}");
    EXPECT_EQ(run("call WriteIniSection \"a.ini\" \"One\" [\"first\",2,\"third ; note\"]"), "ok 0");
    EXPECT_EQ(run("call ReadIniSection \"a.ini\" \"one\""), "ok {\"error\":0,\"lines\":[\"first\",\"2\",\"third\"]}");
    EXPECT_EQ(run("call ReadIniSection \"a.ini\" \"Two\""), "ok {\"error\":2,\"lines\":[\"\"]}");
    EXPECT_EQ(run("call WriteIniSection \"a.ini\" \"One\" \"no array\""), "ok 1");
    EXPECT_EQ(run("call WriteIniSection \"a.ini\" \"One\" []"), "ok 2");
    EXPECT_EQ(run("call ReadIniSection \"  a.ini \" \"one\""),
              "ok {\"error\":0,\"lines\":[\"first\",\"2\",\"third\"]}");
    EXPECT_EQ(run("call WriteIniSection \" b.ini  \" \"One\" [\"x\"]"), "ok 0");
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "a.ini"));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "b.ini"));
}

TEST_F(ProgramNames, ComplementDigitsAnswersAText) {
    EXPECT_EQ(run("call ComplementDigits \"-12.5\""), "ok \" 87.4\"");
    EXPECT_EQ(run("call ComplementDigits 12"), "error ComplementDigits: the value must be a text");
}

TEST_F(ProgramNames, PushTrendSampleReachesTheTrends) {
    int calls = 0;
    registerProcedures(names, {program->eeprom(), folder.path(), [&](double value, int series, int trend) {
                                   ++calls;
                                   EXPECT_DOUBLE_EQ(value, 1.5);
                                   EXPECT_EQ(series, 3);
                                   EXPECT_EQ(trend, 2);
                               }});
    EXPECT_EQ(run("call pushTrendSample 1.5 3 2"), "ok");
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(run("call pushTrendSample 1.5 3"), "error pushTrendSample takes the arguments VALUE SERIES TREND");
}

TEST_F(ProgramNames, ClosingTheMainWindowWhileConnectedEndsTheProgramASecondLater) {
    EXPECT_EQ(run("click frmSarn2.btnConnect"), "ok");
    EXPECT_EQ(run("close frmSarn2"), "ok");
    EXPECT_FALSE(console->ended());
    EXPECT_EQ(run("get frmSarn2.MSComm1.PortOpen"), "ok false");
    EXPECT_EQ(run("wait 1000"), "ok");
    EXPECT_TRUE(console->ended());
    EXPECT_EQ(run("now"), "error the program has ended");
}

TEST_F(ProgramNames, QuitWhileConnectedWaitsForTheEnd) {
    EXPECT_EQ(run("click frmSarn2.btnConnect"), "ok");
    EXPECT_EQ(run("quit"), "ok");
    EXPECT_TRUE(program->ended());
    EXPECT_FALSE(program->frmSarn2().isLoaded());
}

TEST_F(ProgramNames, QuitInsideAWaitEndsTheProgram) {
    EXPECT_EQ(run("at 10 quit"), "ok");
    EXPECT_EQ(run("wait 5000"), "ok");
    EXPECT_TRUE(console->ended());
    EXPECT_EQ(errors.str(), "");
}

TEST_F(ProgramNames, AWindowThatIsNotOpenIsCalledSo) {
    EXPECT_EQ(run("get frmMisc.Caption"),
              "error no open window is named frmMisc (without one there is LambdaType, TimeOutCount)");
    EXPECT_EQ(run("get frmMisc.TimeOutCount"), "ok 0");
}

}  // namespace
}  // namespace korvane::console
