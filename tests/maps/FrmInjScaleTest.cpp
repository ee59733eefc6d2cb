#include <limits>

#include "MapsBench.h"
#include "core/files/ChannelFile.h"
#include "support/FileSizeLimit.h"

namespace korvane::maps {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class FrmInjScaleTest : public MapsBench {
protected:
    FrmInjScaleTest() {
        frmInjScale_.populateFuelOUT = [this] { ++populations_; };
        frmInjScale_.load();
    }

    void change(const char* oldSize, const char* newSize) {
        frmInjScale_.txtInjectorOld.Text = oldSize;
        frmInjScale_.txtInjectorNew.Text = newSize;
        frmInjScale_.btnInjectorChange.press();
    }
    // What a cell of `count` becomes.
    int scaled(std::uint8_t count, const char* oldSize, const char* newSize) {
        tables_.FuelMapOut[0] = count;
        change(oldSize, newSize);
        return tables_.FuelMapOut[0];
    }
    // Its text, whatever ends its lines.
    std::string iniFile() {
        std::string text = machine_.folder.read("Settings.ini");
        std::erase(text, '\r');
        return text;
    }
    std::string failure() {
        const auto messages = machine_.dialogs.takeMessages();
        return messages.size() == 1 ? messages[0].text : std::to_string(messages.size()) + " messages";
    }

    int populations_ = 0;
};

TEST_F(FrmInjScaleTest, ShowsTheSharedSizes) {
    EXPECT_EQ(frmInjScale_.Caption.get(), "Injection map rescaling");
    EXPECT_EQ(frmInjScale_.FrameInjectorSize.Caption.get(), "Injector size scaling");
    EXPECT_EQ(frmInjScale_.FrameFuelPressure.Caption.get(), "Fuel pressure scaling");
    EXPECT_EQ(frmInjScale_.lblInjectorOld.Caption.get(), "Old injector");
    EXPECT_EQ(frmInjScale_.lblInjectorNew.Caption.get(), "New injector");
    EXPECT_EQ(frmInjScale_.btnInjectorChange.Caption.get(), "Change");
    EXPECT_EQ(frmInjScale_.txtInjectorOld.Text.get(), "450");
    EXPECT_EQ(frmInjScale_.txtInjectorNew.Text.get(), "550");
    EXPECT_EQ(frmInjScale_.unload(), true);
    tables_.OldInjectorSize = 440.5F;
    tables_.NewInjectorSize = 630.0F;
    frmInjScale_.show();
    EXPECT_EQ(frmInjScale_.txtInjectorOld.Text.get(), "440.5");
    EXPECT_EQ(frmInjScale_.txtInjectorNew.Text.get(), "630");
}

TEST_F(FrmInjScaleTest, TheBoxesHaveTheirDesignTextsBeforeTheLoad) {
    const FrmInjScale window(machine_.machine, tables_);
    EXPECT_EQ(window.txtInjectorOld.Text.get(), "500");
    EXPECT_EQ(window.txtInjectorNew.Text.get(), "600");
}

// 120 * 500 / 600 = 100; 121 * 500 / 600 = 100.83.
TEST_F(FrmInjScaleTest, TheResultIsCutNotRounded) {
    EXPECT_EQ(scaled(120, "500", "600"), 100);
    EXPECT_EQ(scaled(121, "500", "600"), 100);
    EXPECT_EQ(scaled(1, "500", "600"), 0);
}

// 240 * 600 / 500 = 288; 209 * 1.2 = 250.8; 208 * 1.2 = 249.6.
TEST_F(FrmInjScaleTest, TheUpperStopIs250) {
    EXPECT_EQ(scaled(240, "600", "500"), 250);
    EXPECT_EQ(scaled(209, "600", "500"), 250);
    EXPECT_EQ(scaled(208, "600", "500"), 249);
}

TEST_F(FrmInjScaleTest, AnEmptyCellStaysEmpty) {
    EXPECT_EQ(scaled(0, "600", "500"), 0);
    EXPECT_EQ(scaled(0, "500", "600"), 0);
}

TEST_F(FrmInjScaleTest, EqualSizesChangeNothingButTheFile) {
    for (int cell = 0; cell <= 250; ++cell) {
        tables_.FuelMapOut[static_cast<std::size_t>(cell)] = static_cast<std::uint8_t>(cell);
    }
    const auto before = tables_.FuelMapOut;
    change("500", "500");
    EXPECT_EQ(tables_.FuelMapOut, before);
    EXPECT_EQ(iniFile(), "\n[OldInjector]\n500\n\n[NewInjector]\n500\n");
}

TEST_F(FrmInjScaleTest, TheStopHoldsForEqualSizesToo) {
    EXPECT_EQ(scaled(255, "500", "500"), 250);
}

TEST_F(FrmInjScaleTest, OnlyTheFirst160CellsOfTheEditedMapChange) {
    tables_.FuelMapIn.fill(120);
    tables_.FuelMapOut.fill(120);
    tables_.IgnMapOut.fill(120);
    tables_.PwmMapOut.fill(120);
    change("500", "600");
    for (std::size_t cell = 0; cell < tables_.FuelMapOut.size(); ++cell) {
        EXPECT_EQ(tables_.FuelMapOut[cell], cell < 160 ? 100 : 120) << cell;
    }
    EXPECT_THAT(tables_.FuelMapIn, Each(120));
    EXPECT_THAT(tables_.IgnMapOut, Each(120));
    EXPECT_THAT(tables_.PwmMapOut, Each(120));
}

// 144 * 5 / 6 = 120, and 120 * 5 / 6 = 100.
TEST_F(FrmInjScaleTest, PressingTwiceScalesTwice) {
    EXPECT_EQ(scaled(144, "500", "600"), 120);
    frmInjScale_.btnInjectorChange.press();
    EXPECT_EQ(tables_.FuelMapOut[0], 100);
    EXPECT_EQ(populations_, 2);
}

// 100 * 1.9 / 1.1 = 172.7; with whole sizes it would stay 100.
TEST_F(FrmInjScaleTest, AFractionCountsForTheMapAndNotForTheStoredSizes) {
    EXPECT_EQ(scaled(100, "1.9", "1.1"), 172);
    EXPECT_EQ(tables_.OldInjectorSize, 1.0F);
    EXPECT_EQ(tables_.NewInjectorSize, 1.0F);
    EXPECT_EQ(iniFile(), "\n[OldInjector]\n1\n\n[NewInjector]\n1\n");
    EXPECT_EQ(frmInjScale_.txtInjectorOld.Text.get(), "1.9");
}

TEST_F(FrmInjScaleTest, TheSizesAreStoredAndReadBackAtTheNextStart) {
    change("440", "630.7");
    EXPECT_EQ(tables_.OldInjectorSize, 440.0F);
    EXPECT_EQ(tables_.NewInjectorSize, 630.0F);
    core::SharedTables next;
    core::loadInjectorSizes(next, machine_.machine.folder);
    EXPECT_EQ(next.OldInjectorSize, 440.0F);
    EXPECT_EQ(next.NewInjectorSize, 630.0F);
}

TEST_F(FrmInjScaleTest, OtherSectionsOfTheFileStay) {
    machine_.folder.write("Settings.ini", "[OldInjector]\n450\n[Other]\nkept\n");
    change("500", "600");
    EXPECT_EQ(iniFile(), "[OldInjector]\n500\n\n[Other]\nkept\n\n[NewInjector]\n600\n");
}

TEST_F(FrmInjScaleTest, TheFuelMapIsDrawnAgainOnceAndWithTheNewCells) {
    int seen = 0;
    frmInjScale_.populateFuelOUT = [&] {
        seen = tables_.FuelMapOut[0];
        ++populations_;
    };
    scaled(120, "500", "600");
    EXPECT_EQ(seen, 100);
    EXPECT_EQ(populations_, 1);
}

TEST_F(FrmInjScaleTest, WithoutAMapWindowTheMapIsScaledAllTheSame) {
    frmInjScale_.populateFuelOUT = nullptr;
    EXPECT_EQ(scaled(120, "500", "600"), 100);
    EXPECT_THAT(machine_.dialogs.takeMessages(), IsEmpty());
}

TEST_F(FrmInjScaleTest, NothingGoesToTheECU) {
    openPort();
    scaled(120, "500", "600");
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(FrmInjScaleTest, ANewSizeOfZeroIsReportedAndLeavesTheMap) {
    for (const char* size : {"0", "", "injector", "0.0"}) {
        EXPECT_EQ(scaled(120, "500", size), 120) << size;
        EXPECT_THAT(failure(), HasSubstr("Division by zero")) << size;
    }
    EXPECT_EQ(populations_, 0);
    EXPECT_EQ(tables_.OldInjectorSize, 500.0F);
    EXPECT_EQ(tables_.NewInjectorSize, 0.0F);
    EXPECT_EQ(iniFile(), "\n[OldInjector]\n500\n\n[NewInjector]\n0\n");
}

TEST_F(FrmInjScaleTest, AnOldSizeOfZeroEmptiesTheMap) {
    EXPECT_EQ(scaled(120, "0", "600"), 0);
    EXPECT_EQ(populations_, 1);
}

// 120 * -1 is below the lower stop.
TEST_F(FrmInjScaleTest, ANegativeRatioEmptiesTheMap) {
    EXPECT_EQ(scaled(120, "-500", "500"), 0);
    EXPECT_EQ(tables_.OldInjectorSize, -500.0F);
}

TEST_F(FrmInjScaleTest, AnOldSizeBeyond16BitsStoresNothing) {
    EXPECT_EQ(scaled(120, "32768", "600"), 120);
    EXPECT_THAT(failure(), HasSubstr("Overflow"));
    EXPECT_FALSE(machine_.folder.has("Settings.ini"));
    EXPECT_EQ(tables_.OldInjectorSize, 450.0F);
    EXPECT_EQ(tables_.NewInjectorSize, 550.0F);
}

TEST_F(FrmInjScaleTest, ANewSizeBeyond16BitsComesAfterTheOldOneIsStored) {
    EXPECT_EQ(scaled(120, "500", "1E300"), 120);
    EXPECT_THAT(failure(), HasSubstr("Overflow"));
    EXPECT_EQ(iniFile(), "\n[OldInjector]\n500\n");
    EXPECT_EQ(tables_.OldInjectorSize, 500.0F);
    EXPECT_EQ(tables_.NewInjectorSize, 550.0F);
    EXPECT_EQ(populations_, 0);
}

TEST_F(FrmInjScaleTest, TheLargestSizeOf16BitsIsTaken) {
    EXPECT_EQ(scaled(120, "32767.9", "32767.9"), 120);
    EXPECT_EQ(tables_.NewInjectorSize, 32767.0F);
}

// 2 * 1E308 is more than a number can be; 1 * 1E308 is stopped at 250.
TEST_F(FrmInjScaleTest, AFailureOnTheWayLeavesTheMapAsItStandsThere) {
    tables_.FuelMapOut[0] = 1;
    tables_.FuelMapOut[1] = 2;
    tables_.FuelMapOut[2] = 1;
    change("1", "1E-308");
    EXPECT_THAT(failure(), HasSubstr("Overflow"));
    EXPECT_EQ(tables_.FuelMapOut[0], 250);
    EXPECT_EQ(tables_.FuelMapOut[1], 2);
    EXPECT_EQ(tables_.FuelMapOut[2], 1);
    EXPECT_EQ(populations_, 0);
}

TEST_F(FrmInjScaleTest, ARatioThatIsNoNumberIsReported) {
    EXPECT_EQ(scaled(0, "32767", "1E-308"), 0);
    EXPECT_THAT(failure(), HasSubstr("Overflow"));
}

TEST_F(FrmInjScaleTest, AFileThatCantBeWrittenStopsNothing) {
    std::filesystem::create_directory(machine_.folder / "Settings.ini");
    EXPECT_EQ(scaled(120, "500", "600"), 100);
    EXPECT_EQ(tables_.NewInjectorSize, 600.0F);
    EXPECT_THAT(machine_.dialogs.takeMessages(), IsEmpty());
}

TEST_F(FrmInjScaleTest, AFolderThatIsGoneStopsNothing) {
    std::filesystem::remove_all(machine_.folder.path());
    EXPECT_EQ(scaled(120, "500", "600"), 100);
    EXPECT_THAT(machine_.dialogs.takeMessages(), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(machine_.folder.path()));
}

TEST_F(FrmInjScaleTest, AFullDiskKeepsTheOldFile) {
    machine_.folder.write("Settings.ini", "[OldInjector]\n450\n\n[NewInjector]\n550\n");
    {
        const support::FileSizeLimit full(4);
        EXPECT_EQ(scaled(120, "500", "600"), 100);
    }
    EXPECT_EQ(iniFile(), "[OldInjector]\n450\n\n[NewInjector]\n550\n");
    EXPECT_EQ(tables_.OldInjectorSize, 500.0F);
}

}  // namespace
}  // namespace korvane::maps
