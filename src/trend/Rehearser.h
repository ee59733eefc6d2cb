// What runs the steady agent on a log, as the log viewer uses it.
#pragma once

#include <string>

#include "logs/clsTXTdata.h"

namespace korvane::trend {

class Rehearser {
public:
    virtual ~Rehearser() = default;

    // Why it can't be done, in words; empty where it has begun. A run before it is dropped. The log stays as it is
    // until the end, or until drop().
    virtual std::string begin(const logs::clsTXTdata& log) = 0;
    // A bounded part of it. False at the end.
    virtual bool goOn() = 0;
    [[nodiscard]] virtual double share() const = 0;
    // What came of it, in words; the proposed map is shown, if there is one.
    virtual std::string finish() = 0;
    virtual void drop() = 0;
};

}  // namespace korvane::trend
