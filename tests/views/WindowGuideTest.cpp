#include <QTextBrowser>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "views/frame/HelpWindow.h"
#include "views/frame/WindowGuide.h"

namespace korvane::views {
namespace {

using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;

TEST(WindowTitle, StandsBeforeTheCaption) {
    EXPECT_EQ(titleOf("frmMaps", "Fuel received 12:00:00"), "Kartat – Fuel received 12:00:00");
    EXPECT_EQ(titleOf("frmMisc", "Misc"), "Asetukset – Misc");
    EXPECT_EQ(titleOf("frmMaps", ""), "Kartat");
}

TEST(WindowTitle, IsSaidOnce) {
    EXPECT_EQ(titleOf("frmIGNDebug", "Ignition Debug"), "Ignition Debug");
    EXPECT_EQ(titleOf("frmMaps_ign_limiter", "Korvane Tuner, Ignition limiter"), "Korvane Tuner, Ignition limiter");
    EXPECT_EQ(titleOf("frmMaps_ign_limiter", "Received"), "Ignition limiter – Received");
}

TEST(WindowTitle, IsTheCaptionWhereThatSaysEnough) {
    EXPECT_EQ(titleOf("frmSarn2", "Korvane Tuner v1.3 by Dulmer"), "Korvane Tuner v1.3 by Dulmer");
    EXPECT_EQ(titleOf("frmBigText", "RPM  850"), "RPM  850");
    EXPECT_EQ(titleOf("frmUnknown", "Caption"), "Caption");
}

std::vector<std::string_view> keyNames(std::string_view window) {
    std::vector<std::string_view> names;
    for (const auto& key : keysOf(*guideOf(window))) {
        names.push_back(key.keys);
    }
    return names;
}

TEST(WindowKeys, AreThoseOfTheWindowAndThoseOfAllWindows) {
    EXPECT_THAT(keyNames("frmMaps"), IsSupersetOf({"a", "l", "F5", "Escape", "Ctrl+Q, Ctrl+W", "F1"}));
    EXPECT_THAT(keyNames("frmSarn2"), IsSupersetOf({"Tab, Shift+Tab", "Space", "Alt+letter", "Ctrl+Q, Ctrl+W", "F1"}));
}

TEST(WindowKeys, LeaveOutWhatDoesNothingThere) {
    EXPECT_THAT(keyNames("frmSarn2"), Not(Contains("F5")));
    EXPECT_THAT(keyNames("frmSarn2"), Not(Contains("Escape")));
    EXPECT_THAT(keyNames("frmMeter"), Not(Contains("F5")));
}

TEST(WindowHelp, HasPurposeAndKeysAsPlainText) {
    QTextBrowser shown;
    const auto& guide = *guideOf("frmMaps_ign_limiter");
    shown.setHtml(helpText(guide));
    EXPECT_TRUE(shown.toPlainText().startsWith(QString::fromStdString(std::string(guide.purpose))))
        << shown.toPlainText().toStdString();
    EXPECT_TRUE(shown.toPlainText().contains("F5"));
}

}  // namespace
}  // namespace korvane::views
