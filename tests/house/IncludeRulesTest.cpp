#include <algorithm>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

#include "house/SourceRules.h"

namespace korvane::house {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

std::filesystem::path projectFolder() {
    const char* folder = std::getenv("KORVANE_SOURCE");
    if (folder == nullptr) {
        throw std::runtime_error("KORVANE_SOURCE has to name the project's folder");
    }
    return folder;
}

// Those of the project.
const Modules& modules() {
    static const Modules all(readSource(projectFolder() / "CMakeLists.txt"));
    return all;
}

std::vector<std::string> layers(std::string path, std::string include) {
    return brokenLayers({std::move(path), "#include \"" + include + "\"\n"}, modules());
}

std::vector<std::string> libraries(std::string path, std::string include) {
    return brokenLibraries({std::move(path), "#include <" + include + ">\n"}, modules());
}

class Sources : public testing::Test {
protected:
    std::vector<SourceFile> files_ = readSources(projectFolder() / "src");
};

TEST_F(Sources, KeepTheRulesOfTheHouse) {
    for (const SourceFile& file : files_) {
        EXPECT_THAT(brokenRules(file, files_, modules()), IsEmpty());
    }
}

TEST_F(Sources, AreOfModulesThatUseOnlyThoseBefore) {
    EXPECT_THAT(modules().brokenOrder(), IsEmpty());
}

TEST_F(Sources, AreAllThere) {
    for (const char* path : {"platform/EventPump.h", "platform/virtual/VirtualPump.cpp", "ecu/VirtualEcu.cpp"}) {
        EXPECT_EQ(std::ranges::count(files_, path, &SourceFile::path), 1) << path;
    }
}

// Files and what they include.
using Includes = std::vector<std::pair<const char*, const char*>>;

void expectAllowed(const Includes& includes) {
    for (const auto& [file, include] : includes) {
        EXPECT_THAT(layers(file, include), IsEmpty()) << file << " includes " << include;
    }
}

void expectForbidden(const Includes& includes) {
    for (const auto& [file, include] : includes) {
        EXPECT_THAT(layers(file, include), SizeIs(1)) << file << " includes " << include;
    }
}

TEST(Layers, LetAModuleIncludeItselfAndThoseBefore) {
    expectAllowed({{"live/Lamps.cpp", "live/Lamps.h"},
                   {"live/Lamps.cpp", "link/Dispatcher.h"},
                   {"live/Lamps.cpp", "core/tables/SharedTables.h"},
                   {"app/Session.cpp", "console/Console.h"},
                   {"platform/Files.cpp", "platform/Files.h"}});
}

TEST(Layers, ForbidALaterModule) {
    expectForbidden({{"core/files/IniFile.h", "link/Dispatcher.h"},
                     {"platform/Files.cpp", "core/Numbers.h"},
                     {"link/Dispatcher.cpp", "live/FrmSarn2.h"},
                     {"maps/grid/MapGrid.cpp", "analysis/Analyser.h"},
                     {"views/dashboard/MainView.cpp", "program/Program.h"},
                     {"console/Console.cpp", "views/Views.h"},
                     {"platform/Files.cpp", "controls/Window.h"},
                     {"views/widgets/values/Dial.cpp", "views/frame/Binder.h"},
                     {"views/frame/Binder.cpp", "views/maps/MapGridView.h"},
                     {"views/dashboard/MainView.cpp", "views/Views.h"}});
}

TEST(Layers, ForbidAnEarlierModuleThatIsNotUsed) {
    expectForbidden({{"settings/FrmMisc.cpp", "maps/FrmMaps.h"},
                     {"trend/Plot.cpp", "analysis/clsInjAnalyser.h"},
                     {"logs/LogWriter.cpp", "fields/Fields.h"},
                     {"views/maps/MapsView.cpp", "settings/FrmMisc.h"},
                     {"views/settings/MiscView.cpp", "views/maps/MapGridView.h"}});
}

TEST(Layers, LetOnlyTheCompositionKnowAMachine) {
    expectAllowed({{"app/main.cpp", "platform/qt/QtPump.h"}, {"app/main.cpp", "platform/virtual/VirtualPump.h"}});
    expectForbidden({{"controls/Window.cpp", "platform/virtual/VirtualPump.h"},
                     {"live/Lamps.cpp", "platform/virtual/MemoryLine.h"},
                     {"link/Connection.cpp", "platform/qt/PortMap.h"},
                     {"console/Console.cpp", "platform/qt/QtPump.h"},
                     {"views/frame/ViewHost.cpp", "platform/qt/QtPump.h"},
                     {"platform/virtual/MemoryLine.cpp", "platform/qt/QtPump.h"}});
}

TEST(Layers, KeepAMachineInItsLayer) {
    expectAllowed({{"platform/virtual/MemoryLine.h", "platform/SerialLine.h"},
                   {"platform/virtual/MemoryLine.h", "platform/virtual/VirtualPump.h"}});
    expectForbidden(
        {{"platform/virtual/MemoryLine.h", "core/Numbers.h"}, {"platform/qt/QtSerialLine.cpp", "link/Connection.h"}});
}

TEST(Layers, LeaveTheVirtualEcuNothingButTheParameterNames) {
    expectAllowed({{"ecu/Replies.cpp", "ecu/Replies.h"}, {"ecu/Replies.cpp", "core/ParameterNames.h"}});
    expectForbidden({{"ecu/Replies.cpp", "core/Numbers.h"},
                     {"ecu/Replies.cpp", "link/ReceiveMachine.h"},
                     {"ecu/main.cpp", "platform/EventPump.h"}});
}

TEST(Layers, WantTheModuleInEveryInclude) {
    expectAllowed({{"views/dashboard/MainView.cpp", "MainView.moc"}});
    expectForbidden({{"live/Lamps.cpp", "Lamps.h"},
                     {"live/Lamps.cpp", "../core/Numbers.h"},
                     {"live/Lamps.cpp", "attic/Numbers.h"}});
}

TEST(Layers, FindAnIncludeHoweverItIsWritten) {
    const SourceFile file{"core/files/IniFile.cpp",
                          "#include <string>\n  #  include   \"app/Session.h\"  // why\nint i;"};
    EXPECT_THAT(brokenLayers(file, modules()), SizeIs(1));
}

TEST(Libraries, KeepQtInItsModules) {
    for (const char* path : {"core/files/IniFile.cpp", "live/Lamps.h", "ecu/main.cpp", "console/Console.cpp",
                             "controls/Timer.cpp", "platform/virtual/VirtualPump.cpp"}) {
        EXPECT_THAT(libraries(path, "QString"), SizeIs(1)) << path;
        EXPECT_THAT(libraries(path, "QtCore/QString"), SizeIs(1)) << path;
    }
    for (const char* path : {"platform/qt/QtPump.cpp", "views/dashboard/MainView.cpp", "app/main.cpp"}) {
        EXPECT_THAT(libraries(path, "QString"), IsEmpty()) << path;
        EXPECT_THAT(libraries(path, "QtCore/QString"), IsEmpty()) << path;
    }
    EXPECT_THAT(brokenLibraries({"core/files/IniFile.cpp", "#include \"QString\"\n"}, modules()), SizeIs(1));
}

TEST(Libraries, AreTheStandardOneAndTheSystems) {
    for (const char* header : {"string_view", "cstdint", "termios.h", "sys/ioctl.h", "asm/termbits.h"}) {
        EXPECT_THAT(libraries("core/files/IniFile.cpp", header), IsEmpty()) << header;
    }
    for (const char* header : {"boost/asio.hpp", "fmt/format.h", "gtest/gtest.h", "benchmark/benchmark.h"}) {
        EXPECT_THAT(libraries("app/main.cpp", header), SizeIs(1)) << header;
    }
}

TEST(Naming, FollowsModuleAndClass) {
    for (const char* path : {"core/files/IniFile.h", "platform/qt/QtPump.cpp", "trend/cTrendline.h", "app/main.cpp",
                             "analysis/clsInjAnalyser.cpp", "maps/FrmMaps_Large.h", "app/DefaultChannels.h.in"}) {
        EXPECT_THAT(brokenNaming({path, ""}, modules()), IsEmpty()) << path;
    }
    for (const char* path :
         {"main.cpp", "attic/IniFile.h", "attic/core/IniFile.h", "core/ini_file.h", "core/IniFile.hpp",
          "core/notes.txt", "core/files/IniFile.cpp.orig", "core/files/IniFile.cpp.in"}) {
        EXPECT_THAT(brokenNaming({path, ""}, modules()), SizeIs(1)) << path;
    }
}

TEST(Guard, StandsInEveryHeader) {
    EXPECT_THAT(brokenGuard({"core/files/IniFile.h", "// Ini files.\n#pragma once\n\nint i;\n"}), IsEmpty());
    EXPECT_THAT(brokenGuard({"core/files/IniFile.h", "// Ini files.\nint i;\n"}), SizeIs(1));
    EXPECT_THAT(brokenGuard({"core/files/IniFile.h", "// #pragma once\nint i;\n"}), SizeIs(1));
    EXPECT_THAT(brokenGuard({"core/files/IniFile.cpp", "int i;\n"}), IsEmpty());
}

TEST(Continuation, IsSaidWhereAFileHasNoHeaderOfItsName) {
    const std::vector<SourceFile> all{{"core/Numbers.h", ""}, {"maps/NumberText.h", ""}};
    EXPECT_THAT(brokenContinuation({"core/Numbers.cpp", "#include <string>\n"}, all), IsEmpty());
    EXPECT_THAT(brokenContinuation({"core/NumberText.cpp", "// Continues Numbers.\n#include <string>\n"}, all),
                IsEmpty());
    EXPECT_THAT(brokenContinuation({"app/main.cpp", "#include <string>\n"}, all), IsEmpty());
    EXPECT_THAT(brokenContinuation({"core/TimeText.h", "#pragma once\n"}, all), IsEmpty());
    for (const char* text : {"#include <string>\n", "\n// Too late.\n", "#include <string>  // why\n", ""}) {
        EXPECT_THAT(brokenContinuation({"core/NumberText.cpp", text}, all), SizeIs(1)) << text;
    }
}

TEST(AllRules, AreAppliedTogether) {
    const SourceFile file{"ecu/replies.h", "#include <QString>\n#include \"core/Numbers.h\"\n"};
    EXPECT_THAT(brokenRules({"core/NumberText.cpp", "int i;\n"}, {}, modules()), SizeIs(1));
    EXPECT_THAT(brokenRules(file, {}, modules()), SizeIs(4));
}

}  // namespace
}  // namespace korvane::house
