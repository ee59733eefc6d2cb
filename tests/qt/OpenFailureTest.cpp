#include <gtest/gtest.h>
#include <string>

#include "platform/qt/OpenFailure.h"

namespace korvane::platform {
namespace {

const OpenAttempt kAttempt{3, 76800, "/dev/ttyUSB0", "the reason"};

TEST(OpenFailure, NothingFoundAsksForTheAdapter) {
    const auto error = openError(OpenFailure::NothingFound, {3, 57600, "", ""});
    EXPECT_EQ(error.number(), 8002);
    EXPECT_STREQ(error.what(),
                 "No device stands for COM3: no serial port was found. Plug the adapter in, or start the program with "
                 "--port COM3=/dev/...");
}

TEST(OpenFailure, PortWithoutADeviceTellsWhichHaveOne) {
    const auto error = openError(OpenFailure::NoDeviceForPort, {4, 57600, "", "COM1 (/dev/ttyUSB0)"});
    EXPECT_EQ(error.number(), 8002);
    EXPECT_STREQ(error.what(),
                 "No device stands for COM4. Found: COM1 (/dev/ttyUSB0). Choose one of these, plug the adapter in, or "
                 "start the program with --port COM4=/dev/...");
}

TEST(OpenFailure, MissingDeviceIsNamed) {
    const auto error = openError(OpenFailure::Missing, kAttempt);
    EXPECT_EQ(error.number(), 8002);
    EXPECT_STREQ(error.what(),
                 "COM3 (/dev/ttyUSB0): no such device. Plug the adapter in, or start the program with "
                 "--port COM3=/dev/...");
}

TEST(OpenFailure, NoPermissionTellsOfTheGroup) {
    const auto error = openError(OpenFailure::NoPermission, kAttempt);
    EXPECT_EQ(error.number(), 8010);
    EXPECT_STREQ(error.what(),
                 "COM3 (/dev/ttyUSB0): no permission. Join the dialout group with \"sudo usermod -aG dialout $USER\", "
                 "then log out and in again.");
}

TEST(OpenFailure, DeviceInUseAsksToCloseTheOther) {
    const auto error = openError(OpenFailure::InUse, kAttempt);
    EXPECT_EQ(error.number(), 8005);
    EXPECT_STREQ(error.what(), "COM3 (/dev/ttyUSB0): in use by another program. Close that program and try again.");
}

TEST(OpenFailure, RefusedRateIsNamed) {
    const auto error = openError(OpenFailure::RefusedRate, kAttempt);
    EXPECT_EQ(error.number(), 8015);
    EXPECT_STREQ(error.what(), "COM3 (/dev/ttyUSB0): the device refuses 76800 baud. Choose another speed.");
}

TEST(OpenFailure, AnythingElseGivesTheReason) {
    const auto error = openError(OpenFailure::Other, kAttempt);
    EXPECT_EQ(error.number(), 8012);
    EXPECT_STREQ(error.what(), "COM3 (/dev/ttyUSB0) can't be opened: the reason. Is it a serial port?");
}

}  // namespace
}  // namespace korvane::platform
