#include "platform/QueuedDialogs.h"

#include <iterator>

namespace korvane::platform {

namespace {

// If the record is not read, only the latest entries are kept.
constexpr std::size_t kRecordLimit = 1000;

template <class Item>
void record(std::deque<Item>& items, const Item& item) {
    items.push_back(item);
    if (items.size() > kRecordLimit) {
        items.pop_front();
    }
}

template <class Item>
std::vector<Item> drain(std::deque<Item>& items) {
    std::vector<Item> all(std::make_move_iterator(items.begin()), std::make_move_iterator(items.end()));
    items.clear();
    return all;
}

}  // namespace

void QueuedDialogs::show(const MessageBox& box) {
    record(messages_, box);
    if (shown_ != nullptr) {
        shown_->show(box);
    }
}

std::string QueuedDialogs::choose(const FileDialog& dialog) {
    record(fileDialogs_, dialog);
    if (answers_.empty()) {
        return shown_ != nullptr ? shown_->choose(dialog) : std::string();
    }
    auto answer = std::move(answers_.front());
    answers_.pop_front();
    return answer;
}

Answer QueuedDialogs::ask(const Question& question) {
    record(questions_, question);
    if (questionAnswers_.empty()) {
        return shown_ != nullptr ? shown_->ask(question) : Answer();
    }
    const auto answer = questionAnswers_.front();
    questionAnswers_.pop_front();
    return answer;
}

std::vector<Question> QueuedDialogs::takeQuestions() {
    return drain(questions_);
}

std::vector<MessageBox> QueuedDialogs::takeMessages() {
    return drain(messages_);
}

std::vector<FileDialog> QueuedDialogs::takeFileDialogs() {
    return drain(fileDialogs_);
}

}  // namespace korvane::platform
