// The EEPROM image on a main window with a connection, and at the other end of the line an EEPROM that answers.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "LiveBench.h"
#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "link/Connection.h"
#include "live/EepromImage.h"
#include "support/MachineBench.h"
#include "support/PropertyWatch.h"

namespace korvane::live {

// Takes 'R' and 'W' frames, and answers a read a millisecond later.
class EepromDevice : public support::RecordingDevice {
public:
    void receive(std::uint8_t byte, platform::Micros at) override {
        RecordingDevice::receive(byte, at);
        frame_.push_back(byte);
        if (frame_[0] != 'R' && frame_[0] != 'W') {
            frame_.clear();
        } else if (frame_.size() == (frame_[0] == 'R' ? 4U : 6U)) {
            take(at);
            frame_.clear();
        }
    }
    [[nodiscard]] std::optional<platform::Micros> nextDue() const override {
        return replies_.empty() ? std::nullopt : std::optional(replies_.front().at);
    }
    void take(platform::Micros at, std::vector<std::uint8_t>& out) override {
        for (; !replies_.empty() && replies_.front().at <= at; replies_.pop_front()) {
            out.push_back(replies_.front().byte);
        }
    }

    std::array<std::uint8_t, 65536> memory{};
    std::set<int> deaf;  // addresses that it does not answer for
    bool silent = false;

private:
    void take(platform::Micros at) {
        const int address = frame_[1] + 256 * frame_[2];
        auto& cell = memory.at(static_cast<std::size_t>(address));
        if (frame_[0] == 'W') {
            cell = frame_[3];
        } else if (!silent && !deaf.contains(address)) {
            for (const auto byte : support::frame('T', {cell, frame_[1], frame_[2]})) {
                replies_.push_back({byte, at + 1000});
            }
        }
    }

    std::vector<std::uint8_t> frame_;
    std::deque<Arrival> replies_;
};

// Its cable is pulled out before a byte.
class LooseLine : public platform::MemoryLine {
public:
    using MemoryLine::MemoryLine;

    void write(std::span<const std::uint8_t> bytes) override {
        if (bytesToLive == 0) {
            pullOut();
            return;
        }
        --bytesToLive;
        MemoryLine::write(bytes);
    }

    int bytesToLive = -1;
};

struct Sent {
    std::int64_t ms;
    char command;  // 'R', 'W' or 'x'
    int address;
    int data;
    bool operator==(const Sent&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Sent& sent) {
    return out << sent.ms << " " << sent.command << " " << sent.address << "=" << sent.data;
}

// The clock is at 0, 12:00:00. The port is open, the poll runs and the identity has been received.
class EepromImageBench : public support::TimedBench {
protected:
    EepromImageBench() {
        core::InitModule(tables_, virtual_.preferences);
        core::InitTimeUnits(tables_);
        windows_.frmMisc = &misc_;
        main_.load();
        main_.Visible = true;
        connection_.fillLists();
        main_.btnConnect.press();
        main_.TimerGetSettings.Enabled = false;
    }

    [[nodiscard]] bool polls() { return main_.TimerRequestData.Enabled; }

    [[nodiscard]] std::array<controls::CommandButton*, 4> buttons() {
        return {&main_.btnKartat, &main_.btnAsetukset, &main_.btnBackup, &main_.btnUploadEEPROM};
    }
    void expectButtons(bool enabled) {
        for (const auto* button : buttons()) {
            EXPECT_EQ(button->Enabled.get(), enabled) << button->name();
        }
        EXPECT_EQ(main_.prgEeprom.Visible.get(), !enabled);
    }

    // The frames that have arrived, each with the millisecond in which its first byte went out.
    [[nodiscard]] std::vector<Sent> sent() const {
        std::vector<Sent> frames;
        const auto& bytes = ecu_.arrivals;
        for (std::size_t i = 0; i < bytes.size();) {
            Sent frame{bytes[i].at / platform::kMicrosPerMilli, static_cast<char>(bytes[i].byte), -1, -1};
            if (frame.command == 'x') {
                i += 1;
            } else {
                frame.address = bytes.at(i + 1).byte + 256 * bytes.at(i + 2).byte;
                frame.data = frame.command == 'W' ? bytes.at(i + 3).byte : -1;
                i += frame.command == 'W' ? 6 : 4;
            }
            frames.push_back(frame);
        }
        return frames;
    }

    std::vector<std::string> messages() {
        std::vector<std::string> texts;
        for (const auto& box : virtual_.dialogs.takeMessages()) {
            texts.push_back(box.text);
        }
        return texts;
    }

    // The captions that `button` shows while `run` runs.
    std::vector<std::string> captions(controls::CommandButton& button, const std::function<void()>& run) {
        const support::PropertyValues noted(button, button.Caption);
        run();
        return noted.values;
    }
    static std::vector<std::string> percents(const std::string& last) {
        std::vector<std::string> texts;
        for (int percent = 0; percent <= 100; ++percent) {
            texts.push_back(std::to_string(percent) + "%");
        }
        texts.push_back(last);
        return texts;
    }

    EepromDevice ecu_;
    LooseLine line_{pump_, &ecu_};
    platform::Machine machine_ = virtual_.with(line_);
    core::SharedTables tables_;
    FrmSarn2 main_{machine_};
    core::EepromAccess eeprom_{main_.MSComm1, pump_, tables_};
    NotingMisc misc_;
    link::Windows windows_;
    link::Dispatcher dispatcher_{machine_, main_, tables_, windows_};
    link::Connection connection_{machine_, main_, dispatcher_};
    EepromImage image_{main_, tables_, eeprom_};
};

}  // namespace korvane::live
