// Reads parameters one after the other.
#pragma once

#include <functional>
#include <vector>

#include "fields/Context.h"
#include "fields/ReadPlan.h"
#include "platform/Nesting.h"

namespace korvane::fields {

// A read goes on whether or not an answer comes; with the port closed it takes as long and sends nothing. Only the
// window's unload ends it early: one that is started inside another runs to its end, and then the outer one goes on.
// Beyond a fixed depth a start does nothing.
class Reader {
public:
    // `bars` count the reads.
    Reader(const Context& context, const ReadPlan& plan, std::vector<controls::ProgressBar*> bars = {});

    // `opening` comes before the first step.
    void run(const std::function<void()>& opening = {});

private:
    void runSteps(const std::function<void()>& opening);
    void read(const ReadStep& step, int cell);
    // Events run before and behind it.
    void pause();

    Context context_;
    ReadPlan plan_;
    std::vector<controls::ProgressBar*> bars_;
    platform::Nesting nesting_;
};

}  // namespace korvane::fields
