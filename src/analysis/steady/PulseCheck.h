// Sees fuel that the map does not give: an enrichment, and its decay.
#pragma once

namespace korvane::steady {

class PulseCheck {
public:
    void reset() { *this = PulseCheck(); }
    // `off`: by what share the injected pulse is off from that of the map; `duty` in counts, of which one is the
    // error. Once it is off it fits again only when it has come back, or stays a little off.
    [[nodiscard]] bool fits(double seconds, double off, double duty);
    // The throttle was opened: there may be more fuel from now on, and it has to be seen that there is none.
    void expect(double seconds);

private:
    double last_ = 0.0;
    double mean_ = 0.0;  // of `off` over the last frames
    bool off_ = false;
    double farAt_ = 0.0;  // when it was far off last
};

}  // namespace korvane::steady
