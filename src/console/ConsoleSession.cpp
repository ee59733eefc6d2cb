#include "console/ConsoleSession.h"

#include <algorithm>
#include <utility>

namespace korvane::console {

void ConsoleSession::feed(std::string_view bytes) {
    while (!bytes.empty() && !ended_) {
        const auto end = bytes.find('\n');
        append(bytes.substr(0, end));
        if (end == std::string_view::npos) {
            break;
        }
        endLine();
        bytes.remove_prefix(end + 1);
    }
    executeAll();
}

void ConsoleSession::endOfInput() {
    if (ended_) {
        return;
    }
    ended_ = true;
    if (!open_.text.empty() || open_.tooLong) {
        endLine();
    }
    executeAll();
}

void ConsoleSession::append(std::string_view part) {
    if (open_.tooLong) {
        return;
    }
    if (open_.text.empty()) {
        part.remove_prefix(std::min(part.find_first_not_of(" \t"), part.size()));
    }
    if (open_.text.size() + part.size() > kLongestLine) {
        open_ = {{}, true, (open_.text.empty() ? part : std::string_view(open_.text)).front() == '#'};
        return;
    }
    open_.text += part;
}

void ConsoleSession::endLine() {
    if (open_.text.ends_with('\r')) {
        open_.text.pop_back();
    }
    // A blank line gets no reply, and neither does a comment: there is nothing to keep.
    const bool silent = open_.tooLong ? open_.comment : open_.text.empty() || open_.text.front() == '#';
    if (!silent) {
        waiting_.push_back(open_);
    }
    open_ = {};
}

void ConsoleSession::executeAll() {
    if (std::exchange(stepping_, true)) {
        return;
    }
    while (!executing_ && !waiting_.empty() && !console_.ended()) {
        const Line line = std::move(waiting_.front());
        waiting_.pop_front();
        execute(line);
    }
    stepping_ = false;
    if (console_.ended()) {
        waiting_.clear();
    } else if (!executing_) {
        goOn();
    }
}

void ConsoleSession::goOn() {
    if (ended_) {
        console_.quit();
    } else {
        Wanting();
    }
}

void ConsoleSession::execute(const Line& line) {
    executing_ = true;
    const auto reply = line.tooLong
                           ? std::optional("error the line is longer than " + std::to_string(kLongestLine) + " bytes")
                           : console_.execute(line.text);
    unanswered_ = reply;
    if (!reply || console_.ended()) {
        answer();
        return;
    }
    console_.whenEnded([this] {
        answer();
        executeAll();
    });
}

void ConsoleSession::answer() {
    executing_ = false;
    if (const auto reply = std::exchange(unanswered_, std::nullopt)) {
        sink_(*reply + '\n');
    }
}

}  // namespace korvane::console
