// Car files: any bytes are twelve texts or a message, a car that is saved comes back, and pulls with any of them leave
// as many lines in the log as in the list.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "Support.h"
#include "core/Numbers.h"
#include "core/TextEncoding.h"
#include "performance/FrmPowerCalc.h"

namespace {

using namespace korvane;
using fuzz::require;
using performance::CarValues;
using performance::FrmPowerCalc;

constexpr int kTick = 50;     // ms
constexpr int kRpmStep = 40;  // of a byte
constexpr int kMostSpeeds = 15;
constexpr std::string_view kMark = "\xEF\xBB\xBF";

struct CarRun : fuzz::ProgramRun {
    CarRun() { program.frmSarn2().btnTuningHelp.press(); }

    [[nodiscard]] FrmPowerCalc& window() { return dynamic_cast<FrmPowerCalc&>(*windows.loaded().back()); }
    [[nodiscard]] CarValues car() {
        auto& w = window();
        return {w.txtCarName.Text.get(),   w.txtPera.Text.get(),      w.txtVaihde(0).Text.get(),
                w.txtVaihde(1).Text.get(), w.txtVaihde(2).Text.get(), w.txtVaihde(3).Text.get(),
                w.txtVaihde(4).Text.get(), w.txtUsedGear.Text.get(),  w.txtPaino.Text.get(),
                w.txtrengas.Text.get(),    w.txtStartRPM.Text.get(),  w.txtStopRPM.Text.get()};
    }
    // The messages that the button leaves.
    std::size_t press(controls::CommandButton& button, const std::filesystem::path& file) {
        dialogs.answerFile(file.string());
        button.press();
        return dialogs.takeMessages().size();
    }
};

std::size_t lineCount(std::string_view text) {
    const auto ends = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    return text.empty() || text.back() == '\n' ? ends : ends + 1;
}

std::string_view withoutMark(std::string_view text) {
    return text.starts_with(kMark) ? text.substr(kMark.size()) : text;
}

// Of the name a file keeps what stands before the first comma and behind the blanks; a byte order mark at the beginning
// of a file is none of its text.
std::string keptName(std::string_view name) {
    name = withoutMark(name);
    name = name.substr(0, name.find(','));
    return std::string(name.substr(std::min(name.find_first_not_of(' '), name.size())));
}

void load(CarRun& run, std::string_view content) {
    const CarValues before = run.car();
    const auto messages = run.press(run.window().Command3, run.folder.write("car.par", content));
    const bool whole = lineCount(withoutMark(content)) >= performance::kCarValues;
    require(messages == (whole ? 0U : 1U));
    const CarValues loaded = run.car();
    require(whole || loaded == before);
    require(std::all_of(loaded.begin(), loaded.end(), [](const auto& text) { return core::isUtf8(text); }));
    require(loaded.front().find(',') == std::string::npos);
}

void saveAndLoad(CarRun& run) {
    CarValues saved = run.car();
    require(run.press(run.window().Command2, run.folder / "saved.par") == 0);
    require(run.press(run.window().Command3, run.folder / "saved.par") == 0);
    saved.front() = keptName(saved.front());
    require(run.car() == saved);
}

int rowsWith(FrmPowerCalc& window, std::string_view beginning) {
    int count = 0;
    for (int row = 0; row < window.List1.ListCount(); ++row) {
        count += window.List1.List(row).starts_with(beginning) ? 1 : 0;
    }
    return count;
}

void drive(CarRun& run, fuzz::Bytes speeds) {
    for (const std::uint8_t speed : speeds) {
        run.program.frmSarn2().lblValue(0).Caption = core::numberText(speed * kRpmStep).view();
        run.pump.wait(kTick);
    }
    auto& window = run.window();
    const int pulls = rowsWith(window, "Speed: ");
    require(rowsWith(window, "Stopped: ") == pulls);
    const bool running = window.imgLed.Shown == controls::Picture::Green;
    require(rowsWith(window, "Timer Started: ") == pulls + (running ? 1 : 0));
    require(rowsWith(window, "timer ") + rowsWith(window, "Timer Started: ") + 2 * pulls == window.List1.ListCount());
    const bool logged = run.folder.has("saved.par.txt");
    require(logged == (pulls > 0));
    require(!logged || lineCount(run.folder.read("saved.par.txt")) == static_cast<std::size_t>(pulls));
    require(run.dialogs.takeMessages().empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Script script({data, size});
    const auto speeds = script.bytes(std::min<std::size_t>(script.next(), kMostSpeeds));
    CarRun run;
    load(run, fuzz::textOf(script.bytes(size)));
    saveAndLoad(run);
    drive(run, speeds);
    run.program.quit();
    require(run.program.ended());
    return 0;
}
