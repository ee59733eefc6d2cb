#include <gtest/gtest.h>

#include "logs/clsTXTdata.h"
#include "support/TempFolder.h"

namespace korvane::logs {
namespace {

TEST(Reader, AFileOfOneLineHasOneRow) {
    const support::TempFolder folder;
    core::LiveTable live;
    clsTXTdata log(live, '.');
    EXPECT_FALSE(log.LoadFromFile(folder.write("log.txt", "12:00:00  892       85        21\r\n")));
    EXPECT_EQ(log.ItemCount(), 1);
    EXPECT_EQ(log.TData(1, 1), "89.2");
    EXPECT_EQ(log.TData(3, 1), "21");
    EXPECT_EQ(log.TData(24, 1), "15");
    EXPECT_EQ(log.TData(1, 0), "RPM");
    EXPECT_FALSE(log.getNextSimDataPacket());
}

}  // namespace
}  // namespace korvane::logs
