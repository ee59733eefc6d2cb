#include <gmock/gmock.h>
#include <map>
#include <set>
#include <string>

#include "link/Frames.h"

namespace korvane::link {
namespace {

// Notes which handler was called.
class NotingHandler : public FrameHandler {
public:
    void liveData(Payload) override { called = "liveData"; }
    void deviceStarted(Payload) override { called = "deviceStarted"; }
    void alarmFlash(Payload) override { called = "alarmFlash"; }
    void eepromByte(Payload) override { called = "eepromByte"; }
    void eepromWord(Payload) override { called = "eepromWord"; }
    void ignitionFirstHalf(Payload) override { called = "ignitionFirstHalf"; }
    void ignitionSecondHalf(Payload) override { called = "ignitionSecondHalf"; }
    void fuelFirstHalf(Payload) override { called = "fuelFirstHalf"; }
    void fuelSecondHalf(Payload) override { called = "fuelSecondHalf"; }
    void ignitionSent(Payload) override { called = "ignitionSent"; }
    void ignitionSecondHalfSent(Payload) override { called = "ignitionSecondHalfSent"; }
    void fuelSent(Payload) override { called = "fuelSent"; }
    void fuelSecondHalfSent(Payload) override { called = "fuelSecondHalfSent"; }
    void unknownToDevice(Payload) override { called = "unknownToDevice"; }
    void miscBlock(Payload) override { called = "miscBlock"; }
    void pwmCell(Payload) override { called = "pwmCell"; }
    void settingsBlock(Payload) override { called = "settingsBlock"; }
    void lambdaBlock(Payload) override { called = "lambdaBlock"; }
    void identity(Payload) override { called = "identity"; }
    void ignitionDebug(Payload) override { called = "ignitionDebug"; }

    std::string called;
};

TEST(Frames, EachCodeHasItsHandler) {
    const std::map<int, std::string> expected{
        {33, "alarmFlash"},
        {65, "ignitionSent"},
        {70, "fuelSent"},
        {82, "liveData"},
        {83, "ignitionDebug"},
        {84, "eepromByte"},
        {85, "eepromWord"},
        {97, "ignitionFirstHalf"},
        {101, "settingsBlock"},
        {102, "fuelFirstHalf"},
        {108, "lambdaBlock"},
        {109, "miscBlock"},
        {112, "pwmCell"},
        {121, "identity"},
        {153, "unknownToDevice"},
        {170, "deviceStarted"},
        {245, "fuelSecondHalf"},
        {246, "fuelSecondHalfSent"},
        {247, "ignitionSecondHalf"},
        {248, "ignitionSecondHalfSent"},
    };
    NotingHandler noting;
    FrameHandler& handler = noting;
    std::map<int, std::string> found;
    for (const auto& frame : kEcuFrames) {
        (handler.*frame.handler)({});
        found[frame.code] = noting.called;
    }
    EXPECT_EQ(found, expected);
}

TEST(Frames, EachHasANameOfItsOwn) {
    std::set<std::string_view> names;
    for (const auto& frame : kEcuFrames) {
        EXPECT_FALSE(frame.name.empty()) << int{frame.code};
        EXPECT_TRUE(names.insert(frame.name).second) << frame.name;
    }
}

}  // namespace
}  // namespace korvane::link
