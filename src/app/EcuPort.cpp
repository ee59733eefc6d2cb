#include "app/EcuPort.h"

namespace korvane::app {

std::string EcuPort::set(const std::string& key, const std::string& value) {
    auto problem = ecu_.set(key, value, pump_.now());
    if (line_ != nullptr) {
        line_->deviceChanged();
    }
    return problem;
}

}  // namespace korvane::app
