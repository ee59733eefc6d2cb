#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QWheelEvent>

#include <algorithm>
#include <gtest/gtest.h>

#include "core/tables/SharedTables.h"
#include "maps/Frm3Dmap.h"
#include "maps/FrmInjScale.h"
#include "support/VirtualMachine.h"
#include "views/Events.h"
#include "views/Views.h"
#include "views/widgets/Palette.h"
#include "views/widgets/charts/ChartWidget.h"

namespace korvane::views {
namespace {

template <class Model>
struct ToolBench : testing::Test, support::VirtualMachine {
    ToolBench() { addViews(host); }

    void frame() {
        host.clock().tick();
        settle();
    }
    template <class Widget>
    [[nodiscard]] Widget& find(const char* name) const {
        return dynamic_cast<Widget&>(*host.viewOf(window)->template findChild<QWidget*>(QString::fromLatin1(name)));
    }

    core::SharedTables tables;
    Model window{machine, tables};
    ViewHost host{windows};
};

struct Map3DViewTest : ToolBench<maps::Frm3Dmap> {
    Map3DViewTest() {
        for (std::size_t cell = 0; cell < tables.FuelMapOut.size(); ++cell) {
            tables.FuelMapOut.at(cell) = static_cast<std::uint8_t>(20 + cell / 16 * 20);
        }
        window.load();
        window.open();
        window.Update3D(1);
        frame();
    }

    [[nodiscard]] ChartWidget& chart() const { return find<ChartWidget>("MSChart1"); }
    [[nodiscard]] QString cellName() const { return find<QLabel>("cellName").text(); }

    void move(QPointF at, Qt::MouseButtons buttons = {}) {
        send(chart(), QMouseEvent(QEvent::MouseMove, at, chart().mapToGlobal(at), Qt::NoButton, buttons, {}));
    }
    // On a cell: off its middle, where the pieces of a surface meet or end, and towards a cell in the middle of the
    // map.
    [[nodiscard]] QPointF on(int cell) const {
        const QPointF place = chart().placeOf(cell);
        return place + (chart().placeOf(16 * 5 + 8) - place) * 0.02 + QPointF(0.1, 0.1);
    }
    void pointAt(int cell) { move(on(cell)); }
    void drag(QPointF from, QPointF way) {
        send(chart(), QMouseEvent(QEvent::MouseButtonPress, from, chart().mapToGlobal(from), Qt::LeftButton,
                                  Qt::LeftButton, {}));
        move(from + way, Qt::LeftButton);
        send(chart(), QMouseEvent(QEvent::MouseButtonRelease, from + way, chart().mapToGlobal(from + way),
                                  Qt::LeftButton, Qt::NoButton, {}));
    }
    void turnWheel(QPointF at, int notches) {
        send(chart(), QWheelEvent(at, chart().mapToGlobal(at), {}, QPoint(0, 120 * notches), Qt::NoButton, {},
                                  Qt::NoScrollPhase, false));
    }
    void doubleClick(QPointF at) {
        send(chart(),
             QMouseEvent(QEvent::MouseButtonDblClick, at, chart().mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {}));
    }
    void expectUsualSight() const {
        EXPECT_EQ(chart().turn().azimuth, Turn().azimuth);
        EXPECT_EQ(chart().turn().elevation, Turn().elevation);
        EXPECT_EQ(chart().zoom(), 1);
    }
};

// 9 * 15 quads between the cells, each in 4 pieces; 19 * 15 in the large layout.
TEST_F(Map3DViewTest, ShowsTheWholeMapAsASurface) {
    EXPECT_EQ(chart().faces().size(), 540U);
    window.setMapSizes(20, 16);
    window.Update3D(1);
    frame();
    EXPECT_EQ(chart().faces().size(), 1140U);
}

TEST_F(Map3DViewTest, BarsAreAChoice) {
    EXPECT_TRUE(find<QRadioButton>("optSurface").isChecked());
    find<QRadioButton>("optBars").click();
    EXPECT_EQ(chart().faces().size(), 480U);
    find<QRadioButton>("optSurface").click();
    EXPECT_EQ(chart().faces().size(), 540U);
}

// Cell 83 is row 5, column 3 of 16: 1000 + 3 * 500 RPM, and its count is 20 + 5 * 20.
TEST_F(Map3DViewTest, NamesTheCellUnderTheMouse) {
    EXPECT_EQ(cellName(), "");
    for (const char* presentation : {"optSurface", "optBars"}) {
        find<QRadioButton>(presentation).click();
        pointAt(83);
        EXPECT_EQ(cellName(), "2500 RPM,  50 - 60 %:  120") << presentation;
        EXPECT_EQ(chart().accessibleDescription(), cellName());
    }
    move({3, 3});
    EXPECT_EQ(cellName(), "");
}

TEST_F(Map3DViewTest, TheNameGoesWithTheMouse) {
    pointAt(83);
    send(chart(), QEvent(QEvent::Leave));
    EXPECT_EQ(cellName(), "");
}

TEST_F(Map3DViewTest, TheNameFollowsTheData) {
    window.Update3D(2);
    frame();
    pointAt(83);
    EXPECT_EQ(cellName(), "2500 RPM,  50 - 60 %:  0");
    const QPointF at = on(83);
    tables.IgnMapOut[20] = 10;
    tables.IgnMapOut[83] = 1;
    window.Update3D(2);
    frame();
    move(at);
    EXPECT_EQ(cellName(), "2500 RPM,  50 - 60 %:  1");
}

TEST_F(Map3DViewTest, TellsWhichTableItIs) {
    const auto shows = [&](const QString& text) {
        for (const auto* label : host.viewOf(window)->findChildren<QLabel*>()) {
            if (label->text() == text) {
                return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(shows("Fuel map"));
    window.Update3D(3);
    frame();
    EXPECT_TRUE(shows("PWM table"));
    window.Update3D(2);
    frame();
    EXPECT_TRUE(shows("Ignition map"));
}

TEST_F(Map3DViewTest, TellsTheSizeOfTheMapAndThatItShowsCounts) {
    const auto labels = host.viewOf(window)->findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(),
                            [](const QLabel* label) { return label->text() == "16 by 10, raw counts"; }));
}

// A cell inside the map has one piece of the surface in each of the 4 quads around it, and 3 faces as a bar.
TEST_F(Map3DViewTest, ThereIsNoSurfaceWhereACellWasNeverRead) {
    auto& note = find<QLabel>("unreadCells");
    EXPECT_FALSE(note.isVisible());
    tables.FuelMapOut[83] = 0;
    std::vector<bool> unread(160);
    unread[83] = true;
    window.unreadIn(1, unread);
    window.Update3D(1);
    frame();
    EXPECT_EQ(chart().faces().size(), 536U);
    EXPECT_TRUE(
        std::none_of(chart().faces().begin(), chart().faces().end(), [](const Face& face) { return face.cell == 83; }));
    EXPECT_EQ(note.text(), "1 of 160 cells was never read");
    EXPECT_TRUE(note.isVisible());
    find<QRadioButton>("optBars").click();
    EXPECT_EQ(chart().faces().size(), 477U);
    window.unreadIn(1, {});
    frame();
    EXPECT_EQ(chart().faces().size(), 480U);
    EXPECT_FALSE(note.isVisible());
}

// Cell 84 is 0.6 high. With a 0 beside it the middle of the lowest of its pieces is at (0.6 + 0.3 + 0.4 + 0.55) / 4;
// with none there it is at (0.6 + 0.6 + 0.533 + 0.55) / 4.
TEST_F(Map3DViewTest, ACellThatWasNeverReadPullsNoOtherDown) {
    tables.FuelMapOut[83] = 0;
    std::vector<bool> unread(160);
    unread[83] = true;
    const auto lowestOf84 = [&] {
        double lowest = 1;
        for (const auto& face : chart().faces()) {
            lowest = face.cell == 84 ? std::min(lowest, face.height) : lowest;
        }
        return lowest;
    };
    window.Update3D(1);
    frame();
    EXPECT_NEAR(lowestOf84(), 0.4625, 0.001);
    window.unreadIn(1, unread);
    frame();
    EXPECT_NEAR(lowestOf84(), 0.5708, 0.001);
}

TEST_F(Map3DViewTest, MarksTheCellsOfTheEngineAndOfTheFocus) {
    window.engineAt(35);
    window.focusAt(1, 100, window);
    frame();
    const QImage image = chart().grab().toImage();
    EXPECT_EQ(image.pixelColor(chart().placeOf(35).toPoint()), QColor(225, 45, 40));
    EXPECT_EQ(image.pixelColor(chart().placeOf(100).toPoint()), QColor(255, 255, 0));
    window.engineAt(-1);
    window.noFocusIn(window);
    frame();
    EXPECT_NE(chart().grab().toImage().pixelColor(chart().placeOf(35).toPoint()), QColor(225, 45, 40));
}

TEST_F(Map3DViewTest, TheNameOfAMarkSaysItsCell) {
    EXPECT_EQ(chart().markName(35, true), "engine: 2500 RPM, 20 - 30 %");
    EXPECT_EQ(chart().markName(159, false), "focus: 8500 RPM, 90 - 100 %");
}

TEST_F(Map3DViewTest, AMarkOutsideTheMapIsLeftOut) {
    const QImage before = chart().grab().toImage();
    window.engineAt(5000);
    frame();
    EXPECT_EQ(chart().grab().toImage(), before);
}

TEST_F(Map3DViewTest, IsPaintedOnceAFrame) {
    const PaintCounter counter(chart());
    for (int i = 0; i < 5; ++i) {
        tables.FuelMapOut[0] = static_cast<std::uint8_t>(30 + i);
        window.Update3D(1);
    }
    EXPECT_EQ(counter.count(), 0);
    frame();
    settle();
    EXPECT_EQ(counter.count(), 1);
}

TEST_F(Map3DViewTest, AHiddenViewWaits) {
    static_cast<void>(window.unload());
    settle();
    EXPECT_FALSE(host.viewOf(window)->isVisible());
    tables.FuelMapOut[83] = 130;
    window.Update3D(1);
    EXPECT_FALSE(host.clock().isAwake());
    window.open();
    frame();
    pointAt(83);
    EXPECT_EQ(cellName(), "2500 RPM,  50 - 60 %:  130");
}

// Half a degree for each pixel.
TEST_F(Map3DViewTest, DraggingTurnsTheMap) {
    drag({300, 300}, {40, -20});
    EXPECT_DOUBLE_EQ(chart().turn().azimuth, Turn().azimuth + 20);
    EXPECT_DOUBLE_EQ(chart().turn().elevation, Turn().elevation - 10);
    move({340, 400});
    EXPECT_DOUBLE_EQ(chart().turn().azimuth, Turn().azimuth + 20);
}

TEST_F(Map3DViewTest, ArrowKeysTurnTheMap) {
    key(chart(), Qt::Key_Right);
    EXPECT_DOUBLE_EQ(chart().turn().azimuth, Turn().azimuth + 5);
    key(chart(), Qt::Key_Left);
    key(chart(), Qt::Key_Left);
    EXPECT_DOUBLE_EQ(chart().turn().azimuth, Turn().azimuth - 5);
    key(chart(), Qt::Key_Down);
    EXPECT_DOUBLE_EQ(chart().turn().elevation, Turn().elevation + 5);
    key(chart(), Qt::Key_Up);
    key(chart(), Qt::Key_Up);
    EXPECT_DOUBLE_EQ(chart().turn().elevation, Turn().elevation - 5);
}

TEST_F(Map3DViewTest, TheWheelMagnifiesWhatIsUnderTheMouse) {
    const QPointF at = chart().placeOf(83);
    turnWheel(at, 3);
    EXPECT_GT(chart().zoom(), 1.4);
    EXPECT_NEAR(chart().placeOf(83).x(), at.x(), 0.01);
    EXPECT_NEAR(chart().placeOf(83).y(), at.y(), 0.01);
    turnWheel(at, 1000);
    EXPECT_LE(chart().zoom(), 6);
    turnWheel(at, -1000);
    EXPECT_GE(chart().zoom(), 0.5);
}

TEST_F(Map3DViewTest, HomeAndADoubleClickBringBackTheUsualSight) {
    const QPointF before = chart().placeOf(83);
    drag({300, 300}, {90, 30});
    turnWheel({100, 100}, 4);
    key(chart(), Qt::Key_Home);
    expectUsualSight();
    EXPECT_EQ(chart().placeOf(83), before);
    drag({300, 300}, {90, 30});
    doubleClick({300, 300});
    expectUsualSight();
}

TEST_F(Map3DViewTest, TurningLeavesTheWindowsDataAlone) {
    struct Counter : controls::Observer {
        void propertyChanged(controls::Object&, const void*) override { ++count; }
        int count = 0;
    } counter;
    window.MSChart1.addObserver(counter);
    key(chart(), Qt::Key_Right);
    drag({300, 300}, {90, 30});
    find<QRadioButton>("optBars").click();
    window.MSChart1.removeObserver(counter);
    EXPECT_EQ(counter.count, 0);
}

TEST_F(Map3DViewTest, TheButtonUpdates) {
    tables.FuelMapOut[83] = 99;
    find<QPushButton>("Command1").click();
    pointAt(83);
    EXPECT_EQ(cellName(), "2500 RPM,  50 - 60 %:  99");
}

TEST_F(Map3DViewTest, AnAbsurdChartIsShownEmpty) {
    window.setMapSizes(32767, 32767);
    window.Update3D(1);
    frame();
    EXPECT_TRUE(chart().faces().empty());
    window.setMapSizes(0, 0);
    window.Update3D(1);
    frame();
    EXPECT_FALSE(chart().grab().isNull());
}

TEST_F(Map3DViewTest, ASingleRowIsShownAsBars) {
    window.setMapSizes(16, 1);
    window.Update3D(1);
    frame();
    EXPECT_EQ(chart().faces().size(), 48U);
}

TEST_F(Map3DViewTest, ATextThatIsNoNumberStandsOnTheFloor) {
    window.MSChart1.Row = 1;
    window.MSChart1.Column = 1;
    window.MSChart1.setData("no number");
    window.MSChart1.Refresh();
    frame();
    find<QRadioButton>("optBars").click();
    pointAt(0);
    EXPECT_EQ(cellName(), "1000 RPM,  0 - 10 %:  no number");
}

// Row 9 is the highest, 200 of 200: red. Row 0 is at a tenth of it: blue.
TEST_F(Map3DViewTest, HeightsHaveColours) {
    const QImage picture = chart().grab().toImage();
    const QColor high = picture.pixelColor(on(9 * 16 + 8).toPoint());
    const QColor low = picture.pixelColor(on(8).toPoint());
    EXPECT_GT(high.red(), high.blue());
    EXPECT_GT(low.blue(), low.red());
}

TEST_F(Map3DViewTest, FollowsThePalette) {
    const auto corner = [this] { return chart().grab().toImage().pixelColor(20, 20); };
    chart().setPalette(Palette::light());
    const QColor light = corner();
    chart().setPalette(Palette::dark());
    const QColor dark = corner();
    EXPECT_GT(light.lightnessF(), 0.8F);
    EXPECT_LT(dark.lightnessF(), 0.2F);
}

TEST_F(Map3DViewTest, ThePictureStaysInsideTheWidget) {
    host.viewOf(window)->resize(500, 340);
    settle();
    for (int azimuth = 0; azimuth < 360; azimuth += 15) {
        drag({200, 200}, {30, 0});
        ASSERT_FALSE(chart().faces().empty());
        for (const auto& face : chart().faces()) {
            for (const QPointF corner : face.corners) {
                ASSERT_TRUE(QRectF(chart().rect()).contains(corner)) << azimuth;
            }
        }
    }
}

struct InjScaleViewTest : ToolBench<maps::FrmInjScale> {
    InjScaleViewTest() {
        window.show();
        frame();
    }
};

TEST_F(InjScaleViewTest, BothSizesAreTypedAndTheButtonScales) {
    tables.FuelMapOut[0] = 120;
    auto& oldSize = find<QLineEdit>("txtInjectorOld");
    auto& newSize = find<QLineEdit>("txtInjectorNew");
    EXPECT_EQ(oldSize.text(), "450");
    EXPECT_EQ(newSize.text(), "550");
    oldSize.selectAll();
    type(oldSize, "500");
    newSize.selectAll();
    type(newSize, "600");
    EXPECT_EQ(window.txtInjectorNew.Text.get(), "600");
    find<QPushButton>("btnInjectorChange").click();
    EXPECT_EQ(tables.FuelMapOut[0], 100);
}

TEST_F(InjScaleViewTest, TabGoesFromSizeToSizeToTheButton) {
    auto& view = *host.viewOf(window);
    view.activateWindow();
    find<QLineEdit>("txtInjectorOld").setFocus();
    settle();
    key(*view.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(view.focusWidget(), &find<QLineEdit>("txtInjectorNew"));
    key(*view.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(view.focusWidget(), &find<QPushButton>("btnInjectorChange"));
}

}  // namespace
}  // namespace korvane::views
