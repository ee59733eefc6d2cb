#include <gmock/gmock.h>

#include "console/ConsoleSession.h"
#include "console/TestWindow.h"

namespace korvane::console {
namespace {

using testing::ElementsAre;

class Session : public testing::Test, public ConsoleOnTestWindow {
protected:
    std::vector<std::string> replies;
    ConsoleSession session{console, [this](std::string_view reply) { replies.emplace_back(reply); }};
};

TEST_F(Session, ExecutesLinesHoweverTheyArrive) {
    session.feed("no");
    session.feed("w\n\n# comment\nget frmTest.Visi");
    EXPECT_THAT(replies, ElementsAre("ok 0\n"));
    session.feed("ble\r\nnow\nno");
    EXPECT_THAT(replies, ElementsAre("ok 0\n", "ok true\n", "ok 0\n"));
}

TEST_F(Session, BytesThatComeWhileACommandWaitsAreServedAfterIt) {
    window->btnGo.Click = [this] {
        session.feed("now\nget frmTest.Caption\n");
        pump.wait(100);
        window->Caption = "done";
    };
    session.feed("click frmTest.btnGo\nget frmTest.Tag\n");
    EXPECT_THAT(replies, ElementsAre("ok\n", "ok \"\"\n", "ok 100\n", "ok \"done\"\n"));
}

TEST_F(Session, ALineTooLongGetsOneErrorAndTheNextIsServed) {
    const std::string part(1 << 18, 'x');
    for (int i = 0; i < 5; ++i) {
        session.feed(part);
    }
    EXPECT_TRUE(replies.empty());
    session.feed("\nnow\n");
    EXPECT_THAT(replies, ElementsAre("error the line is longer than 1048576 bytes\n", "ok 0\n"));
}

TEST_F(Session, ACommentOfAnyLengthGetsNoReply) {
    session.feed("  # " + std::string(2 << 20, 'x') + "\nnow\n");
    session.feed("#");
    session.feed(std::string(2 << 20, 'x') + "\nnow\n");
    EXPECT_THAT(replies, ElementsAre("ok 0\n", "ok 0\n"));
}

TEST_F(Session, WhatAnOverlongLineBeginsWithTellsWhatItIs) {
    session.feed("x" + std::string(1 << 20, 'x'));
    session.feed("#" + std::string(2 << 20, '#') + "\nnow\n");
    EXPECT_THAT(replies, ElementsAre("error the line is longer than 1048576 bytes\n", "ok 0\n"));
}

TEST_F(Session, ABlankLineOfAnyLengthGetsNoReply) {
    session.feed(std::string(2 << 20, ' '));
    session.feed("\t\r\nnow\n");
    session.feed(std::string(2 << 20, ' '));
    session.feed("# words\nnow\n");
    EXPECT_THAT(replies, ElementsAre("ok 0\n", "ok 0\n"));
}

TEST_F(Session, TheLongestLineIsStillExecuted) {
    const std::string command = "set frmTest.Tag \"";
    session.feed(command + std::string((1 << 20) - command.size() - 1, 'x') + "\"\n");
    EXPECT_THAT(replies, ElementsAre("ok\n"));
}

TEST_F(Session, TheEndOfInputServesTheLastLineAndQuits) {
    session.feed("now\nnow");
    session.endOfInput();
    session.endOfInput();
    EXPECT_THAT(replies, ElementsAre("ok 0\n", "ok 0\n"));
    EXPECT_EQ(quits, 1);
    session.feed("now\n");
    EXPECT_EQ(replies.size(), 2U);
}

TEST_F(Session, TheEndOfInputInsideACommandWaitsForIt) {
    window->btnGo.Click = [this] {
        session.endOfInput();
        EXPECT_EQ(quits, 0);
    };
    session.feed("click frmTest.btnGo\nnow\n");
    EXPECT_THAT(replies, ElementsAre("ok\n", "ok 0\n"));
    EXPECT_EQ(quits, 1);
}

TEST_F(Session, NothingIsExecutedAfterQuit) {
    session.feed("quit\nnow\n");
    session.endOfInput();
    EXPECT_THAT(replies, ElementsAre("ok\n"));
    EXPECT_EQ(quits, 1);
}

}  // namespace
}  // namespace korvane::console
