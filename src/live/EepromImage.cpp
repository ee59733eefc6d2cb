#include "live/EepromImage.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/files/TableFile.h"
#include "live/AnsweredCells.h"
#include "live/BackupFile.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"
#include "platform/RuntimeError.h"
#include "platform/Texts.h"

namespace korvane::live {

namespace {

constexpr int kLastTens = 100;  // a pass goes over tens from 0 to 100, and over 0 to 10 from each of them
constexpr int kLastStep = 10;
constexpr int kBytePause = 125;  // ms: an EEPROM write in the ECU has ended, and the reply of a read has come
constexpr int kEdgePause = 100;
constexpr int kOldestReply = 240;         // seconds
constexpr std::size_t kTableSize = 1050;  // lines of a file that are read, from index 1 on

constexpr std::string_view kDigits = "0123456789";

// Stops the poll and disables the buttons during a transfer.
class Quiet {
public:
    Quiet(FrmSarn2& window, bool pollAfterwards)
        : window_(window), pollAfterwards_(pollAfterwards), transfer_(&window.linkState) {
        window.TimerRequestData.Enabled = false;
        enableButtons(false);
        window.prgEeprom.start(kLastTens + 1);
    }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;
    ~Quiet() {
        window_.prgEeprom.stop();
        enableButtons(true);
        window_.TimerRequestData.Enabled = pollAfterwards_;
    }

private:
    void enableButtons(bool enabled) {
        for (auto* button : {&window_.btnKartat, &window_.btnAsetukset, &window_.btnBackup, &window_.btnUploadEEPROM}) {
            button->Enabled = enabled;
        }
    }

    FrmSarn2& window_;
    bool pollAfterwards_;
    link::LinkState::Transfer transfer_;
};

// The number in plain digits, from 0 to `highest`; nothing for any other text.
std::optional<int> wholeNumber(std::string_view digits, int highest) {
    if (digits.empty() || digits.find_first_not_of(kDigits) != std::string_view::npos) {
        return {};
    }
    const double number = core::val(digits);
    return number <= highest ? std::optional(core::toInt32(number)) : std::nullopt;
}

bool isRecent(std::string_view time, const platform::WallTime& now) {
    const auto age = secondsSince(time, now);
    return age && *age <= kOldestReply;
}

}  // namespace

std::optional<std::uint8_t> imageByte(std::string_view line) {
    const auto number = wholeNumber(platform::trimmed(line), 255);
    return number ? std::optional(core::toByte(*number)) : std::nullopt;
}

std::optional<int> secondsSince(std::string_view time, const platform::WallTime& now) {
    constexpr int kDay = 24 * 60 * 60;
    if (time.size() != 8 || time[2] != ':' || time[5] != ':') {
        return {};
    }
    const auto hour = wholeNumber(time.substr(0, 2), 23);
    const auto minute = wholeNumber(time.substr(3, 2), 59);
    const auto second = wholeNumber(time.substr(6, 2), 59);
    if (!hour || !minute || !second) {
        return {};
    }
    const int passed = ((now.hour - *hour) * 60 + now.minute - *minute) * 60 + now.second - *second;
    return passed < 0 ? passed + kDay : passed;
}

// The time of day as it would go on from now if the clock were not set.
class EepromImage::UnsetClock {
public:
    explicit UnsetClock(const platform::EventPump& pump)
        : pump_(pump), startTime_(platform::secondsOf(pump.wallTime())), start_(pump.now()) {}

    // In the second that it shows, or one late: what has been read is never ahead of it.
    [[nodiscard]] platform::WallTime time() const {
        return platform::wallTimeOf(startTime_ + (pump_.now() - start_) / platform::kMicrosPerSecond + 1);
    }
    [[nodiscard]] bool wasSet() const {
        constexpr std::int64_t kTolerance = 2;  // seconds: one for the rounding, one for a clock that is slewed
        return std::abs(platform::secondsOf(pump_.wallTime()) - platform::secondsOf(time())) > kTolerance;
    }

private:
    const platform::EventPump& pump_;
    std::int64_t startTime_;
    platform::Micros start_;
};

EepromImage::EepromImage(FrmSarn2& window, const core::EepromShadow& tables, core::EepromAccess& eeprom)
    : window_(window), tables_(tables), eeprom_(eeprom) {
    window.btnBackup.Click = [this] { backup(); };
    window.btnUploadEEPROM.Click = [this] { upload(); };
}

void EepromImage::backup() {
    bool complete = false;
    window_.keepNotice.tell(link::ImageRun::Backup, {});
    const AnsweredCells answered(window_.witnesses, kLastChecked);
    {
        const Quiet quiet(window_, true);
        if (!readAll()) {
            return;
        }
        complete = clockWasSet_ ? heard_.all() : readLately();
        window_.btnBackup.Caption = "BackUp EEPROM";
    }
    if (complete) {
        tellUnanswered(answered.missing());
        save();
    } else {
        tell(" EEPROM read error. Save not possible ", platform::MessageIcon::Exclamation);
    }
}

bool EepromImage::readAll() {
    heard_.reset();
    clockWasSet_ = false;
    std::optional<UnsetClock> clock(window_.machine().pump);
    int last = 0;
    pause();
    const bool whole = pass(window_.btnBackup, [&](int address) {
        listen(last, *clock);
        clock.emplace(window_.machine().pump);
        last = address;
        eeprom_.ReadEE(core::toInt16(address));
        return true;
    });
    if (whole) {
        listen(last, *clock);
        clock.emplace(window_.machine().pump);
        pause();
        clockWasSet_ = clockWasSet_ || clock->wasSet();
    }
    return whole && window_.isLoaded();
}

// Whether the address has an answer, by the clock of now or as it was when the byte was asked for.
void EepromImage::listen(int address, const UnsetClock& clock) {
    clockWasSet_ = clockWasSet_ || clock.wasSet();
    const auto& time = core::checked(tables_.EETime, address);
    const bool heard = isRecent(time, window_.machine().pump.wallTime()) || isRecent(time, clock.time());
    if (heard && address <= kLastChecked) {
        heard_.set(static_cast<std::size_t>(address));
    }
}

template <class Transfer>
bool EepromImage::pass(controls::CommandButton& button, Transfer&& transfer) {
    auto& pump = window_.machine().pump;
    for (int tens = 0; tens <= kLastTens; ++tens) {
        for (int step = 0; step <= kLastStep; ++step) {
            if (!window_.isLoaded() || !transfer(tens * 10 + step)) {
                return false;
            }
            pump.wait(kBytePause);
        }
        button.Caption = core::textOf(tens) + "%";
        window_.prgEeprom.Value = tens + 1;
        pump.pump();
    }
    return true;
}

void EepromImage::pause() {
    auto& pump = window_.machine().pump;
    pump.pump();
    pump.wait(kEdgePause);
    pump.pump();
}

bool EepromImage::readLately() const {
    const auto now = window_.machine().pump.wallTime();
    const auto checked = std::span(tables_.EETime).first(kLastChecked + 1);
    return std::all_of(checked.begin(), checked.end(), [&](const std::string& time) { return isRecent(time, now); });
}

// Bytes of a backup a few minutes ago count as read, whatever has become of the line since.
void EepromImage::tellUnanswered(int cells) const {
    if (cells > 0) {
        window_.keepNotice.tell(link::ImageRun::Backup,
                                "EEPROM backup: " + core::textOf(cells) + " of " + core::textOf(kLastChecked + 1) +
                                    " addresses were not answered now. The file has what was read earlier.");
    }
}

// The writer leaves the last element out, so the table is one longer than the image.
void EepromImage::save() {
    const auto& machine = window_.machine();
    std::vector<std::uint8_t> table(tables_.EEImage.begin(), tables_.EEImage.end());
    table.push_back(0);
    try {
        const auto path = takeBackupPath(machine.folder, machine.pump.wallTime());
        if (core::SaveByteTable(path, table, machine.dialogs)) {
            tell(" EEPROM saved to file \r\n" + path.string(), platform::MessageIcon::Information);
        }
    } catch (const platform::RuntimeError& failure) {
        core::tellFailedTable(failure, machine.dialogs);
    }
}

void EepromImage::upload() {
    const std::string path = window_.machine().dialogs.choose(
        {platform::FileDialog::Kind::Open, "Open EEPROM file", "All Files (*.txt)|*.txt"});
    if (path.empty()) {
        return;
    }
    std::array<std::string, kTableSize> lines;
    // A file with more lines than an upload takes is as good as any: a backup is longer.
    const auto load = core::LoadTextTable(path, lines);
    if (load.error != 0 && load.error != platform::kErrorSubscript) {
        tell("The EEPROM file can't be read:\r\n" + path, platform::MessageIcon::Exclamation);
        return;
    }
    if (const auto line = writeAll(std::span(lines).first(static_cast<std::size_t>(load.lastIndex) + 1))) {
        const bool open = window_.MSComm1.PortOpen();
        tell("Line " + std::to_string(*line) + " of the EEPROM file is not a number from 0 to 255." +
                 "\r\nThe upload ended there." +
                 (open ? " The lines before it have been sent." : " The port is closed."),
             platform::MessageIcon::Exclamation);
    }
}

std::optional<std::size_t> EepromImage::writeAll(std::span<const std::string> lines) {
    eeprom_.announceStore("EEPROM image");
    const Quiet quiet(window_, window_.TimerRequestData.Enabled);
    window_.keepNotice.tell(link::ImageRun::Upload, {});
    unsent_.reset();
    std::optional<std::size_t> failed;
    pass(window_.btnUploadEEPROM, [&](int address) {
        const auto line = static_cast<std::size_t>(address) + 1;
        const auto byte = line < lines.size() ? imageByte(lines[line]) : std::nullopt;
        if (!byte) {
            failed = line;
            return false;
        }
        write(address, *byte);
        return true;
    });
    window_.btnUploadEEPROM.Caption = "Upload EEPROM";
    tellUnsent();
    return failed;
}

// A port that is lost while the byte goes out has not sent it either.
void EepromImage::write(int address, std::uint8_t byte) {
    const bool open = eeprom_.isOpen();
    eeprom_.WriteEE(core::toInt16(address), byte);
    if (!open || !eeprom_.isOpen()) {
        unsent_ = {unsent_ ? unsent_->first : address, address};
    }
}

void EepromImage::tellUnsent() const {
    if (unsent_ && window_.isLoaded()) {
        window_.keepNotice.tell(link::ImageRun::Upload, "EEPROM upload: the port was closed at addresses " +
                                                            core::textOf(unsent_->first) + " to " +
                                                            core::textOf(unsent_->last) + ". They were not sent.");
    }
}

void EepromImage::tell(const std::string& text, platform::MessageIcon icon) {
    window_.machine().dialogs.show({"Korvane Tuner", text, icon});
}

}  // namespace korvane::live
