#include <QCheckBox>
#include <QPaintEvent>
#include <QPainter>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "maps/grid/Selection.h"
#include "views/CutTexts.h"
#include "views/Pixels.h"
#include "views/ProgramViews.h"
#include "views/maps/GridMarks.h"
#include "views/maps/MapGridView.h"
#include "views/widgets/HeatColors.h"
#include "views/widgets/PlainTip.h"
#include "views/widgets/values/LongLine.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {
namespace {

using testing::IsEmpty;

// The marks of a map window's grids, on a line without a device.
struct MapMarksTest : testing::Test, ProgramViews {
    MapMarksTest() {
        tables.Features = 0xFFFF;
        program.mapWindows().open();
        maps_ = dynamic_cast<maps::FrmMaps*>(windows.loaded().back());
        lookAt(*maps_);
        pump.wait(1000);
        for (std::size_t cell = 0; cell < 160; ++cell) {
            tables.FuelMapIn.at(cell) = tables.FuelMapOut.at(cell) = static_cast<std::uint8_t>(40 + cell);
            tables.IgnMapIn.at(cell) = tables.IgnMapOut.at(cell) = 50;
        }
        maps_->populateFuel();
        maps_->populateIGN();
        maps_->populatePWMOUT();
        maps_->resize(1366 * 15, 728 * 15);
        view().activateWindow();
        settle();
    }

    [[nodiscard]] MapGridView& grid(const char* name = "txtFuel") const { return find<MapGridView>(name); }
    void select(int first, int last) {
        maps_->fuel.SelFirst = first + 1;
        maps_->fuel.SelLast = last + 1;
        frame();
    }
    [[nodiscard]] QColor pixel(QPoint at) const { return grid().grab().toImage().pixelColor(at); }
    // The middles of the lines around a cell.
    [[nodiscard]] bool outlinedAbove(int cell) const {
        const QRect place = grid().cellRect(cell);
        return pixel({place.center().x(), place.top() - 1}) == kOutlineColor;
    }
    [[nodiscard]] bool outlinedLeft(int cell) const {
        const QRect place = grid().cellRect(cell);
        return pixel({place.left() - 1, place.center().y()}) == kOutlineColor;
    }
    [[nodiscard]] bool hasColor(const QRect& place, const QColor& color) const {
        return countOf(grid().grab(place).toImage(), color) > 0;
    }
    [[nodiscard]] static QRect bar(const QRect& cell) {
        return {cell.left(), cell.bottom() - GridCellPainter::kBar + 1, cell.width(), GridCellPainter::kBar};
    }

    maps::FrmMaps* maps_ = nullptr;
};

TEST_F(MapMarksTest, ABlockIsOutlinedInReadingOrder) {
    select(18, 52);
    EXPECT_TRUE(outlinedAbove(18));
    EXPECT_TRUE(outlinedLeft(18));
    EXPECT_FALSE(outlinedAbove(17));
    EXPECT_TRUE(outlinedAbove(32));   // below the cells that are left of the first
    EXPECT_FALSE(outlinedAbove(34));  // inside
    EXPECT_FALSE(outlinedLeft(34));
    EXPECT_TRUE(outlinedLeft(32));  // where a row begins
    EXPECT_TRUE(outlinedLeft(53));
    EXPECT_TRUE(outlinedAbove(68));
    EXPECT_TRUE(outlinedAbove(53));
    EXPECT_FALSE(outlinedAbove(69));
    EXPECT_FALSE(outlinedAbove(85));
}

TEST_F(MapMarksTest, AColourAloneIsNotOutlined) {
    select(18, 20);
    maps_->fuel(19).BackColor = controls::kGreen;
    maps::forgetBlock(maps_->fuel);
    frame();
    EXPECT_FALSE(outlinedAbove(19));
    EXPECT_EQ(grid().block(), std::nullopt);
}

TEST_F(MapMarksTest, AWhiteCellStaysInsideTheOutline) {
    select(18, 20);
    maps_->fuel(19).BackColor = controls::kWhite;
    frame();
    EXPECT_TRUE(outlinedAbove(19));
    EXPECT_FALSE(outlinedLeft(19));
}

TEST_F(MapMarksTest, TheEngineHasARingOnARedTrail) {
    maps_->fuel(40).BackColor = controls::kRed;
    maps_->fuel(41).BackColor = controls::kRed;
    maps_->fuel.EngineCell = 41;
    frame();
    const auto ring = [&](int cell) {
        return grid().cellRect(cell).adjusted(2, 2, -2, -grid().cellRect(0).height() + 7);
    };
    EXPECT_TRUE(hasColor(ring(41), Qt::white));
    EXPECT_FALSE(hasColor(ring(40), Qt::white));
    maps_->fuel.EngineCell = std::nullopt;
    frame();
    EXPECT_FALSE(hasColor(ring(41), Qt::white));
}

TEST_F(MapMarksTest, OnlyTheCellsOfTheRingArePainted) {
    maps_->fuel.EngineCell = 41;
    frame();
    const PaintCounter fuel(grid());
    frame();
    EXPECT_EQ(fuel.count(), 0);
    maps_->fuel.EngineCell = 42;
    frame();
    EXPECT_EQ(fuel.count(), 1);
}

// Smoothing of the ring's edge may touch the pixels beside its cell.
TEST_F(MapMarksTest, WhereTheRingWasIsPaintedAnewInItsWholeWidth) {
    struct Region : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            painted += event->type() == QEvent::Paint ? static_cast<QPaintEvent*>(event)->region() : QRegion();
            return false;
        }
        QRegion painted;
    } region;
    maps_->fuel.EngineCell = 41;
    frame();
    grid().installEventFilter(&region);
    maps_->fuel.EngineCell = 44;
    frame();
    for (const int cell : {41, 44}) {
        const QRect ring = grid().cellRect(cell).adjusted(-1, -1, 1, 1);
        EXPECT_EQ(region.painted.intersected(ring), QRegion(ring)) << cell;
    }
    EXPECT_FALSE(region.painted.contains(grid().cellRect(48).center()));
}

// All of it is in its cell, also in a narrow one.
TEST(EngineRing, LeavesTheNeighboursAlone) {
    for (const int width : {30, 60}) {
        QImage image(100, 60, QImage::Format_RGB32);
        image.fill(Qt::red);
        QPainter painter(&image);
        const QRect cell(20, 20, width, 24);
        paintEngineRing(painter, cell);
        painter.end();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                EXPECT_TRUE(cell.contains(x, y) || image.pixelColor(x, y) == QColor(Qt::red)) << x << " " << y;
            }
        }
    }
}

TEST_F(MapMarksTest, ScreenReadersHearTheMarks) {
    select(18, 20);
    maps_->fuel.EngineCell = 19;
    frame();
    EXPECT_EQ(grid().stateOf(19), "in the block, engine runs here now");
    EXPECT_EQ(grid().stateOf(21), "");
}

TEST_F(MapMarksTest, TheHeatTintIsABarAlongTheLowerEdge) {
    EXPECT_FALSE(hasColor(bar(grid().cellRect(0)), heatColor(0)));
    click(find("heatTint"), QPoint(8, find("heatTint").height() / 2));
    EXPECT_TRUE(maps_->look.HeatTint);
    EXPECT_TRUE(hasColor(bar(grid().cellRect(0)), heatColor(0)));
    EXPECT_TRUE(hasColor(bar(grid().cellRect(159)), heatColor(31)));
    EXPECT_EQ(grid().heatOf(80), 16);
    tables.FuelMapOut[0] = 255;
    maps_->populateFuelOUT();
    frame();
    EXPECT_TRUE(hasColor(bar(grid().cellRect(0)), heatColor(31)));
    maps_->look.HeatTint = false;
    frame();
    EXPECT_FALSE(find<QCheckBox>("heatTint").isChecked());
    EXPECT_FALSE(hasColor(bar(grid().cellRect(0)), heatColor(31)));
}

// The first cell has the mark of the focus. A whole digit is wider than four pixels.
TEST_F(MapMarksTest, AlignedNumbersHaveTheirPointsBelowEachOther) {
    maps_->fuel(1).Text = "1.25";
    maps_->fuel(17).Text = "12.5";
    maps_->fuel(33).Text = "7";
    const auto leftmostInk = [this](int cell) {
        const QImage image = grid().grab(grid().cellRect(cell).adjusted(1, 3, -1, -3)).toImage();
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y) {
                if (image.pixelColor(x, y).lightness() < 128) {
                    return x;
                }
            }
        }
        return -1;
    };
    frame();
    EXPECT_NEAR(leftmostInk(1), leftmostInk(17), 2);
    maps_->look.AlignNumbers = true;
    frame();
    const int digit = leftmostInk(1) - leftmostInk(17);
    EXPECT_GE(digit, 4);
    EXPECT_NEAR(leftmostInk(33), leftmostInk(1), 2);
}

// 1 / 12 as a file brings it: the text of the control stays as it is.
TEST_F(MapMarksTest, ANumberWithMoreDecimalsThanACellCanHoldIsCutBehindThree) {
    maps_->pwm(64).Text = "3.33333333333333E-05";
    maps_->pwm(65).Text = "0.0833333333333333";
    maps_->pwm(66).Text = "12.9688";
    frame();
    EXPECT_EQ(grid("txtPWM").cell(64).text, "3.33333333333333E-05");
    EXPECT_EQ(grid("txtPWM").cell(65).text, "0.083");
    EXPECT_EQ(grid("txtPWM").cell(66).text, "12.9688");
    EXPECT_EQ(maps_->pwm(65).Text, "0.0833333333333333");
}

TEST_F(MapMarksTest, AllGridsOfAWindowWriteDigitsOfOneSize) {
    EXPECT_EQ(grid("txtFuel").digitPixels(), grid("txtIgn").digitPixels());
    const int before = grid("txtIgn").digitPixels();
    maps_->fuel(3).Text = "1234.567";
    frame();
    EXPECT_LT(grid("txtIgn").digitPixels(), before);
    for (const char* name : {"txtFuel", "txtIgn", "txtPWM", "txtInjAnalys"}) {
        EXPECT_EQ(grid(name).digitPixels(), grid("txtFuel").digitPixels()) << name;
    }
    maps_->chkInjAnal.Value = 1;
    frame();
    EXPECT_EQ(grid("txtInjAnalys").digitPixels(), grid("txtFuel").digitPixels());
}

TEST_F(MapMarksTest, TheStatusLineTellsOfCellBlockAndUnsentCells) {
    maps_->setFocus(&maps_->ign(17));
    key(grid("txtIgn"), Qt::Key_Plus, {}, "+");
    EXPECT_EQ(find<Readout>("cellStatus").text(), "Ignition, 1500 RPM, 10-20 %: 10.2 deg (was 10), count 51 (was 50)");
    EXPECT_EQ(find<Readout>("unsentStatus").text(), "Not sent: 1 ignition");
    program.frmSarn2().ecuMaps.ignition.changed(17, 51);
    frame();
    EXPECT_EQ(find<Readout>("unsentStatus").text(), "Not stored: 1 ignition");
    select(0, 1);
    EXPECT_THAT(find<Readout>("cellStatus").text().toStdString(), testing::HasSubstr("; Fuel block of 2 cells, sum "));
}

TEST_F(MapMarksTest, NoPartOfTheStatusLineIsCutWhileAllFit) {
    auto& ecu = program.frmSarn2().ecuMaps.ignition;
    maps_->setFocus(&maps_->ign(17));
    key(grid("txtIgn"), Qt::Key_Plus, {}, "+");
    ecu.changed(17, 51);
    frame();
    const auto& store = find<LongLine>("storeStatus");
    const auto& cell = find<Readout>("cellStatus");
    ASSERT_TRUE(store.isVisible());
    for (const int width : {1300, 1500, 1900}) {
        view().resize(width, view().height());
        frame();
        const int needed = cell.sizeHint().width() + store.sizeHint().width();
        if (cell.width() + store.width() >= needed) {
            EXPECT_FALSE(cell.isCut()) << width;
            EXPECT_EQ(store.text(), store.words()) << width;
        }
    }
    EXPECT_EQ(store.toolTip(), plainTip(store.words()));
}

TEST_F(MapMarksTest, TheLongestUsualStatusFitsASmallLaptop) {
    tables.FuelMapOut.fill(255);
    tables.IgnMapOut.fill(255);
    maps_->populateFuelOUT();
    maps_->setFocus(&maps_->fuel(151));
    frame();
    EXPECT_THAT(cutTexts(view()), IsEmpty()) << find<Readout>("cellStatus").text().toStdString();
}

}  // namespace
}  // namespace korvane::views
