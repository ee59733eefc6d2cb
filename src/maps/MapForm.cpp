#include "maps/MapForm.h"

#include "core/Numbers.h"
#include "maps/Frm3Dmap.h"
#include "maps/FrmInjScale.h"
#include "maps/Selection.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"

namespace korvane::maps {

namespace {

constexpr int kFirstEditedPwmCell = 64;  // those before it are no cells that the ECU uses

constexpr int kWidth = 1340 * 15;  // twips; fits a laptop of 1366 by 768
constexpr int kHeight = 690 * 15;

constexpr const char* kHelp =
    "Valitse haluamasi 'laatikko', josta lähtien haluat vaihtaa arvoja.\r\n"
    "Paina Ctrl-painike pohjaan ja valitse toinen laatikko, johon asti haluat muuttaa arvoja.\r\n"
    "Valittu alue muuttui vihreäksi.\r\n"
    "Seuraavaksi voit käyttää seuraavia nappeja muuttaaksesi valitsemiasi arvoja: \r\n"
    "+ : kasvata kaikkia arvoja  \r\n"
    "- : pienennä kaikkia arvoja \r\n"
    "a : muuta kaikki arvot ensimmäsenä olevaksi arvoksi \r\n"
    "l : linearisoi alue, linearisoidaan ensimmöisen ja viimisen arvon väli suoraksi\r\n"
    "Injection Analyzer: Laskee lambdan keskiarvoa kussakin karttan paikassa (AFR).\r\n"
    "Tuning Agent:       Aktiivisesti korjaa kartan arvoja analysoinnin perusteella.\r\n"
    "Modify lambda setpoints: Muutetaan lambdan tavoitearvoja. max teho ~12.0. ";

}  // namespace

MapForm::MapForm(platform::Machine& machine, const MapContext& context, const MapVariant& variant)
    : MapControls(machine, variant.name, variant.caption, variant.geometry),
      context_(context),
      display_(*this, context, variant.scale),
      editing_(*this, context, display_, variant.ignitionMouse),
      transfer_(*this, context, variant.halves),
      files_(*this, context, display_, transfer_),
      analyserPane_(*this, context, [this](bool shown) { showAnalyserPane(shown); }) {
    Width = kWidth;
    Height = kHeight;
    chkTrace.Caption = variant.traceCaption;
    chkTrace.Click = [this] {
        if (chkTrace.Value == 0) {
            clearTrace();
        }
    };
    btnShow3D.Click = [this] {
        prepare3D();
        context_.frm3Dmap.open();
    };
    btnInjScale.Click = [this] { context_.frmInjScale.show(); };
    btnHelp.Click = [this] { showHelp(); };
    Timer1.Tick = [this] {
        followEngine();
        if (chkInjAnal.Value == 1) {
            analyserPane_.paint();
        }
    };
    TimerInitialGetData.Tick = [this] {
        TimerInitialGetData.Enabled = false;
        transfer_.initialReads();
    };
}

void MapForm::Form_Load() {
    context_.analyser.setMapWindow(this);
    display_.updateScale();
    sizeFonts(machine().screen.Width);
    placeGrids();
    analyserPane_.fillTargets();
    for (int cell = 0; cell < kFirstEditedPwmCell; ++cell) {
        pwm(cell).Enabled = false;
    }
    applyFeatures(context_.tables.Features);
    arrangePanes();
    TimerInitialGetData.Enabled = true;
    isFormLoaded = true;
}

bool MapForm::Form_Unload() {
    static_cast<void>(context_.frmInjScale.unload());
    if (Closed) {
        Closed();
    }
    return true;
}

// Others call these past the window's door, and events run in them.
void MapForm::populateFuel() {
    const Stay stay(*this);
    display_.populateFuel();
}

void MapForm::populateIGN() {
    const Stay stay(*this);
    display_.populateIGN();
}

void MapForm::populatePWMOUT() {
    const Stay stay(*this);
    display_.populatePWMOUT();
}

void MapForm::populateFuelOUT() {
    const Stay stay(*this);
    display_.populateFuelOUT();
}

void MapForm::LoadMisc(bool skipTimer) {
    const Stay stay(*this);
    transfer_.LoadMisc(skipTimer);
}

// A block takes the key instead of the cell, whether the grid has the cell or not.
void MapForm::pressFuelKey(int cell, int keyCode, int shift) {
    const Stay stay(*this);
    const int pressed = hasBlock(fuel) ? fuel.SelFirst - 1 : cell;
    if (fuel.geometry.has(pressed)) {
        editing_.fuelKeyDown(pressed, keyCode, shift);
    }
}

// Of the EEPROM's words only the two limits stand in the window.
void MapForm::UpdateReadEE(std::int32_t value, int addr, bool) {
    const auto& addresses = context_.tables.addresses;
    if (addr == addresses.RPM_LIMIT_LOW_OFF) {
        txtMisc(kRpmLimit).Text = core::numberText(value).view();
    } else if (addr == addresses.RPM_SHIFT_LOW_OFF) {
        txtMisc(kRpmShift).Text = core::numberText(value).view();
    }
}

void MapForm::updateMapPlace() {
    auto& tables = context_.tables;
    if (chkTrace.Value == 0) {
        markCell(tables.PrevMapPlace, controls::kWhite);
    }
    markCell(tables.MapPlace, controls::kRed);
    tables.PrevMapPlace = tables.MapPlace;
}

void MapForm::markCell(int cell, controls::Color color) {
    if (!fuel.geometry.has(cell)) {
        return;
    }
    for (auto* grid : {&fuel, &ign, &pwm}) {
        (*grid)(cell).BackColor = color;
    }
}

void MapForm::clearTrace() {
    for (auto* grid : {&fuel, &ign, &pwm}) {
        for (auto& cell : grid->cells) {
            if (cell.BackColor == controls::kRed) {
                cell.BackColor = controls::kWhite;
            }
        }
    }
}

void MapForm::setSetpointToolTip(int cell, std::string_view text) {
    if (analys.geometry.has(cell)) {
        analys(cell).ToolTipText = text;
    }
}

void MapForm::focusOn(MapGrid& grid) {
    const int place = context_.tables.MapPlace;
    if (grid.geometry.has(place)) {
        setFocus(&grid(place));
    }
}

void MapForm::showHelp() {
    machine().dialogs.show({"Ohje ", kHelp, platform::MessageIcon::Information});
}

}  // namespace korvane::maps
