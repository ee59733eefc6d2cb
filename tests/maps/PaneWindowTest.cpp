#include "MapsBench.h"
#include "link/Dispatcher.h"
#include "maps/panes/IgnitionPane.h"
#include "maps/panes/MiscPane.h"
#include "maps/panes/PaneWindow.h"

namespace korvane::maps {
namespace {

using support::Bytes;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr MiscCaptions kCaptions{.bits = {"Enable LCD", "", "Reset to defaults"},
                                 .receiving = "Getting data from ECU!"};

// As small as a map window gets: the misc block and the ignition map.
class SmallWindow : public PaneWindow, public MiscPane, public IgnitionPane {
public:
    SmallWindow(platform::Machine& machine, const MapContext& context)
        : PaneWindow(machine, context, {"frmSmall", "Small"}, kOrdinaryMaps),
          MiscPane(ground(), kCaptions),
          IgnitionPane(ground(), Halves::One, Pointing::Keys) {}
};

class PaneWindowTest : public MapsBench {
protected:
    PaneWindowTest() {
        tables_.Features = 0xFFFF;
        windows_.curMapWindow = &window_;
        openPort();
        window_.show();
    }

    void deliver(std::uint8_t command, Bytes payload) { dispatcher_.DoCommand(command, payload); }
    void receiveIgnition(std::uint8_t value) { deliver('a', Bytes(160, value)); }

    link::Windows windows_;
    link::Dispatcher dispatcher_{machine_.machine, main_, tables_, windows_};
    SmallWindow window_{machine_.machine, context_};
};

TEST_F(PaneWindowTest, HasTheNamesOfItsOwnPanesAlone) {
    std::vector<std::string> names;
    for (const auto* control : window_.controls()) {
        if (std::string name(control->name()); names.empty() || names.back() != name) {
            names.push_back(name);
        }
    }
    EXPECT_THAT(names, UnorderedElementsAre("FrameIgn", "txtIgn", "lblRpmI", "lblMapI", "btnReadIgn", "btnWriteIgn",
                                            "btnReadMisc", "btnSaveMisc", "FrameMisc", "lblMisc", "txtMisc",
                                            "CheckMisc", "FrameINJMaxOpen", "optINJMaxOpen", "TimeOutTimer",
                                            "chkOnlineChanges", "prgTransfer", "Timer1"));
}

TEST_F(PaneWindowTest, NamesTheMiscBlockInItsOwnWords) {
    EXPECT_EQ(window_.CheckMisc(0).Caption.get(), "Enable LCD");
    EXPECT_EQ(window_.CheckMisc(2).Caption.get(), "Reset to defaults");
    EXPECT_EQ(window_.CheckMisc(15).Caption.get(), "");
    const CaptionObserver observer(window_);
    deliver('m', Bytes(9, 0));
    EXPECT_THAT(observer.captions, ElementsAre("Getting data from ECU!", "Misc datan haku onnistui"));
}

TEST_F(PaneWindowTest, ReadsItsPanesInTheirOrder) {
    EXPECT_THAT(sent(), IsEmpty());
    window_.initialReads();
    EXPECT_EQ(sent(), (Bytes{'m', 'a'}));
}

TEST_F(PaneWindowTest, AnEditedCellGoesOutAtOnceAndTheMapByItsButton) {
    static_cast<void>(sent());
    receiveIgnition(20);
    window_.chkOnlineChanges.press();
    window_.setFocus(&window_.ign(17));
    window_.ign(17).keyDown(controls::kKeyPlus, 0);
    EXPECT_EQ(window_.ign(17).Text.get(), "4.2");  // 21 counts of 0.2 degrees
    EXPECT_EQ(sent(), (Bytes{'i', 17, 17, 21, 21, 0x96}));
    window_.btnWriteIgn.press();
    Bytes map(160, 20);
    map.at(17) = 21;
    map.insert(map.begin(), 'A');
    map.push_back(0xBE);
    map.push_back('b');
    EXPECT_EQ(sent(), map);
}

TEST_F(PaneWindowTest, TheRepliesForItsPanesReachIt) {
    receiveIgnition(20);
    EXPECT_EQ(window_.ign(159).Text.get(), "4");
    EXPECT_EQ(window_.Caption.get(), "Received Ignition map 12:00:00");
    deliver('m', {52, 33, 40, 35, 0, 0, 9, 128, 5});
    EXPECT_EQ(window_.txtMisc(kRpmLimit).Text.get(), "8500");  // 52 + 256 * 33
    EXPECT_EQ(window_.Caption.get(), "Misc datan haku onnistui");
}

TEST_F(PaneWindowTest, AReplyForAPaneThatItHasNotGotFailsAsWithoutAWindow) {
    deliver('f', Bytes(160, 1));
    deliver('p', {70, 5});
    const auto unset = testing::HasSubstr("Object variable not set");
    EXPECT_THAT(machine_.log.lines, ElementsAre(unset, unset));
    EXPECT_EQ(tables_.FuelMapIn[159], 1) << "the image is filled all the same";
    EXPECT_EQ(tables_.PwmMapIn[70], 5);
    EXPECT_EQ(window_.Caption.get(), "Small");
}

TEST_F(PaneWindowTest, HasNoPartsButThoseOfItsPanes) {
    auto* const window = windows_.curMapWindow;
    EXPECT_EQ(link::partOf<link::MiscPart>(window), &window_);
    EXPECT_EQ(link::partOf<link::EnginePlacePart>(window), nullptr);
    EXPECT_EQ(link::partOf<link::FuelMapPart>(window), nullptr);
    EXPECT_EQ(link::partOf<link::PwmMapPart>(window), nullptr);
}

TEST_F(PaneWindowTest, MayBeClosedWhileItSends) {
    static_cast<void>(sent());
    machine_.at(600, [&] { EXPECT_TRUE(window_.unload()); });
    window_.btnWriteIgn.press();
    EXPECT_FALSE(window_.isLoaded());
    EXPECT_EQ(sent().size(), 163U) << "the map is sent whole";
    EXPECT_THAT(machine_.log.lines, IsEmpty());
}

}  // namespace
}  // namespace korvane::maps
