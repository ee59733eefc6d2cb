// The state of the line by name.
#include <gtest/gtest.h>

#include "console/ProgramBench.h"

namespace korvane::console {
namespace {

// The poll is off unless a test starts it.
class LinkNames : public testing::Test, public ProgramBench {
protected:
    void connect() {
        EXPECT_EQ(run("click frmSarn2.btnConnect"), "ok");
        EXPECT_EQ(run("set frmSarn2.TimerGetSettings.Enabled false"), "ok");
        EXPECT_EQ(run("set frmSarn2.TimerRequestData.Enabled false"), "ok");
    }
};

constexpr const char* kLive = "receive 521300000000000000000000000000000000000000AD";

TEST_F(LinkNames, TheStateIsAWord) {
    EXPECT_EQ(run("get linkState"), "ok \"closed\"");
    connect();
    EXPECT_EQ(run("get linkState"), "ok \"silent\"");
    EXPECT_EQ(run(kLive), "ok");
    EXPECT_EQ(run("get linkState"), "ok \"paused\"");
    EXPECT_EQ(run("set frmSarn2.TimerRequestData.Enabled true"), "ok");
    EXPECT_EQ(run("get linkState"), "ok \"live\"");
    EXPECT_EQ(run("wait 1200"), "ok");
    EXPECT_EQ(run("get linkState"), "ok \"late\"");
    EXPECT_EQ(run("get linkState.age"), "ok 1200");
}

TEST_F(LinkNames, TheCountsAreItsMembers) {
    connect();
    EXPECT_EQ(run(kLive), "ok");
    EXPECT_EQ(run("receive 0054010505"), "ok");
    EXPECT_EQ(run("get linkState.frames"), "ok 1");
    EXPECT_EQ(run("get linkState.bytes"), "ok 27");
    EXPECT_EQ(run("get linkState.dropped"), "ok 1");
    EXPECT_EQ(run("get linkState.resyncs"), "ok 1");
    EXPECT_EQ(run("get linkState.unanswered"), "ok 0");
    EXPECT_EQ(run("get linkState.roundTrip"), "ok null");
    EXPECT_EQ(run("get linkState.roundTripWorst"), "ok null");
    EXPECT_EQ(run("get linkState.busy"), "ok false");
}

TEST_F(LinkNames, ARoundTripIsInMilliseconds) {
    connect();
    EXPECT_EQ(run("set frmSarn2.TimerRequestData.Interval 100"), "ok");
    EXPECT_EQ(run("set frmSarn2.TimerRequestData.Enabled true"), "ok");
    EXPECT_EQ(run("wait 104"), "ok");
    EXPECT_EQ(run(kLive), "ok");
    EXPECT_EQ(run("get linkState.roundTrip"), "ok 4");
    EXPECT_EQ(run("get linkState.roundTripWorst"), "ok 4");
}

TEST_F(LinkNames, AWatchNotesEachStateAtItsMoment) {
    EXPECT_EQ(run("watch linkState"), "ok");
    EXPECT_EQ(run("watch linkState.dropped"), "ok");
    connect();
    EXPECT_EQ(run("set frmSarn2.TimerRequestData.Enabled true"), "ok");
    EXPECT_EQ(run(kLive), "ok");
    EXPECT_EQ(run("wait 500"), "ok");
    EXPECT_EQ(run("receive 54010505"), "ok");
    EXPECT_EQ(run("wait 1000"), "ok");
    EXPECT_EQ(run("changes"),
              "ok [[0,\"linkState\",\"silent\"],[0,\"linkState\",\"live\"],[500,\"linkState.dropped\",1],"
              "[1000,\"linkState\",\"late\"]]");
    EXPECT_EQ(run("unwatch linkState"), "ok");
}

TEST_F(LinkNames, CanOnlyBeRead) {
    EXPECT_EQ(run("set linkState \"live\""), "error linkState.state can only be read");
    EXPECT_EQ(run("set linkState.age 5"), "error linkState.age can only be read");
    EXPECT_EQ(run("get linkState.colour"), "error linkState has no property colour");
    EXPECT_EQ(run("get linkState(1)"), "error no open window, table or value is named linkState(1)");
}

}  // namespace
}  // namespace korvane::console
