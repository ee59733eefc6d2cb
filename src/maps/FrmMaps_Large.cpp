// Continues MapForm: the window of the large maps, whose frames are pages of a tab strip.
#include <array>

#include "maps/Frm3Dmap.h"
#include "maps/MapForm.h"
#include "maps/grid/MapConversions.h"

namespace korvane::maps {

namespace {

constexpr MapVariant kVariant{{"frmMaps_Large", "Korvane Tuner, Maps, Large "},
                              kLargeMaps,
                              &largeInjectionScale,
                              Halves::Two,
                              Pointing::KeysAndMouse,
                              "Trace map"};

constexpr std::array kPageCaptions{"Fuel", "Ignition", "PWM", "Injection analyser"};

// Of the page that is shown, twips.
struct Place {
    int left, top, width, height;
};
constexpr Place kPage{50, 350, 11200, 5000};

}  // namespace

FrmMaps_Large::FrmMaps_Large(platform::Machine& machine, const MapContext& mapContext)
    : MapForm(machine, mapContext, kVariant),
      TabStrip1(*this, "TabStrip1"),
      picOptions(*this, "picOptions", static_cast<int>(kPageCaptions.size())),
      chkFocusOnMAP(*this, "chkFocusOnMAP") {
    chkFocusOnMAP.Caption = "Lock focus";
    int page = 0;
    for (auto* frame : {&FrameFuel, &FrameIgn, &FramePWM, &FrameInjAnalys}) {
        frame->setContainer(&picOptions(page++));
    }
    for (const auto* caption : kPageCaptions) {
        TabStrip1.addTab(caption);
    }
    TabStrip1.Click = [this] { showPage(); };
}

void FrmMaps_Large::arrangePanes() {
    for (auto& page : picOptions) {
        page.Width = kPage.width;
        page.Height = kPage.height;
    }
    TabStrip1.SelectedItem = 1;
}

void FrmMaps_Large::showPage() {
    for (int i = 0; i < picOptions.count(); ++i) {
        const bool shown = i + 1 == TabStrip1.SelectedItem;
        picOptions(i).Left = shown ? kPage.left : kAway;
        picOptions(i).Enabled = shown;
        if (shown) {
            picOptions(i).Top = kPage.top;
        }
    }
}

void FrmMaps_Large::followEngine() {
    if (chkFocusOnMAP.Value == 1) {
        focusOn(TabStrip1.SelectedItem == 1 ? fuel : TabStrip1.SelectedItem == 2 ? ign : pwm);
    }
}

void FrmMaps_Large::prepare3D() {
    context().frm3Dmap.setMapSizes(kLargeMaps.columns, kLargeMaps.rows);
}

}  // namespace korvane::maps
