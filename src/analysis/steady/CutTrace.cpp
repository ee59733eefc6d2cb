#include "analysis/steady/CutTrace.h"

#include <algorithm>
#include <cmath>

namespace korvane::steady {

namespace {

constexpr double kFreshAir = 20.0;
constexpr double kEarlyShare = 0.3;
constexpr double kLateShare = 0.632;
// Between both a first-order sensor needs so many time constants.
const double kBetween = std::log((1.0 - kEarlyShare) / (1.0 - kLateShare));
constexpr double kAfter = 1.8;  // seconds for which the return is watched

}  // namespace

CutTrace::Outcome CutTrace::add(double seconds, double lambda, bool cut) {
    const Reading now{seconds, lambda};
    gap_ = last_.seconds > 0.0 ? seconds - last_.seconds : 0.0;
    Outcome outcome = Outcome::None;
    if (phase_ == Phase::Cut && !cut) {
        endCut(seconds);
    }
    if (phase_ == Phase::Quiet) {
        if (cut) {
            beginCut(seconds);
        } else {
            quiet(lambda);
        }
    }
    if (phase_ != Phase::Quiet) {
        outcome = follow(now, cut);
    }
    last_ = now;
    return outcome;
}

std::optional<Answer> CutTrace::takeAnswer() {
    const auto taken = answer_;
    answer_ = next_;
    next_.reset();
    return taken;
}

void CutTrace::quiet(double lambda) {
    levels_ = std::min(levels_ + 1, 8);
    level_ += (lambda - level_) / levels_;
}

void CutTrace::beginCut(double seconds) {
    phase_ = Phase::Cut;
    cutAt_ = seconds - 0.5 * gap_;
    early_ = 0.0;
    late_ = 0.0;
    told_ = levels_ < 3;
    count_ = 0;
    firstCut_ = seconds;
    peak_ = 0.0;
}

void CutTrace::endCut(double seconds) {
    constexpr double kSettled = 19.3;
    phase_ = Phase::Ended;
    endedAt_ = seconds - 0.5 * gap_;
    settled_ = last_.lambda > kSettled;
}

CutTrace::Outcome CutTrace::follow(const Reading& now, bool cut) {
    watchRise(now);
    peak_ = std::max(peak_, now.lambda);
    if (phase_ == Phase::Cut) {
        lastCut_ = now.seconds;
        if (!told_ && late_ == 0.0 && now.seconds - cutAt_ > kLatest) {
            told_ = true;
            return Outcome::NotLean;
        }
        return Outcome::None;
    }
    if (count_ < after_.size() && (count_ == 0 || now.seconds - after_[count_ - 1].seconds > 0.015)) {
        after_[count_++] = now;
    }
    const bool over = cut || now.seconds - endedAt_ > kAfter;
    return over ? judgeReturn(now, cut) : Outcome::None;
}

double CutTrace::crossing(const Reading& now, double level) const {
    const double rise = now.lambda - last_.lambda;
    const double share = rise > 0.0 ? std::clamp((level - last_.lambda) / rise, 0.0, 1.0) : 1.0;
    return last_.seconds + share * (now.seconds - last_.seconds);
}

void CutTrace::watchRise(const Reading& now) {
    const double early = level_ + kEarlyShare * (kFreshAir - level_);
    const double late = level_ + kLateShare * (kFreshAir - level_);
    if (early_ == 0.0 && now.lambda > early) {
        early_ = crossing(now, early);
    }
    constexpr double kLowestLevel = 10.2;
    constexpr double kHighestLevel = 16.5;
    if (late_ != 0.0 || now.lambda <= late || level_ > kHighestLevel || level_ < kLowestLevel) {
        return;
    }
    late_ = crossing(now, late);
    const bool steady = phase_ == Phase::Cut && levels_ >= 6;
    if (steady && late_ > cutAt_) {
        (answer_ ? next_ : answer_) = Answer{cutAt_, late_ - cutAt_, (late_ - early_) / kBetween};
    }
}

CutTrace::Outcome CutTrace::judgeReturn(const Reading& now, bool cutAgain) {
    constexpr double kBack = 17.0;
    const bool back = now.lambda < kBack;
    if (settled_ && late_ != 0.0 && back && !cutAgain) {
        measureReturn();
    }
    const Outcome outcome = cutAgain || told_ ? Outcome::None : outcomeOf(back);
    phase_ = Phase::Quiet;
    levels_ = 0;
    if (cutAgain) {
        beginCut(now.seconds);
    }
    return outcome;
}

CutTrace::Outcome CutTrace::outcomeOf(bool back) {
    constexpr int kWeak = 2;
    if (late_ != 0.0) {
        weak_ = 0;
        return back ? Outcome::Proved : Outcome::NotBack;
    }
    weak_ = weak() ? weak_ + 1 : weak_;
    return weak_ >= kWeak ? Outcome::NotLean : Outcome::None;
}

// Lambda has answered a short cut with less than half of what some frame must have seen with that lag: the last one
// before the answer's peak, or the first one behind it.
bool CutTrace::weak() const {
    constexpr double kClear = 1.0;
    constexpr double kHalf = 0.5;
    if (lag_ <= 0.0) {
        return false;
    }
    const auto rise = [this](double seconds) { return 1.0 - std::exp(-std::max(seconds, 0.0) / lag_); };
    const double cut = lastCut_ - firstCut_;
    const double share = std::max(rise(cut - gap_), rise(cut) * std::exp(-gap_ / lag_));
    const double seen = kHalf * (kFreshAir - level_) * share;
    return seen > kClear && peak_ - level_ < seen;
}

double CutTrace::settledLevel() const {
    double sum = 0.0;
    int count = 0;
    for (std::size_t i = 0; i < count_; ++i) {
        if (after_[i].seconds - endedAt_ > kAfter - 0.6) {
            sum += after_[i].lambda;
            ++count;
        }
    }
    return count > 0 ? sum / count : kFreshAir;
}

double CutTrace::returnCrossing(double level) const {
    for (std::size_t i = 1; i < count_; ++i) {
        const Reading& a = after_[i - 1];
        const Reading& b = after_[i];
        if (b.lambda < level && a.lambda >= level) {
            return a.seconds + (a.lambda - level) / (a.lambda - b.lambda) * (b.seconds - a.seconds);
        }
    }
    return 0.0;
}

void CutTrace::measureReturn() {
    const double bottom = settledLevel();
    const double top = kFreshAir;
    const double late = returnCrossing(top - kLateShare * (top - bottom));
    const double early = returnCrossing(top - kEarlyShare * (top - bottom));
    if (late > endedAt_ && early > endedAt_ && bottom < 16.0) {
        (answer_ ? next_ : answer_) = Answer{endedAt_, late - endedAt_, (late - early) / kBetween};
    }
}

}  // namespace korvane::steady
