#include "ecu/server/Descriptor.h"

#include <unistd.h>
#include <utility>

namespace korvane::ecu {

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
}

Descriptor::~Descriptor() {
    if (number_ >= 0) {
        ::close(number_);
    }
}

int Descriptor::release() {
    return std::exchange(number_, -1);
}

}  // namespace korvane::ecu
