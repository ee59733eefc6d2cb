// Tool-tips, units and the list of ports of the main window.
#include <QAbstractItemView>
#include <QComboBox>
#include <QHelpEvent>
#include <QToolTip>

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "views/CutTexts.h"
#include "views/ProgramViews.h"
#include "views/dashboard/MainView.h"
#include "views/widgets/Palette.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

struct MainHintsTest : testing::Test, ProgramViews {
    MainHintsTest() { settle(); }
    [[nodiscard]] std::string unit(int label) const {
        return find<Readout>("unit(" + std::to_string(label) + ")").text().toStdString();
    }
    [[nodiscard]] std::string hover(const std::string& name) const {
        QWidget& widget = find(name);
        const QPoint at = widget.rect().center();
        send(widget, QHelpEvent(QEvent::ToolTip, at, widget.mapToGlobal(at)));
        return QToolTip::text().toStdString();
    }
};

TEST_F(MainHintsTest, EveryControlThatIsShownHasAToolTip) {
    for (const auto* control : window.controls()) {
        if (control->kind() != "timer" && control->kind() != "serial control") {
            EXPECT_FALSE(find(control->path()).toolTip().isEmpty()) << control->path();
        }
    }
}

TEST_F(MainHintsTest, AToolTipOfTheControlItselfComesFirst) {
    EXPECT_EQ(find("Command6").toolTip(), "Big readout\nOpens a window with one large number. Sends nothing.");
    EXPECT_EQ(window.Command6.ToolTipText.get(), "Big readout");
    EXPECT_EQ(window.btnConnect.ToolTipText.get(), "") << "what scripts read";
}

// The loop behind a transfer goes on counting.
TEST_F(MainHintsTest, ATransferThatHasLostItsPortSaysThatNothingIsRead) {
    connect();
    for (auto* const button : {&window.btnBackup, &window.btnUploadEEPROM}) {
        button->Enabled = false;
    }
    frame();
    EXPECT_THAT(hover("btnBackup"), Not(HasSubstr("The port is closed")));
    const QImage counting = find("btnBackup").grab().toImage();
    window.MSComm1.setPortOpen(false);
    frame();
    EXPECT_NE(find("btnBackup").grab().toImage(), counting);
    EXPECT_THAT(hover("btnBackup"), StartsWith("The port is closed: nothing is read.\nReads EEPROM"));
    EXPECT_THAT(hover("btnUploadEEPROM"), StartsWith("The port is closed: nothing is written.\nWrites addresses"));
    window.btnBackup.Enabled = true;
    frame();
    EXPECT_THAT(hover("btnBackup"), StartsWith("Reads EEPROM"));
}

TEST_F(MainHintsTest, UnitsStandBesideTheValues) {
    EXPECT_EQ(unit(0), "1/min");
    EXPECT_EQ(unit(4), "bar");
    EXPECT_EQ(unit(8), "");
    window.resize(1366 * 15, 728 * 15);
    frame();
    EXPECT_THAT(cutTexts(view()), IsEmpty());
}

TEST_F(MainHintsTest, AChannelThatIsScaledAnewLosesItsUnit) {
    auto& settings = program.frmMisc();
    settings.load();
    settings.Combo1.choose(4);
    settings.txtParScale.Text = "100";
    settings.btnSaveParam.press();
    frame();
    EXPECT_EQ(unit(4), "");
    EXPECT_EQ(unit(3), "V");
}

TEST_F(MainHintsTest, ATrendSaysHowMuchTimeItReallyShows) {
    EXPECT_THAT(hover("picTrend"), HasSubstr("\nNo samples yet."));
    connect();
    for (int i = 0; i < 3; ++i) {
        receiveFrame('R', {12, 128, 137, 83, 138, 130, 120, 94, 60, 3, 37, 0x61, 0x2A});
        pump.wait(2000);
    }
    for (const char* trend : {"picTrend", "picTrend2"}) {
        EXPECT_THAT(hover(trend), HasSubstr("3 samples, the last 4")) << trend;
    }
}

TEST_F(MainHintsTest, ThePortListHasTheDeviceBesideTheName) {
    auto& list = find<QComboBox>("ComboPort");
    list.showPopup();
    window.ComboPort.setItemToolTip(0, "/dev/ttyUSB0");
    frame();
    settle();
    const auto row = [&](int number) {
        QRect place = list.view()->visualRect(list.model()->index(number, 0));
        place.setLeft(place.left() + list.fontMetrics().horizontalAdvance("COM15") + 24);
        return list.view()->viewport()->grab(place).toImage();
    };
    EXPECT_GE(list.view()->width(), list.fontMetrics().horizontalAdvance("COM1 the built-in virtual ECU"));
    EXPECT_EQ(row(1), row(2)) << "the same device behind their names";
    EXPECT_NE(row(0), row(2)) << "another device";
    list.hidePopup();
    EXPECT_EQ(list.itemText(0).toStdString(), "COM1");
    EXPECT_EQ(list.itemData(0, Qt::AccessibleTextRole).toString().toStdString(), "COM1, /dev/ttyUSB0");
}

// The texts are painted with the text's colour and, without a device, with that of what can't be used.
TEST_F(MainHintsTest, APortWithoutADeviceIsDim) {
    auto& list = find<QComboBox>("ComboPort");
    list.showPopup();
    window.ComboPort.setItemToolTip(2, "/dev/ttyUSB0");
    window.ComboPort.setItemToolTip(3, "No device");
    frame();
    settle();
    const auto strongest = [&](int row) {
        const QRect place = list.view()->visualRect(list.model()->index(row, 0));
        const QImage image = list.view()->viewport()->grab(place).toImage();
        double most = 1;
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y) {
                most = std::max(most, contrast(image.pixelColor(image.width() - 1, 0), image.pixelColor(x, y)));
            }
        }
        return most;
    };
    EXPECT_GT(strongest(2), 2 * strongest(3));
    list.hidePopup();
}

}  // namespace
}  // namespace korvane::views
