// Dialogs with answers prepared beforehand, and a record of what was shown.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "platform/Dialogs.h"

namespace korvane::platform {

// Without a display every message box is answered with OK at once, and a file dialog with nothing queued is cancelled.
// With one (`shown`), boxes and unanswered file dialogs are shown there too.
class QueuedDialogs : public Dialogs {
public:
    explicit QueuedDialogs(Dialogs* shown = nullptr) : shown_(shown) {}

    void show(const MessageBox& box) override;
    [[nodiscard]] std::string choose(const FileDialog& dialog) override;
    [[nodiscard]] Answer ask(const Question& question) override;

    // What the next file dialog answers; empty is cancel. Answers queue up.
    void answerFile(std::string path) { answers_.push_back(std::move(path)); }

    // What the next question is answered; it is not shown then.
    void answerQuestion(const Answer& answer) { questionAnswers_.push_back(answer); }

    // What was shown since the last call.
    [[nodiscard]] std::vector<MessageBox> takeMessages();
    [[nodiscard]] std::vector<FileDialog> takeFileDialogs();
    [[nodiscard]] std::vector<Question> takeQuestions();

private:
    Dialogs* shown_;
    std::deque<std::string> answers_;
    std::deque<MessageBox> messages_;
    std::deque<FileDialog> fileDialogs_;
    std::deque<Question> questions_;
    std::deque<Answer> questionAnswers_;
};

}  // namespace korvane::platform
