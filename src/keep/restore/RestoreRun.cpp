#include "keep/restore/RestoreRun.h"

namespace korvane::keep {

bool RestoreRun::restore(const Snapshot&, const std::string&) {
    return false;
}

bool RestoreRun::goOn() {
    return false;
}

bool RestoreRun::goBack() {
    return false;
}

void RestoreRun::stop() {}

void RestoreRun::forget() {}

}  // namespace korvane::keep
