#include "live/readout/BigTexts.h"

#include <algorithm>

#include "live/readout/FrmBigText.h"

namespace korvane::live {

void BigTexts::add(FrmBigText& window) {
    windows_.emplace_back(std::to_string(window.hWnd()), &window);
}

void BigTexts::remove(const FrmBigText& window) {
    std::erase_if(windows_, [&](const auto& entry) { return entry.second == &window; });
}

FrmBigText* BigTexts::find(std::string_view handle) const {
    const auto found =
        std::find_if(windows_.begin(), windows_.end(), [&](const auto& entry) { return entry.first == handle; });
    return found != windows_.end() ? found->second : nullptr;
}

std::vector<FrmBigText*> BigTexts::all() const {
    std::vector<FrmBigText*> windows;
    std::transform(windows_.begin(), windows_.end(), std::back_inserter(windows),
                   [](const auto& entry) { return entry.second; });
    return windows;
}

}  // namespace korvane::live
