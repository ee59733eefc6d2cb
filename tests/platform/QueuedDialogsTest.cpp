#include <gmock/gmock.h>

#include "platform/QueuedDialogs.h"

namespace korvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ShownDialogs : public Dialogs {
public:
    void show(const MessageBox& box) override { shown.push_back(box.text); }
    [[nodiscard]] std::string choose(const FileDialog&) override { return "chosen by hand"; }
    [[nodiscard]] Answer ask(const Question&) override { return {false, false}; }
    std::vector<std::string> shown;
};

FileDialog saveDialog() {
    return {FileDialog::Kind::Save, "Save Settings", "All Files (*.txt)|*.txt"};
}

TEST(QueuedDialogs, MessagesAreAnsweredAtOnceAndRemembered) {
    QueuedDialogs dialogs;
    dialogs.show({"Virhe", "one", MessageIcon::Exclamation});
    dialogs.show({"", "two"});
    const auto messages = dialogs.takeMessages();
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0].title, "Virhe");
    EXPECT_EQ(messages[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(messages[1].text, "two");
    EXPECT_EQ(messages[1].icon, MessageIcon::None);
    EXPECT_THAT(dialogs.takeMessages(), IsEmpty());
}

TEST(QueuedDialogs, AFileDialogWithNothingQueuedIsCancelled) {
    QueuedDialogs dialogs;
    EXPECT_EQ(dialogs.choose(saveDialog()), "");
    const auto shown = dialogs.takeFileDialogs();
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(shown[0].kind, FileDialog::Kind::Save);
    EXPECT_EQ(shown[0].title, "Save Settings");
    EXPECT_EQ(shown[0].filter, "All Files (*.txt)|*.txt");
}

TEST(QueuedDialogs, AnswersQueueUpAndAnEmptyOneIsACancel) {
    QueuedDialogs dialogs;
    dialogs.answerFile("a.txt");
    dialogs.answerFile("");
    dialogs.answerFile("b.txt");
    EXPECT_EQ(dialogs.choose(saveDialog()), "a.txt");
    EXPECT_EQ(dialogs.choose(saveDialog()), "");
    EXPECT_EQ(dialogs.choose(saveDialog()), "b.txt");
    EXPECT_EQ(dialogs.choose(saveDialog()), "");
}

TEST(QueuedDialogs, AQuestionWithoutAUserIsAnsweredWithYes) {
    QueuedDialogs dialogs;
    EXPECT_TRUE(dialogs.ask({"", "leave?", "Yes", "No", "Never again"}).yes);
    EXPECT_FALSE(dialogs.ask({"", "leave?", "Yes", "No", "Never again"}).stop);
    EXPECT_EQ(dialogs.takeQuestions().size(), 2U);
    EXPECT_THAT(dialogs.takeMessages(), IsEmpty());
}

TEST(QueuedDialogs, AQuestionGetsThePreparedAnswerOrTheUsers) {
    ShownDialogs shown;
    QueuedDialogs dialogs(&shown);
    dialogs.answerQuestion({true, true});
    EXPECT_TRUE(dialogs.ask({}).yes);
    EXPECT_FALSE(dialogs.ask({}).yes);
}

TEST(QueuedDialogs, WithADisplayMessagesAreShownThereToo) {
    ShownDialogs shown;
    QueuedDialogs dialogs(&shown);
    dialogs.show({"", "words"});
    EXPECT_THAT(shown.shown, ElementsAre("words"));
    EXPECT_EQ(dialogs.takeMessages().size(), 1U);
}

TEST(QueuedDialogs, WithADisplayAQueuedAnswerComesFirst) {
    ShownDialogs shown;
    QueuedDialogs dialogs(&shown);
    dialogs.answerFile("queued");
    EXPECT_EQ(dialogs.choose(saveDialog()), "queued");
    EXPECT_EQ(dialogs.choose(saveDialog()), "chosen by hand");
}

TEST(QueuedDialogs, ARecordThatNobodyReadsKeepsTheLatestThousand) {
    QueuedDialogs dialogs;
    for (int i = 0; i < 1500; ++i) {
        dialogs.show({"", std::to_string(i)});
    }
    const auto messages = dialogs.takeMessages();
    ASSERT_EQ(messages.size(), 1000U);
    EXPECT_EQ(messages.front().text, "500");
    EXPECT_EQ(messages.back().text, "1499");
}

TEST(QueuedDialogs, IconsHaveNames) {
    EXPECT_EQ(nameOf(MessageIcon::None), "none");
    EXPECT_EQ(nameOf(MessageIcon::Information), "information");
    EXPECT_EQ(nameOf(MessageIcon::Exclamation), "exclamation");
    EXPECT_EQ(nameOf(MessageIcon::Critical), "critical");
}

}  // namespace
}  // namespace korvane::platform
