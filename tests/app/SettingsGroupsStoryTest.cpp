// A tuner goes through groups of settings with a real mouse and real keys: a value in each, and its save button. What
// counts is the ECU's EEPROM: the cells that were meant, and no other.
#include <gmock/gmock.h>

#include "app/SettingsStory.h"

namespace korvane::app {
namespace {

using testing::IsEmpty;

constexpr int kLambdaBoxes = 10;  // in each of the two rows

class SettingsGroups : public SettingsStory {
protected:
    void change(const std::string& box, const QString& text, const std::string& button) {
        type(box, text);
        save(button);
    }
    void changeStartHelp() {
        press("txtStart");
        EXPECT_EQ(shown("txtStart"), "0.8333");
        key(Qt::Key_Plus);
        EXPECT_EQ(shown("txtStart"), "0.8472") << "60 and a step, each 1 / 72 ms";
        save("btnStartHelp");
    }
    // No reply of a full read carries these boxes, so each is typed; no two get the same number.
    void changeLambda() {
        for (int i = 0; i < kLambdaBoxes; ++i) {
            const auto index = "(" + std::to_string(i) + ")";
            EXPECT_EQ(shown("txtLambdaTav" + index) + shown("txtLambdaVaik" + index), "");
            type("txtLambdaTav" + index, QString::number(50 + i));
            type("txtLambdaVaik" + index, QString::number(20 + i));
        }
        save("btnSaveLambda");
    }
    void changeEngine() {
        chooseTab(1);
        change("txtIgnEdge", "5", "btnIgnEdge");
        chooseTab(2);
        change("txtInjMode", "4", "btnInjMode");
        change("txtInjAdv(15)", "120", "btnSaveInjAdv");
        changeStartHelp();
    }
    void changeControl() {
        chooseTab(3);
        change("txtBoostTav(7)", "180", "btnSaveBoost");
        chooseTab(4);
        changeLambda();
        change("txtInjIdleMap(10)", "131", "btnSaveIdlemap");
    }
    void changeSensors() {
        chooseTab(5);
        change("txtNTC3", "47", "btnSaveNTCCal");
        change("txtLoadGain", "12", "btnLoadCalc");
        save("btn100thr");
    }
};

TEST_F(SettingsGroups, EachSaveButtonChangesTheCellsOfItsValueAndNoOther) {
    connectAndOpen();
    EXPECT_EQ(misc_.Caption.get(), "Receiving data from target device!:  Received 100%");
    const auto before = eeprom();
    changeEngine();
    changeControl();
    changeSensors();

    std::map<int, int> changed{
        {11, 61},    // start help: 60 and a step
        {345, 4},    // injection mode
        {346, 0},    // ignition edge: what is not 1 is 0
        {366, 41},   // throttle at full: the sensor gives 20 to 230, at 10 %
        {496, 12},   // load gain
        {547, 180},  // boost setpoint at 4500 rpm
        {573, 120},  // injection advance at 8500 rpm
        {960, 131},  // idle fuel
        {969, 47},   // sensor 3
    };
    for (int i = 0; i < kLambdaBoxes; ++i) {
        changed[370 + i] = 50 + i;  // setpoints, all 64 before
        changed[380 + i] = 20 + i;  // authorities, all 10 before
    }
    EXPECT_EQ(changedSince(before), changed);
    EXPECT_TRUE(polls());
    EXPECT_THAT(messages(), IsEmpty());
}

}  // namespace
}  // namespace korvane::app
