#include "maps/Frm3Dmap.h"
#include "maps/MapForm.h"
#include "maps/grid/MapConversions.h"

namespace korvane::maps {

namespace {

constexpr MapVariant kVariant{
    .title = {"frmMaps_Large", "Korvane Tuner, Maps, Large "},
    .geometry = kLargeMaps,
    .scale = &largeInjectionScale,
    .halves = Halves::Two,
    .ignitionPointing = Pointing::KeysAndMouse,
    .traceCaption = "Trace map",
};

constexpr int kPages = 4;
constexpr int kPageLeft = 50;  // twips, of the page on show
constexpr int kPageTop = 350;
constexpr int kAway = -20000;
constexpr int kPageWidth = 11200;
constexpr int kPageHeight = 5000;

}  // namespace

FrmMaps_Large::FrmMaps_Large(platform::Machine& machine, const MapContext& mapContext)
    : MapForm(machine, mapContext, kVariant),
      TabStrip1(*this, "TabStrip1"),
      picOptions(*this, "picOptions", kPages),
      chkFocusOnMAP(*this, "chkFocusOnMAP") {
    chkFocusOnMAP.Caption = "Lock focus";
    int page = 0;
    for (auto* frame : {&FrameFuel, &FrameIgn, &FramePWM, &FrameInjAnalys}) {
        frame->setContainer(&picOptions(page++));
    }
    for (const auto* caption : {"Fuel", "Ignition", "PWM", "Injection analyser"}) {
        TabStrip1.addTab(caption);
    }
    TabStrip1.Click = [this] { showPage(); };
}

void FrmMaps_Large::arrangePanes() {
    for (auto& page : picOptions) {
        page.Top = kPageTop;
        page.Width = kPageWidth;
        page.Height = kPageHeight;
    }
    TabStrip1.SelectedItem = 1;
}

void FrmMaps_Large::showPage() {
    for (int i = 0; i < picOptions.count(); ++i) {
        const bool shown = i + 1 == TabStrip1.SelectedItem;
        picOptions(i).Left = shown ? kPageLeft : kAway;
        picOptions(i).Enabled = shown;
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
