#include "platform/Dialogs.h"

#include <array>

namespace korvane::platform {

std::string_view nameOf(MessageIcon icon) {
    constexpr std::array<std::string_view, 4> names{"none", "information", "exclamation", "critical"};
    return names[static_cast<std::size_t>(icon)];
}

}  // namespace korvane::platform
