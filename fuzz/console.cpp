// The console with the whole program behind it: any bytes, in any pieces, get one reply for each line and end nothing.
#include "console/Console.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>

#include "Support.h"
#include "console/ConsoleSession.h"
#include "console/names/Registry.h"
#include "core/TextEncoding.h"
#include "platform/TappedLine.h"

namespace {

using namespace korvane;
using fuzz::require;

constexpr int kLongestWait = 300;  // ms; a script could wait for weeks of program time

class ShortPump : public platform::VirtualPump {
public:
    void wait(int milliseconds) override { VirtualPump::wait(std::min(milliseconds, kLongestWait)); }
};

class AnyEcu : public console::EcuControl {
public:
    std::string set(const std::string& key, const std::string&) override { return key == "no" ? "no such key" : ""; }
    long sparksFired() const override { return 0; }
};

// Whatever path a script answers with, the file is one in the folder of this run.
class DialogsInside : public platform::QueuedDialogs {
public:
    explicit DialogsInside(const support::TempFolder& folder) : folder_(folder) {}

    std::string choose(const platform::FileDialog& dialog) override {
        const std::filesystem::path chosen = QueuedDialogs::choose(dialog);
        return chosen.empty() ? std::string() : (folder_.path() / chosen.filename()).string();
    }

private:
    const support::TempFolder& folder_;
};

std::size_t commandLines(std::string_view text) {
    std::size_t count = 0;
    while (!text.empty()) {
        const auto line = text.substr(0, text.find('\n'));
        const auto begin = line.find_first_not_of(" \t\r");
        count += begin != std::string_view::npos && line[begin] != '#' ? 1 : 0;
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return count;
}

void checkReply(std::string_view reply) {
    require(reply.ends_with('\n') && reply.find('\n') == reply.size() - 1);
    require(reply == "ok\n" || reply.starts_with("ok ") || reply.starts_with("error "));
    require(core::isUtf8(reply));
}

struct Run {
    Run() {
        console::registerSharedTables(names, program.tables());
        console::registerMainWindow(names, program.frmSarn2());
        console::registerProcedures(names, {program.eeprom(), {}, [this](double value, int series, int trend) {
                                                program.trends().pushTrendSample(value, series, trend);
                                            }});
        // These two take any path; the ini files have a target of their own.
        names.addProcedure("ReadIniSection", "FILE SECTION", [](auto) { return std::optional<console::Json>(); });
        names.addProcedure("WriteIniSection", "FILE SECTION LINES",
                           [](auto) { return std::optional<console::Json>(); });
        program.start();
    }

    support::VirtualMachine below;
    ShortPump pump;
    platform::MemoryLine line{pump, nullptr};
    platform::TappedLine tap{line, pump, [this](auto bytes) { line.inject(bytes); }};
    DialogsInside dialogs{below.folder};
    platform::Machine machine = below.with(pump, tap, dialogs);
    program::Program program{machine};
    AnyEcu ecu;
    console::Names names;
    std::ostringstream errors;
    console::Console console{{machine, dialogs, tap, names, &ecu, nullptr, errors, [this] { program.quit(); },
                              [this] { return program.ended(); }}};
    std::size_t replies = 0;
    console::ConsoleSession session{console, [this](std::string_view reply) {
                                        checkReply(reply);
                                        ++replies;
                                    }};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::size_t piece = std::size_t{data[0]} + 1;
    const std::string input(reinterpret_cast<const char*>(data) + 1, size - 1);
    Run run;
    for (std::size_t at = 0; at < input.size(); at += piece) {
        run.session.feed(std::string_view(input).substr(at, piece));
    }
    const bool endedByCommand = run.console.ended();
    run.session.endOfInput();
    require(run.replies <= commandLines(input));
    require(endedByCommand || run.console.ended());
    require(run.program.ended());
    return 0;
}
