#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "house/Modules.h"

namespace korvane::house {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

const char* const kCmake =
    "# korvane_module(NAME USES modules)\n"
    "korvane_module(base WITHOUT tool)\n"
    "korvane_module(tool DIR base/tool USES base QT Core Gui)\n"
    "korvane_module(top\n"
    "               USES tool)\n";

TEST(Modules, StandInTheirFolders) {
    const Modules modules(kCmake);
    EXPECT_EQ(modules.of("base/Files.h")->name, "base");
    EXPECT_EQ(modules.of("base/inner/Files.h")->name, "base");
    EXPECT_EQ(modules.of("base/tool/Pump.cpp")->name, "tool");
    EXPECT_EQ(modules.of("attic/base/Files.h"), nullptr);
    EXPECT_EQ(modules.of("main.cpp"), nullptr);
}

TEST(Modules, UseWhatThoseUseThatTheyUse) {
    const Modules modules(kCmake);
    EXPECT_THAT(modules.of("base/Files.h")->uses, IsEmpty());
    EXPECT_THAT(modules.of("top/Top.h")->uses, UnorderedElementsAre("base", "tool"));
}

TEST(Modules, UseQtWhereItIsSaid) {
    const Modules modules(kCmake);
    EXPECT_TRUE(modules.of("base/tool/Pump.cpp")->usesQt);
    EXPECT_FALSE(modules.of("top/Top.h")->usesQt);
}

TEST(Modules, UseOnlyThoseDeclaredBefore) {
    EXPECT_THAT(Modules(kCmake).brokenOrder(), IsEmpty());
    EXPECT_THAT(Modules("korvane_module(low USES high)\nkorvane_module(high)\n").brokenOrder(), SizeIs(1));
    EXPECT_THAT(Modules("korvane_module(low USES low)\n").brokenOrder(), SizeIs(1));
}

}  // namespace
}  // namespace korvane::house
