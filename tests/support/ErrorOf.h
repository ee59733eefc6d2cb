// What a call fails with.
#pragma once

#include "platform/RuntimeError.h"

namespace korvane::support {

// The number of the RuntimeError, or 0 if the call succeeds.
template <class Call>
int errorOf(Call call) {
    try {
        call();
    } catch (const platform::RuntimeError& error) {
        return error.number();
    }
    return 0;
}

}  // namespace korvane::support
