#include <gmock/gmock.h>

#include "performance/AccelerationLog.h"
#include "performance/CarFile.h"
#include "platform/QueuedDialogs.h"
#include "support/ErrorOf.h"
#include "support/FileSizeLimit.h"
#include "support/TempFolder.h"

namespace korvane::performance {
namespace {

using support::errorOf;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kRest = "3.9\r\n3.5\r\n2.1\r\n1.4\r\n1.0\r\n0.8\r\n4\r\n980\r\n57.5\r\n3000\r\n7000\r\n";

class CarFileTest : public testing::Test {
protected:
    [[nodiscard]] CarValues read(const std::string& content) const {
        return readCar(folder_.write("car.par", content));
    }
    // The name that a file's first line gives.
    [[nodiscard]] std::string nameIn(const std::string& line) const {
        return read(line + "\r\n" + std::string(kRest)).front();
    }
    [[nodiscard]] int failureOf(const std::filesystem::path& path) const {
        return errorOf([&] { static_cast<void>(readCar(path)); });
    }

    support::TempFolder folder_;
    platform::QueuedDialogs dialogs_;
};

TEST_F(CarFileTest, HasTwelveLinesInItsOrder) {
    EXPECT_THAT(read("Uno Turbo\r\n" + std::string(kRest)),
                ElementsAre("Uno Turbo", "3.9", "3.5", "2.1", "1.4", "1.0", "0.8", "4", "980", "57.5", "3000", "7000"));
}

TEST_F(CarFileTest, ACommaEndsTheNameAndNothingElse) {
    EXPECT_EQ(nameIn("Uno, red"), "Uno");
    EXPECT_EQ(nameIn(",red"), "");
    EXPECT_EQ(nameIn("   Uno Turbo"), "Uno Turbo");
    EXPECT_EQ(nameIn("\"Uno\""), "\"Uno\"");
    const auto values = read("Uno, red\r\n3,9 \r\n" + std::string(kRest));
    EXPECT_EQ(values.at(1), "3,9 ") << "the second line is whole, and the second still";
}

TEST_F(CarFileTest, EmptyLinesAreEmptyValuesAndFurtherOnesDoNotMatter) {
    EXPECT_THAT(read("\n\n\n\n\n\n\n\n\n\n\n\nmore\n"), testing::Each(""));
    EXPECT_EQ(read("Uno\n" + std::string(kRest) + "more\r\n").back(), "7000");
}

TEST_F(CarFileTest, OlderFilesMayBeInWindows1252) {
    EXPECT_EQ(nameIn("Pist\xE4\xE4j\xE4"), "Pistääjä");
    EXPECT_EQ(nameIn("\xEF\xBB\xBFUno"), "Uno");
}

TEST_F(CarFileTest, AFileThatIsTooShortTooLargeOrNoneCantBeRead) {
    std::string eleven(kRest);
    EXPECT_EQ(failureOf(folder_.write("short.par", eleven)), 62);
    EXPECT_EQ(failureOf(folder_.write("empty.par", "")), 62);
    EXPECT_EQ(failureOf(folder_ / "none.par"), 53);
    EXPECT_EQ(failureOf(folder_.path()), 75);
    EXPECT_EQ(failureOf(folder_.write("large.par", std::string(kLargestCarFile + 1, '\n'))), 75);
    EXPECT_EQ(failureOf(folder_.write("full.par", std::string(kLargestCarFile, '\n'))), 0);
}

TEST_F(CarFileTest, IsWrittenWithOneValueALine) {
    const CarValues values{"Uno, red", "3.9", "3.5", "2.1", "1.4", "1.0", "0.8", "4", "980", "57.5", "3000", "7000"};
    folder_.write("car.par", "an older and much longer file\r\n" + std::string(kRest) + std::string(kRest));
    EXPECT_TRUE(saveCar(folder_ / "car.par", values, dialogs_));
    EXPECT_EQ(folder_.read("car.par"), "Uno, red\r\n" + std::string(kRest));
    EXPECT_THAT(dialogs_.takeMessages(), IsEmpty());
}

TEST_F(CarFileTest, AFailedWriteIsTold) {
    EXPECT_FALSE(saveCar(folder_.nowhere(), {}, dialogs_));
    const auto messages = dialogs_.takeMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages.front().text, "Error tablesave: Path not found");
}

TEST_F(CarFileTest, TheLogIsBesideItWithALineForEachPull) {
    const auto car = folder_ / "car.par";
    appendToLog(car, {2026, 1, 5, 12, 0, 9}, "one");
    appendToLog(car, {2026, 11, 25, 2, 3, 4}, "two");
    EXPECT_EQ(folder_.read("car.par.txt"), "2026-01-05 12:00:09    one\r\n2026-11-25 02:03:04    two\r\n");
    EXPECT_EQ(errorOf([&] { appendToLog(folder_.nowhere(), {}, "one"); }), 76);
}

TEST_F(CarFileTest, ADiskThatFillsUpLeavesNoPartOfALineInTheLog) {
    const auto car = folder_ / "car.par";
    const auto append = [&](const char* text) { appendToLog(car, {2026, 1, 5, 12, 0, 9}, text); };
    append("one");
    const std::string one = folder_.read("car.par.txt");
    {
        const support::FileSizeLimit full(one.size() + 10);
        EXPECT_EQ(errorOf([&] { append("two"); }), 61);
    }
    append("three");
    EXPECT_EQ(folder_.read("car.par.txt"), one + "2026-01-05 12:00:09    three\r\n");
}

}  // namespace
}  // namespace korvane::performance
