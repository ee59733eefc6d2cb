// A tuner's work in the settings window as a script: read all, change a value of each group, save each, read again;
// and the EEPROM's image taken and put back. What counts in the end is the ECU's EEPROM, byte by byte.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

#include "app/ScriptBench.h"

namespace korvane::app {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// What a tuner does at one group of settings, and what its boxes show when they have been read again.
struct Group {
    int tab;
    std::vector<std::string> edits;
    std::string button;
    struct Shown {
        std::string property;
        std::string before;
        std::string after;
    };
    std::vector<Shown> shown;
};

const std::vector<Group> kGroups{
    {1, {"type frmMisc.txtIdleAdv(2) 78"}, "btnSaveIdleAdv", {{"txtIdleAdv(2).Text", "\"75\"", "\"78\""}}},
    {1, {"type frmMisc.txtIgnEdge 5"}, "btnIgnEdge", {{"txtIgnEdge.Text", "\"1\"", "\"0\""}}},
    {1,
     {"key frmMisc.txtchargetime 187", "key frmMisc.txtchargetime 187"},
     "btnSaveChargeTime",
     {{"txtchargetime.Text", "\"3.5\"", "\"3.54\""}, {"txtchargetime.Tag", "\"175\"", "\"177\""}}},
    {1,
     {"type frmMisc.txtMotorBrakeLow 1700"},
     "btnSaveMotorbrake",
     {{"txtMotorBrakeLow.Text", "\"1500\"", "\"1700\""}}},
    {2,
     {"type frmMisc.txtInjMode 4"},
     "btnInjMode",
     {{"txtInjMode.Text", "\"2\"", "\"4\""},
      {"optInj8ms(1).Value", "true", "false"},
      {"optInj8ms(0).Value", "false", "true"}}},
    {2, {"type frmMisc.txtInjAdv(15) 120"}, "btnSaveInjAdv", {{"txtInjAdv(15).Text", "\"115\"", "\"120\""}}},
    {2,
     {"key frmMisc.txtStart 189", "type frmMisc.txtStartHelpLen 9"},
     "btnStartHelp",
     {{"txtStart.Text", "\"0.8333\"", "\"0.8194\""}, {"txtStartHelpLen.Text", "\"5\"", "\"9\""}}},
    // From the first box to the left is the last one; the arrow up is a step.
    {2,
     {"key frmMisc.txtVolt(0) 37", "key frmMisc.txtVolt(3) 38", "key frmMisc.txtVolt(3) 38"},
     "btnSaveVolt",
     {{"txtVolt(3).Text", "\"0.25\"", "\"0.2778\""}}},
    {2, {"key frmMisc.txtAccel(9) 187"}, "btnAccel", {{"txtAccel(9).Text", "\"0.1111\"", "\"0.125\""}}},
    {3,
     {"click frmMisc.OptionPWM1(2)"},
     "btnPWMmode",
     {{"OptionPWM1(0).Value", "true", "false"},
      {"OptionPWM1(2).Value", "false", "true"},
      {"OptionPWM2(0).Value", "true", "true"}}},
    {3,
     {"type frmMisc.txtIdleValveSetpoint 1100"},
     "btnSaveIdleValve",
     {{"txtIdleValveSetpoint.Text", "\"900\"", "\"1100\""}}},
    {3, {"type frmMisc.txtBoostTav(7) 180"}, "btnSaveBoost", {{"txtBoostTav(7).Text", "\"140\"", "\"180\""}}},
    {4,
     {"click frmMisc.optLambdaType(1)"},
     "btnSaveLambdaType",
     {{"optLambdaType(0).Value", "true", "false"}, {"optLambdaType(1).Value", "false", "true"}}},
    {4, {"type frmMisc.txtInjIdleMap(10) 131"}, "btnSaveIdlemap", {{"txtInjIdleMap(10).Text", "\"128\"", "\"131\""}}},
    {5, {"type frmMisc.txtNTC3 47"}, "btnSaveNTCCal", {{"txtNTC3.Text", "\"22\"", "\"47\""}}},
    {5,
     {"type frmMisc.txtLoadGain 12", "click frmMisc.optLoadMode(1)"},
     "btnLoadCalc",
     {{"txtLoadGain.Text", "\"10\"", "\"12\""}, {"optLoadMode(1).Value", "false", "true"}}},
    // The sensor gives 20 at 0 % and 230 at 100 %: 41 at 10 %, 209 at 90 %.
    {5, {"ecu drive 2000:50:10", "wait 1000"}, "btn0thr", {{"lblMINTHR.Caption", "\"20\"", "\"41\""}}},
    {5, {"ecu drive 2000:50:90", "wait 1000"}, "btn100thr", {{"lblMAXTHR.Caption", "\"230\"", "\"209\""}}},
    {6, {"click frmMisc.chkMisc2(3)"}, "btnSaveMisc3", {{"chkMisc2(3).Value", "0", "1"}}},
    {7,
     {"type frmMisc.txtVolt1Warning 15", "type frmMisc.txtColdRPMlimit 4700"},
     "btnSaveWarnings",
     {{"txtVolt1Warning.Text", "\"0\"", "\"16\""}, {"txtColdRPMlimit.Text", "\"4500\"", "\"4700\""}}},
    {8,
     {"type frmMisc.txtLaunchcontrol 5000", "choose frmMisc.Combolaunchmode 3", "key frmMisc.txtALS_fuel 187"},
     "btnSaveALSsettings",
     {{"txtLaunchcontrol.Text", "\"4500\"", "\"5000\""},
      {"Combolaunchmode.ListIndex", "2", "3"},
      {"txtALS_fuel.Text", "\"15\"", "\"20\""}}},
};

struct Change {
    int before;
    int after;
    bool operator==(const Change&) const = default;
};
using Changes = std::map<int, Change>;

// Numbers of two bytes have the low one first: 1500 = 5 * 256 + 220, 1700 = 6 * 256 + 164, and so on.
const Changes kChanged{
    {1, {0x14, 0x1C}},                           // flags 2 and 4, and 3 with them
    {11, {60, 59}},                              // start help
    {13, {175, 177}},                            // charge time
    {345, {2, 4}},                               // injection mode
    {346, {1, 0}},                               // ignition edge: what is not 1 is 0
    {359, {8, 9}},                               // last cell of the acceleration pump
    {364, {18, 20}},                             // last cell of the voltage correction
    {365, {20, 41}},                             // throttle at 0 %
    {366, {230, 209}},                           // throttle at full
    {374, {64, 60}},                             // lambda setpoint 4
    {389, {10, 12}},                             // lambda authority 9
    {394, {75, 78}},                             // idle ignition at 700 rpm
    {399, {1 + 16, 4 + 16}},                     // shift light and boost valve
    {496, {10, 12}},                             // load gain
    {498, {0, 1}},                               // load from the throttle
    {504, {132, 76}},                            // idle speed 900, 1100
    {505, {3, 4}},           {507, {220, 164}},  // engine brake 1500, 1700
    {508, {5, 6}},           {511, {148, 136}},  // launch limit 4500, 5000
    {512, {17, 19}},         {518, {1, 0}},      // lambda sensor
    {547, {140, 180}},                           // boost at 4500 rpm
    {573, {115, 120}},                           // injection advance at 8500 rpm
    {960, {128, 131}},                           // idle fuel
    {968, {3, 4}},                               // antilag fuel
    {969, {22, 47}},                             // sensor 3
    {971, {2, 3}},                               // launch mode
    {984, {0, 8}},                               // 15 / 2 = 7.5, to the even number
    {1005, {148, 92}},                           // cold limit 4500, 4700
    {1006, {17, 18}},        {1027, {5, 9}},     // length of the start help
};

class SettingsScript : public ScriptBench {
protected:
    void say(const std::string& command) { script_ += command + "\n"; }
    void sayAll(const std::vector<std::string>& commands) {
        for (const auto& command : commands) {
            say(command);
        }
    }
    // Asks for a property; the answer must be `value`.
    void expect(const std::string& property, const std::string& value) {
        expected_[count()] = {property, "ok " + value};
        say("get " + property);
    }
    // The line on which the reply to the next command comes.
    [[nodiscard]] std::size_t count() const {
        return static_cast<std::size_t>(std::count(script_.begin(), script_.end(), '\n'));
    }

    // Runs the script so far, against the virtual ECU in virtual time.
    std::vector<std::string> run(const std::string& ecu) {
        auto replies = repliesTo(script_, ecu);
        const auto commands = linesOf(script_);
        EXPECT_EQ(replies.size(), commands.size());
        for (std::size_t i = 0; i < std::min(replies.size(), commands.size()); ++i) {
            EXPECT_FALSE(replies[i].starts_with("error")) << commands[i] << ": " << replies[i];
        }
        for (const auto& [line, expectation] : expected_) {
            EXPECT_EQ(line < replies.size() ? replies[line] : "", expectation.reply) << expectation.property;
        }
        script_.clear();
        expected_.clear();
        return replies;
    }

    [[nodiscard]] std::string path(const std::string& name) const { return (folder_ / name).string(); }
    // The cells of an EEPROM or an image file.
    [[nodiscard]] std::vector<int> cells(const std::string& name) const {
        std::vector<int> all;
        for (const auto& line : linesOf(folder_.read(name))) {
            all.push_back(std::stoi(line));
        }
        return all;
    }
    static Changes difference(const std::vector<int>& before, const std::vector<int>& after) {
        EXPECT_EQ(before.size(), after.size());
        Changes changes;
        for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
            if (before[i] != after[i]) {
                changes[static_cast<int>(i)] = {before[i], after[i]};
            }
        }
        return changes;
    }

    void connect() { sayAll({"click frmSarn2.btnConnect", "wait 100"}); }
    void expectShown(std::string Group::Shown::*when) {
        for (const Group& group : kGroups) {
            for (const auto& shown : group.shown) {
                expect("frmMisc." + shown.property, shown.*when);
            }
        }
    }
    // No reply of a full read has values for the lambda boxes: a tuner types values into all of them.
    void saveLambda() {
        say("choose frmMisc.tbsOptions 4");
        for (int i = 0; i < 10; ++i) {
            const auto index = "(" + std::to_string(i) + ") ";
            say("type frmMisc.txtLambdaTav" + index + (i == 4 ? "60" : "64"));
            say("type frmMisc.txtLambdaVaik" + index + (i == 9 ? "12" : "10"));
        }
        say("click frmMisc.btnSaveLambda");
    }
    void saveAll() {
        for (const Group& group : kGroups) {
            say("choose frmMisc.tbsOptions " + std::to_string(group.tab));
            sayAll(group.edits);
            say("click frmMisc." + group.button);
            say("wait 50");
        }
        saveLambda();
        say("wait 50");
    }
    // So that what the boxes show afterwards has come from the ECU.
    void spoilBoxes() {
        for (const Group& group : kGroups) {
            for (const auto& shown : group.shown) {
                const bool text = shown.after.starts_with('"');
                const std::string opposite = shown.after == "true" ? "false" : "true";
                const std::string number = shown.after == "0" ? "1" : "0";
                const bool truth = shown.after == "true" || shown.after == "false";
                say("set frmMisc." + shown.property + " " + (text ? "\"77\"" : truth ? opposite : number));
            }
        }
    }

private:
    struct Expectation {
        std::string property;
        std::string reply;
    };
    std::string script_;
    std::map<std::size_t, Expectation> expected_;
};

TEST_F(SettingsScript, AValueOfEachGroupGoesIntoTheEepromAndComesBack) {
    connect();
    expect("frmMisc.Visible", "false");
    expect("frmMisc.Caption", "\"Receiving data from target device!:  Received 100%\"");
    say("click frmSarn2.btnAsetukset");
    expect("frmMisc.Visible", "true");
    expectShown(&Group::Shown::before);
    say("ecu save " + path("before.txt"));
    saveAll();
    say("ecu save " + path("saved.txt"));
    spoilBoxes();
    say("click frmMisc.btnLoad");
    expectShown(&Group::Shown::after);
    expect("frmMisc.Caption", "\"Receiving data from target device!:  Received 100%\"");
    expect("frmSarn2.TimerRequestData.Enabled", "true");
    expect("frmSarn2.TimerRequestData.Interval", "10");
    expect("frmSarn2.isConnected", "true");
    say("messages");
    const auto replies = run("type=11,drive=2000:50:50,save=" + path("after.txt"));
    ASSERT_FALSE(replies.empty());
    EXPECT_THAT(replies.back(), HasSubstr("Settings_par.ini file not found."));
    const auto before = cells("before.txt");
    const auto saved = cells("saved.txt");
    EXPECT_EQ(difference(before, saved), kChanged);
    EXPECT_EQ(saved, cells("after.txt")) << "a full read writes nothing";
}

// One that the map window saved: words, bytes and boxes that are stepped by keys.
TEST_F(SettingsScript, ATuneFileGoesIntoThePagesAndNotIntoTheEcu) {
    const std::map<std::string, std::string> values{
        {"txtInjMode.Text", "\"2\""},   {"txtMotorBrakeLow.Text", "\"1500\""}, {"txtLaunchcontrol.Text", "\"4500\""},
        {"txtALS_fuel.Text", "\"15\""}, {"txtStart.Text", "\"0.8333\""},       {"txtNTC3.Text", "\"22\""},
    };
    say("messages");
    connect();
    sayAll({"click frmSarn2.btnKartat", "wait 3000", "file " + path("tune.txt"), "click frmMaps.btnSave",
            "click frmSarn2.btnAsetukset", "ecu save " + path("before.txt")});
    for (const auto& [property, text] : values) {
        say("set frmMisc." + property + " \"77\"");
    }
    sayAll({"choose frmMisc.tbsOptions 9", "file " + path("tune.txt"), "click frmMisc.btnReadFromFile"});
    for (const auto& [property, text] : values) {
        expect("frmMisc." + property, text);
    }
    say("messages");
    const auto replies = run("type=11,drive=2000:50:50,save=" + path("after.txt"));
    EXPECT_EQ(replies.empty() ? "" : replies.back(), "ok []");
    EXPECT_EQ(cells("before.txt"), cells("after.txt"));
}

// Every group is saved as it has been read: nothing in the EEPROM changes.
TEST_F(SettingsScript, GroupsSavedAsTheyWereReadChangeNothing) {
    connect();
    sayAll({"click frmSarn2.btnAsetukset", "ecu save " + path("before.txt")});
    for (const Group& group : kGroups) {
        if (!group.button.ends_with("thr")) {
            say("choose frmMisc.tbsOptions " + std::to_string(group.tab));
            say("click frmMisc." + group.button);
        }
    }
    static_cast<void>(run("type=11,drive=2000:50:50,save=" + path("after.txt")));
    EXPECT_THAT(difference(cells("before.txt"), cells("after.txt")), IsEmpty());
}

class ImageScript : public SettingsScript {
protected:
    static constexpr std::size_t kCovered = 1011;  // cells 0 to 1010

    // A first session: some settings are not the factory's, and an image is saved.
    std::string takeImage() {
        connect();
        sayAll({"click frmSarn2.btnAsetukset", "messages"});
        saveAll();
        sayAll({"click frmSarn2.btnBackup", "messages"});
        const auto replies = run("type=11,drive=2000:50:50,save=" + path("ecu.txt"));
        EXPECT_THAT(replies.empty() ? "" : replies.back(), HasSubstr(" EEPROM saved to file "));
        for (const auto& name : folder_.names()) {
            if (name.starts_with("EEPROM_")) {
                return name;
            }
        }
        ADD_FAILURE() << "no image";
        return "Settings_par.ini";
    }
    // The raw tools' way to write.
    void poke(int address, int value, const std::string& button = "Command1") {
        say("type frmMisc.TextOs " + std::to_string(address));
        say("type frmMisc.TextArvo " + std::to_string(value));
        say("click frmMisc." + button);
        say("wait 200");
    }
    static std::vector<int> first(std::vector<int> cells) {
        cells.resize(kCovered);
        return cells;
    }
};

TEST_F(ImageScript, AnImagePutsTheEepromBackToTheTimeOfTheBackup) {
    const auto image = takeImage();
    const auto backedUp = cells("ecu.txt");
    EXPECT_THAT(cells(image), SizeIs(3001));
    EXPECT_EQ(first(cells(image)), first(backedUp));

    // Another session with the same ECU: cells, words and whole groups are changed, then the image is uploaded.
    connect();
    sayAll({"click frmSarn2.btnAsetukset", "choose frmMisc.tbsOptions 9"});
    poke(0, 200);
    poke(1010, 201);
    poke(1027, 202);
    poke(2, 6000, "btnWriteEE16bit");  // 6000 = 23 * 256 + 112
    sayAll({"choose frmMisc.tbsOptions 8", "type frmMisc.txtLaunchcontrol 4000", "click frmMisc.btnSaveALSsettings"});
    say("ecu save " + path("changed.txt"));
    sayAll({"file " + path(image), "click frmSarn2.btnUploadEEPROM"});
    expect("frmSarn2.btnUploadEEPROM.Caption", "\"Upload EEPROM\"");
    expect("frmSarn2.btnUploadEEPROM.Enabled", "true");
    expect("frmSarn2.TimerRequestData.Enabled", "true");
    static_cast<void>(run("type=11,drive=2000:50:50,eeprom=" + path("ecu.txt") + ",save=" + path("after.txt")));

    // 5000 = 19 * 256 + 136 was the launch limit of the image, 4000 = 15 * 256 + 160 is the one it is put over.
    EXPECT_EQ(difference(backedUp, cells("changed.txt")), (Changes{{0, {0, 200}},
                                                                   {2, {7200 % 256, 112}},
                                                                   {3, {7200 / 256, 23}},
                                                                   {511, {136, 160}},
                                                                   {512, {19, 15}},
                                                                   {1010, {0, 201}},
                                                                   {1027, {9, 202}}}));
    EXPECT_EQ(difference(backedUp, cells("after.txt")), (Changes{{1027, {9, 202}}}))
        << "an image ends at 1010; behind it nothing is put back";
}

}  // namespace
}  // namespace korvane::app
