#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

#include <gmock/gmock.h>
#include <map>

#include "performance/FrmPowerCalc.h"
#include "support/VirtualProgram.h"
#include "views/Events.h"
#include "views/Find.h"
#include "views/Views.h"
#include "views/widgets/TextList.h"
#include "views/widgets/values/Lamp.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {
namespace {

using testing::ElementsAre;

struct PowerCalcViewTest : testing::Test, support::VirtualMachine {
    PowerCalcViewTest() {
        addViews(host);
        window.show();
        view().activateWindow();
        settle();
    }

    [[nodiscard]] WindowView& view() const { return *host.viewOf(window); }
    template <class Widget = QWidget>
    [[nodiscard]] Widget& find(const char* name) const {
        return findIn<Widget>(view(), name);
    }
    void frame() {
        host.clock().tick();
        settle();
    }

    controls::Window main{machine, "frmSarn2"};
    controls::Label rpm{main, "lblValue", 0};
    performance::FrmPowerCalc window{machine, rpm};
    ViewHost host{windows};
};

TEST_F(PowerCalcViewTest, EachBoxBearsItsName) {
    const std::map<const char*, const char*> names{{"txtCarName", "Car name"},
                                                   {"txtPera", "Perä"},
                                                   {"txtVaihde(0)", "vaihde1"},
                                                   {"txtVaihde(4)", "vaihde5"},
                                                   {"txtUsedGear", "käytetty vaihde"},
                                                   {"txtPaino", "paino"},
                                                   {"txtrengas", "renkaan halkaisija"},
                                                   {"txtStartRPM", "Start RPM"},
                                                   {"txtStopRPM", "Stop RPM"},
                                                   {"txtSpeed", "nopeus"},
                                                   {"imgLed", "Timer in ON"},
                                                   {"List1", "Log of pulls"},
                                                   {"Command1", "Clear Log"},
                                                   {"Command2", "Save"},
                                                   {"Command3", "Load"}};
    for (const auto& [control, name] : names) {
        EXPECT_EQ(find(control).accessibleName(), QString::fromUtf8(name)) << control;
    }
    std::vector<std::string> labels;
    for (const auto* label : view().findChildren<QLabel*>()) {
        labels.push_back(label->text().toStdString());
    }
    for (const auto& [control, name] : names) {
        if (control[0] == 't' && name != std::string("Car name")) {
            EXPECT_THAT(labels, testing::Contains(name));
        }
    }
}

TEST_F(PowerCalcViewTest, ShowsTimeLampSpeedAndLines) {
    rpm.Caption = "3000";
    find<QLineEdit>("txtUsedGear").setFocus();
    type(find("txtUsedGear"), QStringLiteral("2"));
    EXPECT_EQ(window.txtUsedGear.Text.get(), "2");
    pump.wait(50);
    frame();
    EXPECT_EQ(find<Lamp>("imgLed").picture(), controls::Picture::Green);
    EXPECT_EQ(find<TextList>("List1").text(0), "Timer Started: 3000rpm  42.1 Km/h");
    pump.wait(150);
    rpm.Caption = "7000";
    pump.wait(50);
    frame();
    EXPECT_EQ(find<Lamp>("imgLed").picture(), controls::Picture::Grey);
    EXPECT_EQ(find<Readout>("lbltimer").text(), "200 ms");
    EXPECT_EQ(find<QLineEdit>("txtSpeed").text(), "98.2");
    EXPECT_EQ(find<TextList>("List1").rowCount(), 3);
    find<QPushButton>("Command1").click();
    EXPECT_EQ(find<TextList>("List1").rowCount(), 0);
}

TEST_F(PowerCalcViewTest, TabGoesThroughTheCarThenThePullThenTheLog) {
    find("txtCarName").setFocus();
    std::vector<std::string> order;
    for (int i = 0; i < 16; ++i) {
        order.push_back(QApplication::focusWidget()->objectName().toStdString());
        key(*QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_THAT(order, ElementsAre("txtCarName", "txtPera", "txtVaihde(0)", "txtVaihde(1)", "txtVaihde(2)",
                                   "txtVaihde(3)", "txtVaihde(4)", "txtUsedGear", "txtPaino", "txtrengas", "Command2",
                                   "Command3", "txtStartRPM", "txtStopRPM", "txtSpeed", "List1"));
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "Command1");
}

TEST_F(PowerCalcViewTest, TheSpeedCantBeTypedOver) {
    find("txtSpeed").setFocus();
    type(find("txtSpeed"), QStringLiteral("9"));
    EXPECT_EQ(window.txtSpeed.Text.get(), "");
}

TEST_F(PowerCalcViewTest, AllOfItIsInSightAtTheSizeThatItOpensWith) {
    for (const char* name : {"Command1", "Command2", "imgLed", "lbltimer", "List1", "txtrengas"}) {
        const auto& widget = find(name);
        EXPECT_TRUE(view().rect().contains(QRect(widget.mapTo(&view(), QPoint()), widget.size()))) << name;
    }
    EXPECT_FALSE(find<Readout>("lbltimer").isCut());
    const auto& scroll = *view().findChild<QScrollArea*>();
    EXPECT_EQ(scroll.horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(scroll.verticalScrollBar()->maximum(), 0);
}

}  // namespace
}  // namespace korvane::views
