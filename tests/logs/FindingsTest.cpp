// The line that a person reads after a load.
#include <gmock/gmock.h>

#include "logs/LogBench.h"
#include "logs/LogFindings.h"

namespace korvane::logs {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

class Findings : public ReaderBench {
protected:
    std::string of(const LogText& text) {
        load(text);
        return findingsOf(log_);
    }
};

TEST_F(Findings, AreNoneBeforeTheFirstLoad) {
    EXPECT_EQ(findingsOf(log_), "");
}

TEST_F(Findings, AWholeLogHasRowsSpanAndRate) {
    LogText text;
    for (int second = 0; second < 4; ++second) {
        text.row("12:00:0" + std::to_string(second)).row("12:00:0" + std::to_string(second));
    }
    EXPECT_EQ(of(text), "log.txt: 8 rows, 12:00:00 to 12:00:03, 2.7 rows a second");
}

TEST_F(Findings, OneMomentHasNoRate) {
    EXPECT_EQ(of(LogText().rows(3)), "log.txt: 3 rows, 12:00:00 to 12:00:00");
    EXPECT_EQ(of(LogText()), "log.txt: 0 rows");
}

TEST_F(Findings, ATimeThatGoesBackLeavesNoRate) {
    EXPECT_EQ(of(LogText().row("12:00:05").row("12:00:09").row("12:00:03").row("12:00:07")),
              "log.txt: 4 rows, 12:00:05 to 12:00:07; time goes back, row 3");
}

TEST_F(Findings, ALoadThatEndsEarlySaysWhereAndWhy) {
    EXPECT_THAT(of(LogText().rows(5).set(4, 1, "abc")), HasSubstr("3 rows"));
    EXPECT_THAT(findingsOf(log_), EndsWith("; ends early at row 4: Type mismatch"));
}

TEST_F(Findings, TooManyLinesAreToldAsSuch) {
    LogText text;
    for (int i = 0; i < 100'001; ++i) {
        text.bytes += "1\r\n";
    }
    EXPECT_EQ(of(text), "log.txt: 100000 rows; more than 100000 lines");
}

TEST_F(Findings, AFileThatCantBeReadIsToldAsSuch) {
    log_.LoadFromFile(folder_.nowhere());
    EXPECT_EQ(findingsOf(log_), "file: not read: File not found");
    load(LogText().rows(3));
    log_.LoadFromFile(folder_.path());
    EXPECT_THAT(findingsOf(log_), EndsWith(": not read: Path/File access error; 3 rows of zeros"));
}

TEST_F(Findings, ANameInAnotherEncodingIsText) {
    log_.LoadFromFile(folder_.path() / "dr\xE4ve.txt");
    EXPECT_EQ(findingsOf(log_), "dr\u00e4ve.txt: not read: File not found");
}

TEST_F(Findings, EachKindNamesItsFirstRow) {
    EXPECT_THAT(of(LogText().rows(4).set(2, 2, "12.3456789").set(3, 2, "12.3456789")),
                EndsWith("; cells run together, row 2"));
    EXPECT_THAT(of(LogText().rows(4).nuls(3, 8, 5)), EndsWith("; NUL characters, row 3"));
    EXPECT_THAT(of(LogText().rows(4).nuls(2, 16, 90)), EndsWith("; ignition debug rows, row 2"));
    EXPECT_THAT(of(LogText().rows(4).set(3, 3, "21845")), EndsWith("; ignition debug rows, row 3"));
    EXPECT_THAT(of(LogText().rows(4).set(3, 7, "1,5")), EndsWith("; the other decimal separator, row 3"));
    EXPECT_THAT(of(LogText().row("12:00:05").row("12:00:04")), EndsWith("; time goes back, row 2"));
    EXPECT_THAT(of(LogText().rows(2).cutTail(100)), EndsWith("; last line cut, row 2"));
}

TEST_F(Findings, TheFailingRowIsLookedAtAsWell) {
    EXPECT_THAT(of(LogText().rows(2).set(1, 5, "1,5")),
                EndsWith("; ends early at row 1: Type mismatch; the other decimal separator, row 1"));
}

TEST_F(Findings, MidnightIsNoTimeThatGoesBack) {
    EXPECT_EQ(of(LogText().row("23:59:59").row("00:00:01")), "log.txt: 2 rows, 23:59:59 to 00:00:01, 1 rows a second");
}

TEST_F(Findings, OnlyTheFirstOfEachKindIsTold) {
    EXPECT_THAT(of(LogText().rows(4).nuls(3, 8, 5).nuls(4, 8, 5)), Not(HasSubstr("row 4")));
}

}  // namespace
}  // namespace korvane::logs
