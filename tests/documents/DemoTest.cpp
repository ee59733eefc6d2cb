// What ./run does on a machine without a display, with stand-ins for the programs that it builds and starts.
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include "app/Process.h"
#include "documents/Markdown.h"
#include "support/TempFolder.h"

namespace korvane::documents {
namespace {

using testing::HasSubstr;

constexpr std::string_view kNothing = "#!/bin/sh\n";

constexpr std::string_view kEcu = R"(#!/bin/sh
: > "$3"
exec sleep 60
)";

// Its maps arrive some time after their window has opened. A picture tells what had arrived when it was taken.
constexpr std::string_view kTuner = R"(#!/bin/sh
for word; do
    [ "$previous" = --script ] && script=$word
    previous=$word
done
if [ "$script" ]; then
    while read -r line; do echo 'ok "1"'; done < "$script"
    exit
fi
fuel=0
ignition=0
while read -r command argument file; do
    reply=ok
    case "$command $argument" in
    "get frmMaps.txtFuel(0).Text") fuel=$((fuel + 1)); [ $fuel -gt 3 ] && reply='ok "1.5"' || reply='ok ""';;
    "get frmMaps.txtIgn(0).Text") ignition=$((ignition + 1)); [ $ignition -gt 5 ] && reply='ok "14"' || reply='ok ""';;
    screenshot*) [ $fuel -gt 3 ] && [ $ignition -gt 5 ] && echo whole > "$file" || echo early > "$file";;
    quit*) echo ok; exit;;
    esac
    echo "$reply"
done
)";

class Demo : public testing::Test {
protected:
    Demo() {
        for (const char* const folder : {"tools", "bin", "packaging", "build/release/bin"}) {
            std::filesystem::create_directories(home_ / folder);
        }
        home_.write("packaging/Settings_par.ini", "");
        home_.write("CMakePresets.json", "");
        program("run", contentOf(projectFolder() / "run"));
        program("tools/prepare", kNothing);
        program("bin/cmake", kNothing);
        program("build/release/bin/korvane-ecu", kEcu);
        program("build/release/bin/korvane-tuner", kTuner);
    }

    [[nodiscard]] app::Outcome run() const {
        return app::runProgram((home_ / "run").string(), {}, {}, [this] {
            const std::string path = (home_ / "bin").string() + ":" + std::getenv("PATH");
            setenv("PATH", path.c_str(), 1);
            unsetenv("DISPLAY");
            unsetenv("WAYLAND_DISPLAY");
        });
    }

    void program(const std::string& name, std::string_view text) const {
        home_.write(name, std::string(text));
        std::filesystem::permissions(home_ / name, std::filesystem::perms::owner_all);
    }

    support::TempFolder home_;
};

TEST_F(Demo, TakesItsPicturesOfTheMapsWhenTheyHaveArrived) {
    const auto outcome = run();
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, HasSubstr("maps.png\n"));
    for (const char* const picture : {"demo/maps.png", "demo/map3d.png"}) {
        EXPECT_EQ(home_.read(picture), "whole\n") << picture;
    }
}

}  // namespace
}  // namespace korvane::documents
