// Every operation that has the ECU store something, against the disk: the restore point is there before the first byte.
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "keep/point/PointStore.h"
#include "settings/SavePlans.h"
#include "support/VirtualProgram.h"

namespace korvane::keep {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Tells of each byte before it goes out.
class WatchedLine : public platform::MemoryLine {
public:
    WatchedLine(platform::EventPump& pump, platform::LineDevice& device) : MemoryLine(pump, &device) {}

    void write(std::span<const std::uint8_t> bytes) override {
        if (beforeWrite) {
            beforeWrite();
        }
        MemoryLine::write(bytes);
    }

    std::function<void()> beforeWrite;
};

class StoringTest : public testing::Test, protected support::VirtualMachine {
protected:
    void SetUp() override {
        program_.connection().loadSettings = nullptr;
        program_.start();
        program_.frmSarn2().btnConnect.press();
        quiet();
    }

    void quiet() {
        pump.wait(3000);
        program_.frmSarn2().TimerGetSettings.Enabled = false;
        program_.frmSarn2().TimerRequestData.Enabled = false;
    }
    void openMaps(std::int32_t swType) {
        program_.tables().SWType = swType;
        program_.mapWindows().open();
        quiet();
    }
    static controls::Control& controlOf(const controls::Window& window, std::string_view name) {
        for (auto* control : window.controls()) {
            if (control->name() == name) {
                return *control;
            }
        }
        throw std::runtime_error("no control " + std::string(name));
    }
    controls::Control& control(std::string_view name) { return controlOf(*windows.loaded().back(), name); }

    // The reasons on the disk when the first byte went out, the newest first; nothing if none did.
    std::vector<std::string> reasonsBefore(const std::function<void()>& operation) {
        std::vector<std::string> reasons;
        bool wrote = false;
        line_.beforeWrite = [&] {
            if (!std::exchange(wrote, true)) {
                reasons = reasonsOnDisk();
            }
        };
        operation();
        line_.beforeWrite = {};
        EXPECT_TRUE(wrote);
        return reasons;
    }
    [[nodiscard]] std::vector<std::string> reasonsOnDisk() const {
        std::vector<std::string> reasons;
        for (const auto& entry : PointStore(folder / "restore").list()) {
            reasons.push_back(entry.reason);
        }
        return reasons;
    }
    std::vector<std::string> reasonsBeforePress(std::string_view name) {
        return reasonsBefore([&] { control(name).press(); });
    }

    WatchedLine line_{pump, recorder};
    platform::Machine watched_ = with(line_);
    program::Program program_{watched_};
};

struct MapOperation {
    const char* button;
    std::int32_t swType;
    const char* reason;
};

class StoringFromAMapWindow : public StoringTest, public testing::WithParamInterface<MapOperation> {};

TEST_P(StoringFromAMapWindow, HasAPointBeforeItsFirstByte) {
    const auto& [button, swType, reason] = GetParam();
    openMaps(swType);
    EXPECT_THAT(reasonsBeforePress(button), ElementsAre(reason));
}

INSTANTIATE_TEST_SUITE_P(Maps, StoringFromAMapWindow,
                         testing::Values(MapOperation{"btnWriteFuel", 11, "before: fuel map"},
                                         MapOperation{"btnWriteIgn", 11, "before: ignition map"},
                                         MapOperation{"btnSavePWM", 11, "before: PWM table"},
                                         MapOperation{"btnSaveMisc", 11, "before: misc block"},
                                         MapOperation{"btnWriteFuel", 14, "before: fuel map"},
                                         MapOperation{"btnWriteIgn", 14, "before: ignition map"},
                                         MapOperation{"btnSavePWM", 14, "before: PWM table"},
                                         MapOperation{"btnSaveMisc", 14, "before: misc block"},
                                         MapOperation{"btnWriteIgn", 30, "before: ignition map"},
                                         MapOperation{"btnSaveMisc", 30, "before: misc block"},
                                         MapOperation{"btnSaveLaunch", 30, "before: Launch control"},
                                         MapOperation{"btnSaveIdleAdv", 30, "before: Idle ignition"},
                                         MapOperation{"btnsaveign_2", 30, "before: Ignition setup"},
                                         MapOperation{"btnSendSettings", 112, "before: limiter settings"}));

// The groups of the settings window, whose frames say what they are.
TEST_F(StoringTest, EverySettingsGroupHasAPointBeforeItsFirstByte) {
    program_.frmMisc().load();
    pump.wait(60000);
    quiet();
    for (const auto& each : settings::saveButtons()) {
        std::filesystem::remove_all(folder / "restore");
        auto& button = program_.frmMisc().*each.button;
        const auto title = fields::titleOf(button.container());
        EXPECT_THAT(reasonsBefore([&] { button.press(); }),
                    ElementsAre("before: " + (title.empty() ? "PWM outputs" : title)));
    }
}

TEST_F(StoringTest, ThrottleEndsHaveAPointBeforeTheirFirstByte) {
    program_.frmMisc().load();
    pump.wait(60000);
    quiet();
    for (auto* button : {&program_.frmMisc().btn0thr, &program_.frmMisc().btn100thr}) {
        std::filesystem::remove_all(folder / "restore");
        EXPECT_THAT(reasonsBefore([&] { button->press(); }), ElementsAre("before: throttle end"));
    }
}

TEST_F(StoringTest, RawWritesHaveAPointBeforeTheirFirstByte) {
    auto& window = program_.frmMisc();
    window.load();
    pump.wait(60000);
    quiet();
    window.TextOs.Text = "17";
    window.TextArvo.Text = "5";
    EXPECT_THAT(reasonsBefore([&] { window.Command1.press(); }), ElementsAre("before: EEPROM address 17"));
    std::filesystem::remove_all(folder / "restore");
    EXPECT_THAT(reasonsBefore([&] { window.btnWriteEE16bit.press(); }), ElementsAre("before: EEPROM address 17"));
}

TEST_F(StoringTest, AnImageHasAPointBeforeItsFirstByte) {
    dialogs.answerFile(folder.write("image.txt", " 1 \r\n 2 \r\n").string());
    EXPECT_THAT(reasonsBefore([&] { program_.frmSarn2().btnUploadEEPROM.press(); }),
                ElementsAre("before: EEPROM image"));
}

TEST_F(StoringTest, TheTestOrderForThePwmTableHasAPointBeforeItsFirstByte) {
    EXPECT_THAT(reasonsBefore([&] { program_.frmSarn2().Command4.press(); }), ElementsAre("before: PWM table"));
}

TEST_F(StoringTest, TheStartOfTheAgentHasAPoint) {
    openMaps(11);
    control("chkInjAnal").press();
    control("chkUseTuningAgent").press();
    EXPECT_THAT(reasonsOnDisk(), ElementsAre("before: tuning agent"));
}

TEST_F(StoringTest, AnOperationHasOnePoint) {
    openMaps(11);
    control("btnSavePWM").press();
    quiet();
    EXPECT_THAT(reasonsOnDisk(), ElementsAre("before: PWM table"));
}

TEST_F(StoringTest, WithoutAnEcuNothingIsKept) {
    openMaps(11);
    program_.disconnect();
    control("btnWriteFuel").press();
    pump.wait(20000);
    EXPECT_FALSE(folder.has("restore"));
}

TEST_F(StoringTest, AReadMakesNone) {
    openMaps(11);
    control("btnReadFuel").press();
    quiet();
    EXPECT_FALSE(folder.has("restore"));
}

TEST_F(StoringTest, AFullDiskStopsNoOperation) {
    openMaps(11);
    folder.write("restore", "a file in place of the folder");
    static_cast<void>(recorder.takeBytes());
    control("btnWriteFuel").press();
    quiet();
    EXPECT_THAT(recorder.takeBytes(), testing::Contains('F'));
    EXPECT_THAT(program_.keeper().notice().Text.get(),
                testing::HasSubstr("The folder of the restore points can't be made: "));
}

}  // namespace
}  // namespace korvane::keep
