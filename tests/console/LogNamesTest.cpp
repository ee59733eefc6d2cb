// The log viewer's reader by its names.
#include <gtest/gtest.h>

#include "console/ProgramBench.h"

namespace korvane::console {
namespace {

class LogNames : public testing::Test, public ProgramBench {
protected:
    void open() { program->clsTXTdata = &reader_.emplace(program->tables(), '.'); }

    std::optional<logs::clsTXTdata> reader_;
};

TEST_F(LogNames, AreNullOrAnErrorWhileTheViewerIsClosed) {
    EXPECT_EQ(run("get clsTXTdata.ItemCount"), "ok null");
    EXPECT_EQ(run("get clsTXTdata.TData(1,1)"), "ok null");
    for (const auto* call : {"LoadFromFile x", "getNextSimDataPacket", "getSimSpeed"}) {
        EXPECT_TRUE(run(std::string("call clsTXTdata.") + call).starts_with("error ")) << call;
    }
}

TEST_F(LogNames, ReachTheOpenViewersReader) {
    open();
    const std::string file = folder.write("log.txt", "12:00:00 892 80\r\n12:00:00 900 81\r\n").string();
    EXPECT_EQ(run("call clsTXTdata.LoadFromFile " + file), "ok false");
    EXPECT_EQ(run("get clsTXTdata.ItemCount"), "ok 2");
    EXPECT_EQ(run("get clsTXTdata.TData(1,1)"), "ok \"89.2\"");
    EXPECT_EQ(run("get clsTXTdata.TData(1,0)"), "ok \"RPM\"");
    EXPECT_EQ(run("call clsTXTdata.getSimSpeed"), "ok 15");
    EXPECT_EQ(run("call clsTXTdata.getNextSimDataPacket"), "ok false");
    EXPECT_EQ(run("get liveValues(0).value"), "ok 892");
    EXPECT_TRUE(run("get clsTXTdata.TData(31,1)").starts_with("error "));
    EXPECT_TRUE(run("get clsTXTdata.TData(0,100001)").starts_with("error "));
    EXPECT_TRUE(run("set clsTXTdata.ItemCount 3").starts_with("error "));
}

TEST_F(LogNames, ATextInTheReplayIsAnError) {
    open();
    const std::string file = folder.write("log.txt", "12:00:00 892 abc\r\n").string();
    EXPECT_EQ(run("call clsTXTdata.LoadFromFile " + file), "ok false");
    EXPECT_EQ(run("call clsTXTdata.getNextSimDataPacket"), "error clsTXTdata.getNextSimDataPacket: Type mismatch");
}

}  // namespace
}  // namespace korvane::console
