// Settings files of known content, and tables that show what was read from one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Checked.h"
#include "core/files/SettingsFile.h"
#include "core/tables/SharedTables.h"
#include "platform/QueuedDialogs.h"
#include "support/TempFolder.h"

namespace korvane::core {

struct Applied {
    std::int32_t value;
    std::int32_t addr;
    bool is16;
    bool operator==(const Applied&) const = default;
};

// `lines` lines, each of `perLine` times " `number` ".
inline std::string table(int lines, int perLine, std::string_view number) {
    std::string text;
    for (int line = 0; line < lines; ++line) {
        for (int i = 0; i < perLine; ++i) {
            (text += ' ').append(number) += ' ';
        }
        text += "\r\n";
    }
    return text;
}

inline std::string smallMap(const std::string& header, std::string_view number) {
    return header + "\r\n" + table(10, 16, number);
}

inline std::string largeMap(const std::string& header, std::string_view number) {
    return header + "_320\r\n" + table(16, 20, number);
}

inline const std::string kFuel = smallMap("Injection", "11");
inline const std::string kIgnition = smallMap("Ignition", "22");
inline const std::string kMisc = "Misc\r\n 1  2  3  4  5  6  7  8  9 \r\n";
inline const std::string kPwm = smallMap("PWM", "44");
inline const std::string kTables = kFuel + kIgnition + kMisc + kPwm;

class SettingsBench : public testing::Test {
protected:
    // Every cell of the In tables holds 255 before a load.
    SettingsBench() {
        tables_->FuelMapIn.fill(255);
        tables_->IgnMapIn.fill(255);
        tables_->PwmMapIn.fill(255);
        tables_->MiscBlock.fill(255);
    }

    std::string saved(std::int16_t mapSize) {
        SaveSettingsFile(folder_ / "tune.txt", *tables_, mapSize, dialogs_);
        EXPECT_THAT(texts(), testing::IsEmpty());
        return folder_.read("tune.txt");
    }

    int load(std::string_view content) {
        return LoadSettingsFile(folder_.write("tune.txt", content), *tables_, nullptr, dialogs_);
    }

    // With the parameters, which are noted in applied_.
    int loadAll(std::string_view content) {
        const auto take = [this](std::int32_t value, std::int32_t addr, bool is16) {
            static_cast<void>(checked(tables_->EEImage, addr));
            applied_.push_back({value, addr, is16});
        };
        return LoadSettingsFile(folder_.write("tune.txt", content), *tables_, take, dialogs_);
    }

    std::vector<std::string> texts() {
        std::vector<std::string> texts;
        for (const auto& message : dialogs_.takeMessages()) {
            EXPECT_EQ(message.title, "");
            EXPECT_EQ(message.icon, platform::MessageIcon::None);
            texts.push_back(message.text);
        }
        return texts;
    }

    [[nodiscard]] static std::vector<int> cells(const MapImage& map, std::size_t first, std::size_t last) {
        return {map.begin() + static_cast<std::ptrdiff_t>(first), map.begin() + static_cast<std::ptrdiff_t>(last) + 1};
    }

    [[nodiscard]] std::vector<int> misc() const { return {tables_->MiscBlock.begin(), tables_->MiscBlock.end()}; }

    support::TempFolder folder_;
    platform::QueuedDialogs dialogs_;
    std::unique_ptr<SharedTables> tables_ = std::make_unique<SharedTables>();
    std::vector<Applied> applied_;
};

}  // namespace korvane::core
