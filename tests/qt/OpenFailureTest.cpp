#include <gtest/gtest.h>
#include <string>

#include "platform/qt/OpenFailure.h"

namespace korvane::platform {
namespace {

const OpenAttempt kAttempt{3, 76800, "/dev/ttyUSB0", "the reason"};

struct Told {
    const char* name;
    OpenFailure failure;
    OpenAttempt attempt;
    int number;
    const char* text;
};

class OpenFailureTest : public testing::TestWithParam<Told> {};

TEST_P(OpenFailureTest, HasItsNumberAndSaysWhatToDo) {
    const auto error = openError(GetParam().failure, GetParam().attempt);
    EXPECT_EQ(error.number(), GetParam().number);
    EXPECT_STREQ(error.what(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, OpenFailureTest,
    testing::Values(
        Told{"NothingFound",
             OpenFailure::NothingFound,
             {3, 57600, "", ""},
             8002,
             "No device stands for COM3: no serial port was found. Plug the adapter in, or start the program with "
             "--port COM3=/dev/..."},
        Told{"NoDeviceForPort",
             OpenFailure::NoDeviceForPort,
             {4, 57600, "", "COM1 (/dev/ttyUSB0)"},
             8002,
             "No device stands for COM4. Found: COM1 (/dev/ttyUSB0). Choose one of these, plug the adapter in, or "
             "start the program with --port COM4=/dev/..."},
        Told{"Missing", OpenFailure::Missing, kAttempt, 8002,
             "COM3 (/dev/ttyUSB0): no such device. Plug the adapter in, or start the program with --port "
             "COM3=/dev/..."},
        Told{"NoPermission", OpenFailure::NoPermission, kAttempt, 8010,
             "COM3 (/dev/ttyUSB0): no permission. Join the dialout group with \"sudo usermod -aG dialout $USER\", "
             "then log out and in again."},
        Told{"InUse", OpenFailure::InUse, kAttempt, 8005,
             "COM3 (/dev/ttyUSB0): in use by another program. Close that program and try again."},
        Told{"PathAlone",
             OpenFailure::InUse,
             {kPortOfPath, 57600, "/dev/ttyUSB0", ""},
             8005,
             "/dev/ttyUSB0: in use by another program. Close that program and try again."},
        Told{"RefusedRate", OpenFailure::RefusedRate, kAttempt, 8015,
             "COM3 (/dev/ttyUSB0): the device refuses 76800 baud. Choose another speed."},
        Told{"Other", OpenFailure::Other, kAttempt, 8012,
             "COM3 (/dev/ttyUSB0) can't be opened: the reason. Is it a serial port?"}),
    [](const auto& told) { return std::string(told.param.name); });

}  // namespace
}  // namespace korvane::platform
