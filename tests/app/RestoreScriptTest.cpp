// A restore that was not completed, on the console with an ECU that answers: it goes on, and it goes back. The ECU
// loses its power in the middle in virtual time; the cable is pulled out of the real programs.
#include <chrono>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "app/Process.h"
#include "app/ScriptBench.h"

namespace korvane::app {
namespace {

using testing::AnyOf;
using testing::MatchesRegex;
using testing::StartsWith;

constexpr int kFirst = 700;  // cells that no map and no window has
constexpr int kCells = 8;

// Cell 700 is `value`, 701 one more, and so on; all of it is known.
std::vector<std::string> fill(int value) {
    std::vector<std::string> commands;
    for (int i = 0; i < kCells; ++i) {
        const auto cell = std::to_string(kFirst + i);
        commands.push_back("call WriteEE " + cell + " " + std::to_string(value + i));
        commands.emplace_back("wait 60");
        commands.push_back("call ReadEE " + cell);
        commands.emplace_back("wait 60");
    }
    return commands;
}

std::vector<int> filled(int value) {
    std::vector<int> cells;
    for (int i = 0; i < kCells; ++i) {
        cells.push_back(value + i);
    }
    return cells;
}

// What the EEPROM has in these cells, by a file of it.
std::vector<int> cellsOf(const std::string& image) {
    const auto lines = linesOf(image);
    std::vector<int> cells;
    for (std::size_t i = 0; i < kCells && kFirst + i < lines.size(); ++i) {
        cells.push_back(std::stoi(lines[kFirst + i]));
    }
    return cells;
}

constexpr int kPoint = 10;  // what the restore point has from cell 700 on
constexpr int kNow = 40;    // what the ECU has before the restore

class RestoreScript : public ScriptBench {
protected:
    // The first cell is overwritten behind the point that is made by hand, and each of the others behind one more.
    static std::string prepared() {
        std::string script =
            "set frmSarn2.TimerRequestData.Enabled false\n"
            "click frmSarn2.btnConnect\n"
            "set frmMisc.TimerInitialGetData.Enabled false\n"
            "wait 1500\n";
        for (const auto& command : fill(kPoint)) {
            script += command + "\n";
        }
        script += "call keep.add\n";
        for (const auto& command : fill(kNow)) {
            script += command + "\n";
        }
        return script;
    }
    // The replies behind the preparation and the order for the power.
    [[nodiscard]] std::vector<std::string> endOf(const std::string& script) const {
        auto replies = goodRepliesTo(script, "type=11,drive=off");
        return {replies.end() - 9, replies.end()};
    }
};

// Behind a cell that the cut has left half written, a second press is asked for.
TEST_F(RestoreScript, APowerCutAnywhereInARestoreLeavesTheWayOnAndBack) {
    int interrupted = 0;
    for (int moment = 20; moment <= 1100; moment += 120) {
        for (const bool back : {false, true}) {
            std::filesystem::remove_all(folder_ / "restore");
            const std::string press = back ? "call restore.goBack\n" : "call restore.goOn\n";
            const auto replies =
                endOf(prepared() + "at " + std::to_string(moment) + " ecu power 0\n" + "call keep.restore " +
                      std::to_string(kCells) + " \"settings\"\n" + "ecu power 1\n" + "wait 2000\n" +
                      "get restore.offer\n" + press + "get restore\n" + press + "get restore.offer\n" + "ecu save " +
                      (folder_ / "image.txt").string() + "\n");
            EXPECT_THAT(replies[0],
                        AnyOf(StartsWith("ok \"Stopped: no answer."), "ok \"Nothing was written: no answer.\""));
            const auto cells = cellsOf(folder_.read("image.txt"));
            if (replies[3] == "ok \"\"") {
                EXPECT_THAT(cells, AnyOf(filled(kNow), filled(kPoint)));
                continue;
            }
            ++interrupted;
            EXPECT_THAT(replies[3], MatchesRegex("ok \"A restore of the point of .* \\(by hand\\) was not completed: "
                                                 "[0-8] of 8 settings written.\""));
            EXPECT_TRUE(replies[4] == "ok true" || replies[6] == "ok true") << replies[5];
            EXPECT_EQ(replies[7], "ok \"\"");
            EXPECT_EQ(cells, filled(back ? kNow : kPoint)) << moment;
        }
    }
    EXPECT_GE(interrupted, 10);
}

// Both programs as processes, in real time. The ECU is ended when the journal says that three cells have been written;
// that pulls its terminal out. The next one has the EEPROM of the first.
class PulledCable : public testing::Test {
protected:
    using Clock = std::chrono::steady_clock;

    PulledCable() { folder_.write("Settings_par.ini", ""); }

    static constexpr auto kPatience = std::chrono::seconds(20);

    template <class Holds>
    static bool until(const Holds& holds) {
        const auto end = Clock::now() + kPatience;
        while (!holds()) {
            if (Clock::now() > end) {
                return false;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    }
    void plugIn() {
        std::vector<std::string> arguments{"--pty", port(), "--with-parent", "--drive", "off", "--save", image()};
        if (std::filesystem::exists(image())) {
            arguments.insert(arguments.end(), {"--eeprom", image()});
        }
        ecu_ = std::make_unique<BackgroundProgram>("korvane-ecu", arguments);
        EXPECT_TRUE(until([this] { return std::filesystem::exists(port()); }));
    }
    void pullOut() { ecu_->end(); }
    [[nodiscard]] std::string port() const { return (folder_ / "ecu").string(); }
    [[nodiscard]] std::string image() const { return (folder_ / "image.txt").string(); }
    // A file that has gone meanwhile has nothing.
    [[nodiscard]] bool journalHas(const char* part) const {
        for (const auto& file : std::filesystem::directory_iterator(folder_ / "restore")) {
            std::ifstream journal(file.path());
            const std::string text{std::istreambuf_iterator<char>(journal), {}};
            if (file.path().extension() == ".journal" && text.find(part) != std::string::npos) {
                return true;
            }
        }
        return false;
    }
    void connect(const Conversation& tuner) {
        EXPECT_EQ(tuner.ask("click frmSarn2.btnConnect"), "ok");
        EXPECT_EQ(tuner.ask("set frmMisc.TimerInitialGetData.Enabled false"), "ok");
        EXPECT_TRUE(until([&] {
            return tuner.ask("wait 50") == "ok" && tuner.ask("get linkState") == "ok \"live\"" &&
                   tuner.ask("get SWType") == "ok 11";
        }));
    }
    static void tell(const Conversation& tuner, const std::vector<std::string>& commands) {
        for (const auto& command : commands) {
            EXPECT_THAT(tuner.ask(command), StartsWith("ok")) << command;
        }
    }
    // The point that was made by hand, and then the ECU has other values.
    [[nodiscard]] static std::string pointIn(const Conversation& tuner) {
        for (int number = 1;; ++number) {
            const auto reply = tuner.ask("get keep(" + std::to_string(number) + ").reason");
            if (reply == "ok \"by hand\"" || !reply.starts_with("ok")) {
                return std::to_string(number);
            }
        }
    }

    support::TempFolder folder_;
    std::unique_ptr<BackgroundProgram> ecu_;
};

class PulledCableBothWays : public PulledCable, public testing::WithParamInterface<bool> {};

TEST_P(PulledCableBothWays, InTheMiddleOfARestore) {
    plugIn();
    const Conversation tuner("korvane-tuner",
                             {"--headless", "--folder", folder_.path().string(), "--port", "COM2=" + port()});
    tell(tuner, {"choose frmSarn2.ComboPort 1", "choose frmSarn2.ComboBaud 6"});
    connect(tuner);
    tell(tuner, fill(kPoint));
    tell(tuner, {"call keep.add"});
    tell(tuner, fill(kNow));
    std::thread hand([this] {
        EXPECT_TRUE(until([this] { return journalHas("written 3"); }));
        pullOut();
    });
    const auto stopped = tuner.ask("call keep.restore " + pointIn(tuner) + " \"settings\"");
    hand.join();
    EXPECT_THAT(stopped,
                MatchesRegex("ok \"Stopped: (no answer|the port is closed)\\. [3-5] of 8 settings written\\.\""));
    EXPECT_NE(cellsOf(folder_.read("image.txt")), filled(kNow));
    EXPECT_NE(cellsOf(folder_.read("image.txt")), filled(kPoint));

    plugIn();
    EXPECT_TRUE(until([&] { return tuner.ask("get frmSarn2.MSComm1.PortOpen") == "ok false"; }));
    connect(tuner);
    EXPECT_TRUE(until([&] { return tuner.ask("get restore.offer").find("was not completed: ") != std::string::npos; }));
    EXPECT_EQ(tuner.ask(GetParam() ? "call restore.goBack" : "call restore.goOn"), "ok true");
    EXPECT_EQ(tuner.ask("get restore.offer"), "ok \"\"");
    EXPECT_FALSE(journalHas(""));
    pullOut();
    EXPECT_EQ(cellsOf(folder_.read("image.txt")), filled(GetParam() ? kNow : kPoint));
}

INSTANTIATE_TEST_SUITE_P(OnAndBack, PulledCableBothWays, testing::Bool(),
                         [](const auto& each) { return std::string(each.param ? "Back" : "On"); });

}  // namespace
}  // namespace korvane::app
