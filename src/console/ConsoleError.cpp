#include "console/ConsoleError.h"

#include "core/TextEncoding.h"

namespace korvane::console {

namespace {
constexpr std::size_t kLongest = 200;
}

std::string shown(std::string_view name) {
    std::string out;
    for (std::size_t i = 0; i < name.size();) {
        if (out.size() >= kLongest) {
            return out + "...";
        }
        const auto length = core::characterSize(name.substr(i));
        const auto first = static_cast<unsigned char>(name[i]);
        out += length == 0 || first < 0x20 || first == 0x7F ? std::string_view("?") : name.substr(i, length);
        i += length == 0 ? 1 : length;
    }
    return out;
}

}  // namespace korvane::console
