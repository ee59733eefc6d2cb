#include <gtest/gtest.h>
#include <optional>

#include "fields/Answers.h"

namespace korvane::fields {
namespace {

struct AnswersTest : testing::Test {
    void ask(int from, int count, bool isOpen = true) {
        for (int address = from; address < from + count; ++address) {
            answers.asked(address, isOpen);
        }
    }
    void start() { running.emplace(&answers); }
    void end() { running.reset(); }
    [[nodiscard]] const std::string& text() const { return answers.Text.get(); }

    Answers answers;
    std::optional<Answers::Running> running;
};

TEST_F(AnswersTest, SaysNothingBeforeTheFirstRead) {
    answers.heard(5);
    EXPECT_EQ(text(), "");
    EXPECT_FALSE(answers.Failed);
}

TEST_F(AnswersTest, ASilentEcuIsNoSuccess) {
    start();
    ask(5, 3);
    EXPECT_EQ(text(), "Parameters: waiting");
    EXPECT_FALSE(answers.Failed);
    end();
    EXPECT_EQ(text(), "Parameters: no answer");
    EXPECT_TRUE(answers.Failed);
}

TEST_F(AnswersTest, CountsTheParametersThatWereAskedForAndCame) {
    start();
    ask(5, 3);
    answers.heard(6);
    answers.heard(6);
    answers.heard(90);
    EXPECT_EQ(text(), "Parameters: 1 of 3 answered");
    end();
    EXPECT_TRUE(answers.Failed);
    answers.heard(5);
    answers.heard(7);
    EXPECT_EQ(text(), "Parameters: 3 of 3 answered");
    EXPECT_FALSE(answers.Failed);
}

TEST_F(AnswersTest, ReadsOfOneTimeAreToldTogetherAndLaterOnesAnew) {
    start();
    ask(5, 1);
    {
        const Answers::Running inside(&answers);
        ask(6, 1);
    }
    answers.heard(5);
    answers.heard(6);
    end();
    EXPECT_EQ(text(), "Parameters: 2 of 2 answered");
    start();
    ask(9, 1);
    EXPECT_EQ(text(), "Parameters: waiting");
}

TEST_F(AnswersTest, AClosedPortAnswersNothing) {
    start();
    ask(5, 2);
    answers.heard(5);
    ask(7, 1, false);
    EXPECT_EQ(text(), "Parameters: the port is closed");
    EXPECT_TRUE(answers.Failed);
    end();
    start();
    answers.sent(false);
    EXPECT_EQ(text(), "Parameters: the port is closed");
}

TEST_F(AnswersTest, ASaveHasNoAnswer) {
    start();
    answers.sent(true);
    EXPECT_EQ(text(), "Parameters: sending");
    end();
    EXPECT_EQ(text(), "Parameters: sent, the ECU does not confirm it");
    EXPECT_FALSE(answers.Failed);
}

TEST_F(AnswersTest, APortThatIsOpenAgainWasClosed) {
    start();
    ask(5, 1, false);
    end();
    answers.lineOpened();
    EXPECT_EQ(text(), "Parameters: the port was closed");
    EXPECT_TRUE(answers.Failed);
    start();
    ask(5, 1, false);
    EXPECT_EQ(text(), "Parameters: the port is closed");
    end();
}

}  // namespace
}  // namespace korvane::fields
