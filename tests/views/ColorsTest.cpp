// The colours that the program sets, as they are painted.
#include <QApplication>
#include <QImage>
#include <QStyle>
#include <QStyleOptionButton>

#include <array>

#include "views/FormBench.h"
#include "views/Pixels.h"
#include "views/widgets/Palette.h"

namespace korvane::views {
namespace {

constexpr std::array kFixed{controls::kBlack, controls::kWhite,   controls::kRed,
                            controls::kGreen, controls::kBlue,    controls::kYellow,
                            controls::kCyan,  controls::kMagenta, controls::kDarkGrey};

// How many pixels differ clearly from the ground.
int inkOn(const QImage& image, const QColor& ground) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += contrast(image.pixelColor(x, y), ground) >= 3 ? 1 : 0;
        }
    }
    return count;
}

// With light and with dark system colours.
struct ColorsTest : testing::TestWithParam<bool>, FormBench {
    ColorsTest() {
        QApplication::setPalette(GetParam() ? Palette::dark() : Palette::light());
        form.lblFixed.Caption = "888 HHH";
        form.lblLive.Caption = "888 HHH";
        form.chkTick.Caption = "888 HHH";
        form.txtCell.Text = "888 HHH";
        for (auto* control : controls_) {
            control->FontSize = 24;
        }
        show();
        frame();
    }
    ColorsTest(const ColorsTest&) = delete;
    ColorsTest& operator=(const ColorsTest&) = delete;
    ~ColorsTest() override { QApplication::setPalette(before_); }

    // As it is shown in its window.
    QImage painted(const char* name) {
        frame();
        const QWidget& widget = find(name);
        return view().grab(QRect(widget.mapTo(&view(), QPoint()), widget.size())).toImage();
    }
    static QColor groundOf(const QImage& image) { return image.pixelColor(image.width() - 8, image.height() / 2); }

    QPalette before_ = QApplication::palette();
    std::array<controls::Control*, 4> controls_{&form.lblFixed, &form.lblLive, &form.chkTick, &form.txtCell};
};

TEST_P(ColorsTest, ATextHasItsColourAndTheGroundStaysAsItWas) {
    for (auto* control : controls_) {
        const std::string name = control->path();
        const QColor usual = groundOf(painted(name.c_str()));
        for (const auto color : kFixed) {
            control->ForeColor = color;
            const QImage image = painted(name.c_str());
            EXPECT_GT(countOf(image, colorOf(color, {})), 20) << name << std::hex << color;
            EXPECT_EQ(groundOf(image), usual) << name << std::hex << color;
        }
    }
}

TEST_P(ColorsTest, AGroundHasItsColourAndItsTextCanBeRead) {
    for (auto* control : controls_) {
        const std::string name = control->path();
        for (const auto color : kFixed) {
            control->BackColor = color;
            const QImage image = painted(name.c_str());
            EXPECT_EQ(groundOf(image), colorOf(color, {})) << name << std::hex << color;
            EXPECT_GT(inkOn(image, colorOf(color, {})), 20) << name << std::hex << color;
        }
    }
}

TEST_P(ColorsTest, ABoxWithoutATickHasAnEdgeThatCanBeSeen) {
    const auto& box = find<QCheckBox>("chkTick");
    QStyleOptionButton option;
    option.initFrom(&box);
    const QRect place = box.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &box);
    const QImage image = painted("chkTick");
    const QColor edge = image.pixelColor(place.left(), place.center().y());
    EXPECT_GE(contrast(edge, groundOf(image)), 3);
    EXPECT_GE(contrast(edge, image.pixelColor(place.center())), 3);
}

TEST_P(ColorsTest, ANameThatHasAColourIsNotMuted) {
    Readout::Look look;
    look.muted = true;
    look.scale = 2;
    Readout readout(look, nullptr);
    readout.setText(QStringLiteral("888 HHH"));
    readout.resize(200, 40);
    const QColor usual = groundOf(readout.grab().toImage());
    for (const auto color : kFixed) {
        QPalette palette;
        palette.setResolveMask(0);
        palette.setColor(QPalette::WindowText, colorOf(color, {}));
        readout.setPalette(palette);
        const QImage image = readout.grab().toImage();
        EXPECT_GT(countOf(image, colorOf(color, {})), 20) << std::hex << color;
        EXPECT_EQ(groundOf(image), usual) << std::hex << color;
    }
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, ColorsTest, testing::Bool(),
                         [](const auto& chosen) { return chosen.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace korvane::views
