// Backup of the first addresses of the ECU's EEPROM to a text file, and their upload from one.
//
//     " 12 \r\n"     address 0, a number from 0 to 255 between blanks
//     " 255 \r\n"    address 1
//     ...            one line for each address; a backup writes all 3001 of EEImage
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/EepromAccess.h"
#include "core/tables/EepromShadow.h"
#include "live/FrmSarn2.h"
#include "platform/Dialogs.h"
#include "platform/WallTime.h"

namespace korvane::live {

// Sets the clicks of btnBackup and btnUploadEEPROM. Each takes addresses 0 to 1010 byte by byte, 125 ms for each; every
// tenth address is sent twice. Meanwhile the buttons that would mix their own frames with these are disabled and the
// poll is stopped; both end with the transfer, however it ends. A main window that is closed ends either at the next
// byte.
class EepromImage {
public:
    EepromImage(FrmSarn2& window, const core::EepromShadow& tables, core::EepromAccess& eeprom);

private:
    static constexpr int kLastChecked = 1000;  // address
    class UnsetClock;

    // Writes "EEPROM_hh_mm_ss.txt" into the program's folder if all of addresses 0 to 1000 were read within the last
    // 240 seconds, or, where the clock was set during the run, if each was when its turn was over; and says in a
    // message box what has come of it. An older file of that name gets another (BackupFile.h). A line of the main
    // window tells how many of them were not answered in this run.
    void backup();
    // Asks for a file and writes it. The first line that is no number from 0 to 255, or is not there, ends it with a
    // message box; the bytes before it have been written. Nothing is read back. It goes on while the port is closed:
    // a line of the main window then names what was not sent.
    void upload();

    [[nodiscard]] bool readAll();
    // The line that ended the upload, counted from 1; nothing if all went out.
    [[nodiscard]] std::optional<std::size_t> writeAll(std::span<const std::string> lines);
    void write(int address, std::uint8_t byte);
    void tellUnsent() const;
    void tellUnanswered(int cells) const;
    // Calls `transfer` for each address in turn until it returns false; false then, or when the window is closed.
    template <class Transfer>
    bool pass(controls::CommandButton& button, Transfer&& transfer);
    [[nodiscard]] bool readLately() const;
    void listen(int address, const UnsetClock& clock);
    void save();
    void pause();
    void tell(const std::string& text, platform::MessageIcon icon);

    FrmSarn2& window_;
    const core::EepromShadow& tables_;
    core::EepromAccess& eeprom_;
    std::bitset<kLastChecked + 1> heard_;  // in this backup
    bool clockWasSet_ = false;             // during it

    struct Addresses {
        int first;
        int last;
    };
    std::optional<Addresses> unsent_;  // of this upload
};

// The byte of a line of an image; nothing for any other text.
[[nodiscard]] std::optional<std::uint8_t> imageByte(std::string_view line);

// The seconds from `time`, a text "hh:mm:ss" of the last 24 hours, to `now`, which may lie behind midnight. Nothing for
// any other text.
[[nodiscard]] std::optional<int> secondsSince(std::string_view time, const platform::WallTime& now);

}  // namespace korvane::live
