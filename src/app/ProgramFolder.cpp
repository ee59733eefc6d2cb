#include "app/ProgramFolder.h"

#include <cstdlib>
#include <locale>
#include <stdexcept>
#include <string>
#include <system_error>

#include "app/DefaultChannels.h"
#include "platform/Files.h"

namespace korvane::app {

namespace {

constexpr const char* kName = "korvane-tuner";

std::filesystem::path userFolder(const char* variable, const char* underHome) {
    if (const char* const set = std::getenv(variable); set != nullptr && *set == '/') {
        return std::filesystem::path(set) / kName;
    }
    const char* const home = std::getenv("HOME");
    return std::filesystem::path(home != nullptr && *home != '\0' ? home : ".") / underHome / kName;
}

}  // namespace

std::filesystem::path defaultFolder() {
    auto folder = userFolder("XDG_DATA_HOME", ".local/share");
    std::error_code failed;
    if (std::filesystem::create_directories(folder, failed)) {
        // Without it the program says so and goes on with other names.
        static_cast<void>(platform::replaceFile(folder / "Settings_par.ini", kDefaultChannels));
    }
    return folder;
}

std::filesystem::path defaultPreferences() {
    return userFolder("XDG_CONFIG_HOME", ".config") / "preferences.ini";
}

char systemDecimal() {
    try {
        return std::use_facet<std::numpunct<char>>(std::locale("")).decimal_point() == ',' ? ',' : '.';
    } catch (const std::runtime_error&) {
        return '.';
    }
}

}  // namespace korvane::app
