#include "app/EcuPort.h"

namespace korvane::app {

std::string EcuPort::set(const std::string& key, const std::string& value) {
    auto problem = ecu_.set(key, value, pump_.now());
    if (line_ != nullptr) {
        line_->deviceChanged();
    }
    return problem;
}

std::vector<std::uint32_t> EcuPort::writes() const {
    const auto counts = ecu_.writes();
    return {counts.begin(), counts.end()};
}

}  // namespace korvane::app
