#include "fields/Reader.h"

#include <numeric>
#include <optional>
#include <utility>

#include "core/Numbers.h"
#include "fields/PollStop.h"
#include "fields/Progress.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"

namespace korvane::fields {

namespace {

constexpr int kNestedReads = 8;

}  // namespace

int ReadPlan::reads() const {
    return std::accumulate(steps.begin(), steps.end(), 0,
                           [](int sum, const ReadStep& step) { return sum + step.cells; });
}

Reader::Reader(const Context& context, const ReadPlan& plan, std::vector<controls::ProgressBar*> bars)
    : context_(context), plan_(plan), bars_(std::move(bars)), nesting_(kNestedReads) {}

void Reader::run(const std::function<void()>& opening) {
    const platform::Nesting::Level level(nesting_);
    if (!level) {
        return;
    }
    {
        const link::LinkState::Transfer transfer(context_.linkState);
        const Answers::Running running(context_.answers);
        std::optional<PollStop> stop;
        if (plan_.pollInterval) {
            stop.emplace(context_.poll, plan_.pollInterval);
        }
        runSteps(opening);
    }
    plan_.captions.showEnd(context_.window);
}

void Reader::runSteps(const std::function<void()>& opening) {
    ProgressBars progress(bars_, plan_.reads());
    if (opening) {
        opening();
    }
    for (const ReadStep& step : plan_.steps) {
        for (int cell = 0; cell < step.cells; ++cell) {
            if (!context_.window.isLoaded()) {
                return;
            }
            read(step, cell);
            progress.step();
            plan_.captions.showPercent(context_.window, step.percent.behind(cell));
        }
    }
}

void Reader::read(const ReadStep& step, int cell) {
    const auto address = core::toInt16(context_.tables.addresses.*step.first + step.offset + cell);
    if (context_.answers != nullptr) {
        context_.answers->asked(address, context_.eeprom.isOpen());
    }
    if (step.word) {
        context_.eeprom.ReadEE16(address);
    } else {
        context_.eeprom.ReadEE(address);
    }
    for (int i = 0; i < step.waits; ++i) {
        pause();
    }
}

void Reader::pause() {
    auto& pump = context_.window.machine().pump;
    pump.pump();
    pump.wait(plan_.pause);
    pump.pump();
}

}  // namespace korvane::fields
