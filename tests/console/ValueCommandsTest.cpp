#include <gtest/gtest.h>

#include "console/TestWindow.h"

namespace korvane::console {
namespace {

class ValueCommands : public testing::Test, public ConsoleOnTestWindow {};

TEST_F(ValueCommands, LinesWithoutACommandGetNoReply) {
    for (const char* blank : {"", " \t ", "# get everything"}) {
        EXPECT_EQ(run(blank), "(none)") << blank;
    }
}

TEST_F(ValueCommands, UnknownCommandsAndWrongCountsAreErrors) {
    EXPECT_EQ(run("press frmTest.btnGo"), "error no command is named press; help lists them all");
    EXPECT_EQ(run("GET frmTest.Caption"), "error no command is named GET; help lists them all");
    EXPECT_EQ(run("get"), "error get takes PATH");
    EXPECT_EQ(run("get a b"), "error get takes PATH");
    EXPECT_EQ(run("now then"), "error now takes nothing");
}

TEST_F(ValueCommands, GetReadsPropertiesOfWindowsAndControls) {
    window->Caption = "Test \"window\"";
    window->btnGo.Enabled = false;
    window->txtCell(3).BackColor = controls::kRed;
    EXPECT_EQ(run("get frmTest.Caption"), "ok \"Test \\\"window\\\"\"");
    EXPECT_EQ(run("get frmTest.btnGo.Enabled"), "ok false");
    EXPECT_EQ(run("get frmTest.txtCell(3).BackColor"), "ok 255");
    EXPECT_EQ(run("get frmTest.txtCell(3).Index"), "ok 3");
    EXPECT_EQ(run("get frmTest.txtName.Text"), "ok \"\"");
    EXPECT_EQ(run("get frmTest.btnGo.BackColor"), "ok 2147483663");
    EXPECT_EQ(run("get frmTest.ActiveControl"), "ok null");
    EXPECT_EQ(run("get \"frmTest.Visible\""), "ok true");
}

TEST_F(ValueCommands, GetReadsRowsOfADropDownList) {
    window->cmbPort.ListIndex = 1;
    EXPECT_EQ(run("get frmTest.cmbPort.ListIndex"), "ok 1");
    EXPECT_EQ(run("get frmTest.cmbPort.ListCount"), "ok 3");
    EXPECT_EQ(run("get frmTest.cmbPort.Text"), "ok \"COM2\"");
    EXPECT_EQ(run("get frmTest.cmbPort.List(2)"), "ok \"COM3\"");
    EXPECT_EQ(run("get frmTest.cmbPort.List(3)"), "error frmTest.cmbPort.List(3): Subscript out of range");
    EXPECT_EQ(run("get frmTest.cmbPort.List(0,1)"),
              "error frmTest.cmbPort has no property List(0,1) (a drop-down list has ListIndex)");
}

TEST_F(ValueCommands, GetReadsADrawingSegmentBySegment) {
    auto& surface = window->picPlot.surface();
    const auto points = surface.polyline(3, controls::kRed);
    points[0] = {0, 10};
    points[1] = {20, 30};
    points[2] = {40, -50};
    surface.box({1, 2}, {3, 4}, 0xFF8040);
    surface.text({5, 6}, "Map", controls::kBlue);
    EXPECT_EQ(run("get frmTest.picPlot.Drawing"),
              "ok [[\"line\",0,10,20,30,\"#FF0000\"],[\"line\",20,30,40,-50,\"#FF0000\"],"
              "[\"box\",1,2,3,4,\"#4080FF\"],[\"text\",5,6,\"Map\",\"#0000FF\"]]");
    surface.clear();
    EXPECT_EQ(run("get frmTest.picPlot.Drawing"), "ok []");
    EXPECT_EQ(run("set frmTest.picPlot.Drawing []"), "error frmTest.picPlot.Drawing can only be read");
}

TEST_F(ValueCommands, ALampShowsItsPictureByName) {
    window->imgLamp.Shown = controls::Picture::Green;
    EXPECT_EQ(run("get frmTest.imgLamp.Picture"), "ok \"green\"");
    EXPECT_EQ(run("set frmTest.imgLamp.Picture \"red\""), "ok");
    EXPECT_EQ(window->imgLamp.Shown.get(), controls::Picture::Red);
    EXPECT_EQ(run("set frmTest.imgLamp.Picture \"blue\""),
              "error frmTest.imgLamp.Picture: the value must be \"grey\", \"green\" or \"red\"");
}

TEST_F(ValueCommands, WhatDoesNotExistIsNamed) {
    EXPECT_EQ(run("get frmMaps.Caption"), "error no open window, table or value is named frmMaps");
    EXPECT_EQ(run("get frmTest#2.Caption"), "error no open window is named frmTest#2");
    EXPECT_EQ(run("get frmTest.Color"), "error frmTest has no property or control Color");
    EXPECT_EQ(run("get frmTest.Color.Red"), "error frmTest has no property or control Color");
    EXPECT_EQ(run("get frmTest.lblPlain.Text"), "error frmTest.lblPlain has no property Text (a label has Caption)");
    EXPECT_EQ(run("get frmTest.txtCell(4).Text"), "error frmTest.txtCell(4) does not exist: the index must be 0 to 3");
    EXPECT_EQ(run("get frmTest.txtCell.Text"), "error frmTest.txtCell is a control array and needs an index: 0 to 3");
    EXPECT_EQ(run("get frmTest.btnGo(0).Caption"), "error frmTest.btnGo is no control array and takes no index");
    EXPECT_EQ(run("get frmTest(1).Caption"), "error frmTest takes no index");
    EXPECT_EQ(run("get frmTest.btnGo#2.Caption"), "error frmTest has no property or control btnGo");
    EXPECT_EQ(run("get frmTest"), "error frmTest is a window; name a property of it, such as frmTest.Caption");
    EXPECT_EQ(run("get frmTest.btnGo"), "error frmTest.btnGo is a button; name a property of it");
    EXPECT_EQ(run("get frmTest.btnGo.Caption.Size"), "error frmTest.btnGo.Caption.Size does not exist");
    EXPECT_EQ(run("get frmTest..x"), "error frmTest..x is no name");
}

TEST_F(ValueCommands, SetAssignsWithWhatItSetsOff) {
    int clicks = 0;
    window->chkTrace.Click = [&] { ++clicks; };
    EXPECT_EQ(run("set frmTest.chkTrace.Value 1"), "ok");
    EXPECT_EQ(run("set frmTest.chkTrace.Value 1"), "ok");
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(run("set frmTest.txtName.Text \"two words\""), "ok");
    EXPECT_EQ(window->txtName.Text.get(), "two words");
    EXPECT_EQ(run("set frmTest.Left 3.0"), "ok");
    EXPECT_EQ(window->Left.get(), 3);
}

TEST_F(ValueCommands, SetRefusesValuesOfTheWrongKind) {
    EXPECT_EQ(run("set frmTest.Caption 12"), "error frmTest.Caption: the value must be a text");
    EXPECT_EQ(run("set frmTest.Caption null"), "error frmTest.Caption: the value must be a text");
    EXPECT_EQ(run("set frmTest.Visible 1"), "error frmTest.Visible: the value must be true or false");
    EXPECT_EQ(run("set frmTest.Left 1.5"), "error frmTest.Left: the value must be a whole number");
    EXPECT_EQ(run("set frmTest.Left 1e300"), "error frmTest.Left: the value must be a whole number");
    EXPECT_EQ(run("set frmTest.Left 99999999999"),
              "error frmTest.Left: the value must be a number in the property's range");
    EXPECT_EQ(run("set frmTest.Caption [1]"),
              "error frmTest.Caption: the value must be a number, a text, true or false");
    EXPECT_EQ(run("set frmTest.chkTrace.Value 2"), "error frmTest.chkTrace.Value: the value must be 0 or 1");
    EXPECT_EQ(run("set frmTest.cmbPort.ListIndex 3"),
              "error frmTest.cmbPort.ListIndex: the value must be a row of the list");
    EXPECT_EQ(run("set frmTest.Name \"x\""), "error frmTest.Name can only be read");
    EXPECT_EQ(run("set frmTest.cmbPort.List(0) \"x\""), "error frmTest.cmbPort.List(0) can only be read");
    EXPECT_EQ(run("set frmTest.lblPlain.Text 1"), "error frmTest.lblPlain has no property Text (a label has Caption)");
    EXPECT_EQ(run("set frmTest.Caption hello"), "error hello is no JSON value (a text stands in double quotes)");
    EXPECT_EQ(window->Caption.get(), "");
}

TEST_F(ValueCommands, WaitLetsTimePassWithAllThatHappensInIt) {
    int ticks = 0;
    window->tmrTick.Tick = [&] { ++ticks; };
    window->tmrTick.Enabled = true;
    EXPECT_EQ(run("wait 350"), "ok");
    EXPECT_EQ(ticks, 3);
    EXPECT_EQ(run("now"), "ok 350");
    EXPECT_EQ(run("wait -1"), "error -1 is no whole number from 0 to 2147483647");
    EXPECT_EQ(run("wait 1.5"), "error 1.5 is no whole number from 0 to 2147483647");
    EXPECT_EQ(run("wait 99999999999999999999"), "error 99999999999999999999 is no whole number from 0 to 2147483647");
}

TEST_F(ValueCommands, NowCountsWholeMilliseconds) {
    pump.runUntil(1999);
    EXPECT_EQ(run("now"), "ok 1");
}

TEST_F(ValueCommands, ACommandEndsWhenEveryEventDueByThenHasRun) {
    std::vector<int> order;
    const auto second = pump.makeAlarm([&] { order.push_back(2); });
    const auto first = pump.makeAlarm([&] {
        order.push_back(1);
        second->callAt(pump.now());
    });
    first->callAt(pump.now());
    EXPECT_EQ(run("now"), "ok 0");
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
}

TEST_F(ValueCommands, FileAnswersTheNextDialogs) {
    EXPECT_EQ(run("file /tmp/a.txt"), "ok");
    EXPECT_EQ(run("file -"), "ok");
    EXPECT_EQ(run("file \"/tmp/b c.txt\""), "ok");
    EXPECT_EQ(dialogs.choose({platform::FileDialog::Kind::Open, "Load", "All Files (*.txt)|*.txt"}), "/tmp/a.txt");
    EXPECT_EQ(dialogs.choose({platform::FileDialog::Kind::Save, "Save", ""}), "");
    EXPECT_EQ(dialogs.choose({}), "/tmp/b c.txt");
    EXPECT_EQ(dialogs.choose({}), "");
    EXPECT_EQ(run("dialogs"),
              "ok [{\"kind\":\"open\",\"title\":\"Load\",\"filter\":\"All Files (*.txt)|*.txt\"},"
              "{\"kind\":\"save\",\"title\":\"Save\",\"filter\":\"\"},"
              "{\"kind\":\"open\",\"title\":\"\",\"filter\":\"\"},{\"kind\":\"open\",\"title\":\"\",\"filter\":\"\"}]");
    EXPECT_EQ(run("dialogs"), "ok []");
}

TEST_F(ValueCommands, MessagesAreToldOnce) {
    dialogs.show({"  Error ", "8002\nInvalid port", platform::MessageIcon::Critical});
    EXPECT_EQ(run("messages"), "ok [{\"title\":\"  Error \",\"text\":\"8002\\nInvalid port\",\"icon\":\"" +
                                   std::string(platform::nameOf(platform::MessageIcon::Critical)) + "\"}]");
    EXPECT_EQ(run("messages"), "ok []");
}

TEST_F(ValueCommands, AtRunsACommandInsideWhateverRunsThen) {
    EXPECT_EQ(run("at 100 set frmTest.Caption \"at 100\""), "ok");
    EXPECT_EQ(run("at 100 at 50 set frmTest.Tag \"at 150\""), "ok");
    EXPECT_EQ(run("wait 99"), "ok");
    EXPECT_EQ(window->Caption.get(), "");
    EXPECT_EQ(run("wait 1"), "ok");
    EXPECT_EQ(window->Caption.get(), "at 100");
    EXPECT_EQ(window->Tag.get(), "");
    window->btnGo.Click = [&] { pump.wait(60); };
    EXPECT_EQ(run("click frmTest.btnGo"), "ok");
    EXPECT_EQ(window->Tag.get(), "at 150");
    EXPECT_EQ(errors.str(), "");
}

TEST_F(ValueCommands, AnErrorOfADelayedCommandGoesToTheErrors) {
    EXPECT_EQ(run("at 0 get frmMaps.Caption"), "ok");
    EXPECT_EQ(errors.str(), "error no open window, table or value is named frmMaps\n");
    EXPECT_EQ(run("at 10"), "error at takes MS COMMAND ...");
    EXPECT_EQ(run("at -1 now"), "error -1 is no whole number from 0 to 2147483647");
}

TEST_F(ValueCommands, DelayedCommandsDoNotPileUpWithoutEnd) {
    for (int i = 0; i < 10'000; ++i) {
        ASSERT_EQ(run("at 1000 now"), "ok");
    }
    EXPECT_EQ(run("at 1000 now"), "error too many commands are waiting");
    EXPECT_EQ(run("wait 1000"), "ok");
    EXPECT_EQ(run("at 1000 now"), "ok");
}

TEST_F(ValueCommands, DelayedWaitsDoNotNestWithoutEnd) {
    for (int i = 0; i < 102; ++i) {
        ASSERT_EQ(run("at 10 wait 100"), "ok");
    }
    EXPECT_EQ(run("wait 10"), "ok");
    EXPECT_EQ(errors.str(),
              "error too many commands wait inside each other\nerror too many commands wait inside each other\n");
    EXPECT_EQ(run("now"), "ok 110");
}

TEST_F(ValueCommands, ADelayedCommandOfAConsoleThatIsGoneDoesNotRun) {
    {
        Console other({tapped, dialogs, tap, names, nullptr, nullptr, errors, {}, {}});
        EXPECT_EQ(other.execute("at 10 set frmTest.Caption \"late\""), "ok");
    }
    pump.wait(20);
    EXPECT_EQ(window->Caption.get(), "");
}

TEST_F(ValueCommands, SentTellsTheBytesWrittenSinceTheLast) {
    window->MSComm1.setPortOpen(true);
    window->MSComm1.Output(std::uint8_t{0x78});
    pump.wait(5);
    window->MSComm1.Output(std::vector<std::uint8_t>{0x79, 0x00, 0x86});
    EXPECT_EQ(run("sent times"), "ok [[0,\"78\"],[5,\"790086\"]]");
    EXPECT_EQ(run("sent"), "ok \"\"");
    window->MSComm1.Output(std::vector<std::uint8_t>{0x58, 0xA7});
    EXPECT_EQ(run("sent"), "ok \"58a7\"");
    EXPECT_EQ(run("sent times"), "ok []");
    EXPECT_EQ(run("sent bytes"), "error sent takes nothing or the word times");
}

TEST_F(ValueCommands, ReceivePutsBytesOnTheLine) {
    window->MSComm1.setPortOpen(true);
    window->MSComm1.RThreshold = 1;
    std::vector<std::uint8_t> received;
    window->MSComm1.OnComm = [&] {
        const auto input = window->MSComm1.waitingInput();
        received.assign(input.begin(), input.end());
    };
    EXPECT_EQ(run("receive 5200aD"), "ok");
    EXPECT_EQ(received, (std::vector<std::uint8_t>{0x52, 0x00, 0xAD}));
    EXPECT_EQ(run("receive 5"), "error each byte needs two hex digits");
    EXPECT_EQ(run("receive xy"), "error xy is no byte in hex digits");
}

TEST_F(ValueCommands, ReceiveNeedsALineInMemory) {
    platform::TappedLine real(line, pump);
    Console other({tapped, dialogs, real, names, nullptr, nullptr, errors, {}, {}});
    EXPECT_EQ(other.execute("receive 52"), "error bytes can't be put on a real line (receive needs --ecu none)");
}

TEST_F(ValueCommands, EcuChangesTheVirtualEcu) {
    EXPECT_EQ(run("ecu drive idle"), "ok");
    EXPECT_EQ(run("ecu silent 1"), "ok");
    EXPECT_EQ(ecu.settings, (std::vector<std::string>{"drive=idle", "silent=1"}));
    EXPECT_EQ(run("ecu bad 1"), "error the virtual ECU has no key bad");
    Console other({tapped, dialogs, tap, names, nullptr, nullptr, errors, {}, {}});
    EXPECT_EQ(other.execute("ecu silent 1"), "error there is no virtual ECU (start with --ecu KEY=VALUE)");
}

TEST_F(ValueCommands, EcuAloneTellsTheSparksOfTheVirtualEcu) {
    EXPECT_EQ(run("ecu"), R"(ok {"sparks":0})");
    ecu.sparks = 2500;
    EXPECT_EQ(run("ecu"), R"(ok {"sparks":2500})");
    EXPECT_EQ(run("ecu drive"), "error ecu takes a KEY and its VALUE, or nothing");
    EXPECT_TRUE(ecu.settings.empty());
    Console other({tapped, dialogs, tap, names, nullptr, nullptr, errors, {}, {}});
    EXPECT_EQ(other.execute("ecu"), "error there is no virtual ECU (start with --ecu KEY=VALUE)");
}

class WornEcu : public FakeEcu {
public:
    [[nodiscard]] std::vector<std::uint32_t> writes() const override { return {0, 1, 0, 70000}; }
};

TEST_F(ValueCommands, EcuWearTellsTheCellsThatHaveBeenWritten) {
    EXPECT_EQ(run("ecu wear"), "ok {}");
    EXPECT_EQ(run("ecu wear out.txt"), "ok");
    EXPECT_EQ(ecu.settings, (std::vector<std::string>{"wear=out.txt"}));
    WornEcu worn;
    Console other({tapped, dialogs, tap, names, &worn, nullptr, errors, {}, {}});
    EXPECT_EQ(other.execute("ecu wear"), R"(ok {"1":1,"3":70000})");
    Console none({tapped, dialogs, tap, names, nullptr, nullptr, errors, {}, {}});
    EXPECT_EQ(none.execute("ecu wear"), "error there is no virtual ECU (start with --ecu KEY=VALUE)");
}

TEST_F(ValueCommands, ScreenshotNeedsADisplay) {
    EXPECT_EQ(run("screenshot frmTest \"/tmp/a b.png\""), "ok");
    EXPECT_EQ(screenshots.taken, std::vector<std::string>{"frmTest /tmp/a b.png"});
    EXPECT_EQ(run("screenshot frmTest /forbidden.png"), "error /forbidden.png can't be written");
    EXPECT_EQ(run("screenshot frmMaps a.png"), "error no open window is named frmMaps");
    Console other({tapped, dialogs, tap, names, nullptr, nullptr, errors, {}, {}});
    EXPECT_EQ(other.execute("screenshot frmTest a.png"), "error there is no display to take a picture of");
}

TEST_F(ValueCommands, CallRunsProceduresByName) {
    names.addProcedure("Twice", "TEXT", [](std::span<const Json> arguments) -> std::optional<Json> {
        return *arguments[0].asText() + *arguments[0].asText();
    });
    names.addProcedure("Nothing", "", [](std::span<const Json>) { return std::optional<Json>(); });
    EXPECT_EQ(run("call Twice \"a b\""), "ok \"a ba b\"");
    EXPECT_EQ(run("call Nothing"), "ok");
    EXPECT_EQ(run("call Twice"), "error Twice takes the arguments TEXT");
    EXPECT_EQ(run("call Twice bare"), "error bare is no JSON value (a text stands in double quotes)");
    EXPECT_EQ(run("call Thrice"), "error no procedure is named Thrice");
}

TEST_F(ValueCommands, HelpListsTheCommands) {
    EXPECT_EQ(run("help"),
              "ok [\"get\",\"set\",\"click\",\"choose\",\"column\",\"type\",\"key\",\"keyup\",\"mouse\",\"focus\","
              "\"close\",\"resize\",\"file\",\"dialogs\",\"messages\",\"windows\",\"controls\",\"wait\",\"watch\","
              "\"unwatch\",\"changes\",\"at\",\"sent\",\"receive\",\"ecu\",\"call\",\"screenshot\",\"now\",\"help\","
              "\"quit\"]");
}

TEST_F(ValueCommands, QuitEndsTheProgramOnce) {
    EXPECT_FALSE(console.ended());
    EXPECT_EQ(run("quit"), "ok");
    EXPECT_TRUE(console.ended());
    console.quit();
    EXPECT_EQ(quits, 1);
    EXPECT_EQ(run("now"), "error the program has ended");
}

TEST_F(ValueCommands, AProgramThatHasEndedByItselfTakesNoMoreCommands) {
    bool ended = false;
    Console other({tapped, dialogs, tap, names, nullptr, nullptr, errors, [this] { ++quits; }, [&] { return ended; }});
    EXPECT_EQ(other.execute("now"), "ok 0");
    ended = true;
    EXPECT_TRUE(other.ended());
    other.quit();
    EXPECT_EQ(quits, 0);
}

TEST_F(ValueCommands, BadInputGetsOneErrorLine) {
    EXPECT_EQ(run(std::string_view("get frmTest.Caption\0", 20)), "error the line is no text in UTF-8");
    EXPECT_EQ(run("set frmTest.Caption \"\xFF\""), "error the line is no text in UTF-8");
    EXPECT_EQ(run("set frmTest.Caption " + std::string(100'000, '[')),
              "error " + std::string(200, '[') + "...: the JSON value is nested too deep");
    EXPECT_EQ(run("get " + std::string(1'000'000, 'x')),
              "error no open window, table or value is named " + std::string(200, 'x') + "...");
    EXPECT_EQ(run("get fr\x01m"), "error no open window, table or value is named fr?m");
    EXPECT_EQ(run("get\v frmTest.Caption"), "error no command is named get?; help lists them all");
}

TEST_F(ValueCommands, ARepliesTextStaysOnOneLine) {
    names.addProcedure(
        "Fail", "", [](std::span<const Json>) -> std::optional<Json> { throw std::runtime_error("first\r\nsecond"); });
    EXPECT_EQ(run("call Fail"), "error Fail: first  second");
    window->Caption = "a\r\nb\xFF";
    EXPECT_EQ(run("get frmTest.Caption"), "ok \"a\\r\\nb\xEF\xBF\xBD\"");
}

}  // namespace
}  // namespace korvane::console
