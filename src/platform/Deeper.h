// Counts how many handlers run inside each other.
#pragma once

namespace korvane::platform {

// Adds one to a count while the object exists.
class Deeper {
public:
    explicit Deeper(int& depth) : depth_(depth) { ++depth_; }
    Deeper(const Deeper&) = delete;
    Deeper& operator=(const Deeper&) = delete;
    ~Deeper() { --depth_; }

private:
    int& depth_;
};

}  // namespace korvane::platform
