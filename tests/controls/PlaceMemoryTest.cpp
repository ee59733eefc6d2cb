#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "controls/PlaceMemory.h"
#include "support/MemoryPreferences.h"

namespace korvane::controls {
namespace {

using testing::Eq;
using testing::Optional;

constexpr const char* kScreens = "1920x1080@0,0";
constexpr RememberedPlace kPlace{{26, -40, 1340, 690}, false};

struct PlaceMemoryTest : testing::Test {
    support::MemoryPreferences preferences;
    PlaceMemory memory{preferences};

    [[nodiscard]] std::optional<RememberedPlace> recallOf(const std::string& text) {
        preferences.write("Windows", "frmMaps", text);
        return memory.recall("frmMaps", kScreens);
    }
};

TEST_F(PlaceMemoryTest, KeepsSizeAndPlaceOfEachWindow) {
    const RememberedPlace other{{900, 40, 700, 500}, true};
    memory.remember("frmMaps", kPlace, kScreens);
    memory.remember("frmMisc", other, kScreens);
    EXPECT_THAT(memory.recall("frmMaps", kScreens), Optional(Eq(kPlace)));
    EXPECT_THAT(memory.recall("frmMisc", kScreens), Optional(Eq(other)));
    EXPECT_EQ(memory.recall("frmSarn2", kScreens), std::nullopt);
    EXPECT_EQ(preferences.read("Windows", "frmMaps"), "1340x690@26,-40 | 1920x1080@0,0");
    EXPECT_EQ(preferences.read("Windows", "frmMisc"), "700x500@900,40 maximized | 1920x1080@0,0");
}

TEST_F(PlaceMemoryTest, DropsAPlaceOnOtherScreens) {
    memory.remember("frmMaps", kPlace, kScreens);
    EXPECT_EQ(memory.recall("frmMaps", "1920x1080@0,0 1366x768@1920,0"), std::nullopt);
    EXPECT_EQ(memory.recall("frmMaps", "960x540@0,0"), std::nullopt);
    EXPECT_EQ(memory.recall("frmMaps", ""), std::nullopt);
}

TEST_F(PlaceMemoryTest, DropsADamagedText) {
    EXPECT_THAT(recallOf("1340x690@26,-40 | 1920x1080@0,0"), Optional(Eq(kPlace)));
    for (const char* text : {"", "1340x690@26,-40", "1340x690@26 | 1920x1080@0,0", "1340x690@26,-40, | 1920x1080@0,0",
                             "1340x690@26,-40x | 1920x1080@0,0", "x690@26,40 | 1920x1080@0,0",
                             "1340,690@26,40 | 1920x1080@0,0", "99999999999x690@26,40 | 1920x1080@0,0",
                             "0x690@26,40 | 1920x1080@0,0", "1340x-690@26,40 | 1920x1080@0,0", " | 1920x1080@0,0"}) {
        EXPECT_EQ(recallOf(text), std::nullopt) << text;
    }
}

TEST_F(PlaceMemoryTest, WritesOnlyWhatHasChanged) {
    struct Counted : support::MemoryPreferences {
        void write(std::string_view key, std::string_view name, std::string_view text) override {
            ++writes;
            support::MemoryPreferences::write(key, name, text);
        }
        int writes = 0;
    } counted;
    PlaceMemory counting(counted);
    counting.remember("frmMaps", kPlace, kScreens);
    counting.remember("frmMaps", kPlace, kScreens);
    EXPECT_EQ(counted.writes, 1);
    counting.remember("frmMaps", kPlace, "960x540@0,0");
    EXPECT_EQ(counted.writes, 2);
}

}  // namespace
}  // namespace korvane::controls
