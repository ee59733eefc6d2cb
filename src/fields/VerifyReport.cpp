#include "fields/VerifyReport.h"

#include <algorithm>
#include <utility>

namespace korvane::fields {

namespace {

constexpr auto kNoLonger = "verified before the last changes";
constexpr auto kWasClosed = "not verified: the port was closed";

}  // namespace

void Differences::add(const std::string& name, const std::string& is, const std::string& sent) {
    if (++count_ <= kNamed) {
        named_ += (named_.empty() ? "" : "; ") + name + " is " + is + ", sent " + sent;
    }
}

std::string Differences::words() const {
    if (count_ == 0) {
        return kNone;
    }
    std::string words = count_ == 1 ? named_ : std::to_string(count_) + " differ: " + named_;
    if (count_ > kNamed) {
        words += "; and " + std::to_string(count_ - kNamed) + " more";
    }
    return words;
}

std::string notVerified(link::ReadEnd end) {
    return "not verified: " + std::string(link::wordsOf(end));
}

int VerifyReport::begin(const std::string& subject, std::function<void()> again) {
    if (std::none_of(entries_.begin(), entries_.end(), [](const Entry& each) { return each.runs; })) {
        entries_.clear();
    }
    std::erase_if(entries_, [&](const Entry& each) { return each.subject == subject; });
    entries_.push_back({++last_, subject, "reading back", true, false, std::move(again)});
    show();
    return last_;
}

void VerifyReport::end(int number, const std::string& verdict, bool failed) {
    for (auto& each : entries_) {
        if (each.number == number) {
            each.verdict = verdict;
            each.runs = false;
            each.failed = failed;
        }
    }
    show();
}

VerifyReport::~VerifyReport() {
    for (auto* const object : observed_) {
        object->removeObserver(*this);
    }
}

void VerifyReport::holdsWhile(int number, controls::Object& of, std::function<bool()> holds) {
    for (auto& each : entries_) {
        if (each.number == number) {
            each.holds = holds;
        }
    }
    if (std::find(observed_.begin(), observed_.end(), &of) == observed_.end()) {
        observed_.push_back(&of);
        of.addObserver(*this);
    }
}

void VerifyReport::objectGone(const controls::Object& object) {
    std::erase(observed_, &object);
}

void VerifyReport::propertyChanged(controls::Object&, const void*) {
    bool isOld = false;
    for (auto& each : entries_) {
        if (each.holds && !each.holds()) {
            each.holds = {};
            each.verdict = kNoLonger;
            isOld = true;
        }
    }
    if (isOld) {
        show();
    }
}

void VerifyReport::lineOpened() {
    const auto closed = notVerified(link::ReadEnd::Closed);
    for (auto& each : entries_) {
        each.verdict = each.verdict == closed ? kWasClosed : each.verdict;
    }
    show();
}

// A send may replace the entries.
void VerifyReport::sendAgain() {
    std::vector<std::function<void()>> sends;
    for (const auto& each : entries_) {
        if (each.failed && each.again) {
            sends.push_back(each.again);
        }
    }
    for (const auto& send : sends) {
        send();
    }
}

void VerifyReport::show() {
    std::string text;
    for (const auto& each : entries_) {
        text += (text.empty() ? "" : "; ") + each.subject + ": " + each.verdict;
    }
    Text = text;
    Failed = std::any_of(entries_.begin(), entries_.end(), [](const Entry& each) { return each.failed; });
}

}  // namespace korvane::fields
