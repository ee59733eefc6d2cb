// Where the rows of a running log are, as shown beside the box that switches it on.
#pragma once

#include <cstdint>
#include <string>

#include "controls/Property.h"

namespace korvane::logs {

class LogCounts : public controls::Object {
public:
    controls::Property<std::int64_t> onDisk{*this};   // that this run has written to the file named now
    controls::Property<std::int32_t> waiting{*this};  // in the buffer
    controls::Property<std::string> path{*this};      // of the file named now, empty without a name
};

}  // namespace korvane::logs
