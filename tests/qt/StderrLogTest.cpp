#include <cstdlib>
#include <gtest/gtest.h>

#include "platform/StderrLog.h"

namespace korvane::platform {
namespace {

class StderrLogTest : public testing::Test {
protected:
    ~StderrLogTest() override { ::unsetenv("KORVANE_DEBUG"); }

    static std::string written() {
        StderrLog log;
        testing::internal::CaptureStderr();
        log.write("Not command 17");
        return testing::internal::GetCapturedStderr();
    }
};

TEST_F(StderrLogTest, IsSilentForTheUser) {
    ::unsetenv("KORVANE_DEBUG");
    EXPECT_EQ(written(), "");
}

TEST_F(StderrLogTest, WritesLinesForTheDeveloper) {
    ::setenv("KORVANE_DEBUG", "1", 1);
    EXPECT_EQ(written(), "Not command 17\n");
}

}  // namespace
}  // namespace korvane::platform
