// A write of a record, as tests expect it.
#pragma once

#include <gmock/gmock.h>

namespace korvane::platform {

MATCHER_P2(WroteAt, milliseconds, bytes, "") {
    return arg.milliseconds == milliseconds && arg.bytes == bytes;
}

}  // namespace korvane::platform
