// What the map window's controls are called, and its help.
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "MapsBench.h"
#include "maps/MapForm.h"

namespace korvane::maps {
namespace {

class MapCaptions : public MapsBench {
protected:
    MapCaptions() { window_.show(); }

    FrmMaps window_{machine_.machine, context_};
};

TEST_F(MapCaptions, EachBitOfTheEnableWordHasItsNameOrNone) {
    std::string captions;
    for (auto& box : window_.CheckMisc) {
        captions += box.Caption.get() + "|";
    }
    EXPECT_EQ(captions,
              "Enable PWM|Enable Choke|Enable StartHelp|Enable Injection|Enable Accel pump|Enable Ignition|||"
              "Enable Voltage|Enable Lambda|Enable motor brake|Enable Launch/ALS|||Enable SHift light|"
              "Enable RPM limit|");
}

TEST_F(MapCaptions, TheMiscBoxesAreNamedBeside) {
    EXPECT_EQ(window_.lblMisc(0).Caption.get(), "RPM Limit");
    EXPECT_EQ(window_.lblMisc(1).Caption.get(), "RPM Shift");
    EXPECT_EQ(window_.lblMisc(2).Caption.get(), "Inj offset");
    EXPECT_EQ(window_.lblMisc(3).Caption.get(), "Ign offset");
    EXPECT_EQ(window_.FrameINJMaxOpen.Caption.get(), "Suutin max aukiolo");
    EXPECT_EQ(window_.optINJMaxOpen(0).Caption.get(), "4.4ms");
    EXPECT_EQ(window_.optINJMaxOpen(1).Caption.get(), "2.2ms");
}

TEST_F(MapCaptions, EachButtonSaysWhatItMoves) {
    const std::vector<std::pair<controls::CommandButton*, std::string_view>> buttons{
        {&window_.btnReadFuel, "Read Fuel Values"},
        {&window_.btnWriteFuel, "Send Fuel Values"},
        {&window_.btnReadIgn, "Read Ign Values"},
        {&window_.btnWriteIgn, "Send Ign Values"},
        {&window_.btnReadMisc, "Read Misc"},
        {&window_.btnSaveMisc, "Send Misc"},
        {&window_.btnReadPWM, "Read PWM values"},
        {&window_.btnSavePWM, "Save PWM values"},
        {&window_.btnSave, "Talleta arvot tiedostoon"},
        {&window_.btnLoad, "Hae arvot tiedostosta"},
        {&window_.btnSaveLambdaSetpoint, "Save Lambda"},
        {&window_.btnloadLambdaSetpoint, "Load Lambda"},
    };
    for (const auto& [button, caption] : buttons) {
        EXPECT_EQ(button->Caption.get(), caption) << button->path();
    }
}

TEST_F(MapCaptions, EachBoxSaysWhatItTurnsOn) {
    const std::vector<std::pair<controls::CheckBox*, std::string_view>> boxes{
        {&window_.chkTrace, "Trace map route"},        {&window_.chkFocusOnFuel, "Focus on Fuel"},
        {&window_.chkFocusOnIGN, "Focus on Ignition"}, {&window_.chkModifyInjSetpoint, "Modify lambda setpoints"},
        {&window_.chkShowPwm, "Show PWM table"},       {&window_.chkInjAnal, "Show Injection analyser"},
    };
    for (const auto& [box, caption] : boxes) {
        EXPECT_EQ(box->Caption.get(), caption) << box->path();
    }
}

TEST_F(MapCaptions, TheHelpHasElevenLines) {
    const std::string expected =
        "Valitse haluamasi 'laatikko', josta lähtien haluat vaihtaa arvoja.\r\n"
        "Paina Ctrl-painike pohjaan ja valitse toinen laatikko, johon asti haluat muuttaa "
        "arvoja.\r\n"
        "Valittu alue muuttui vihreäksi.\r\n"
        "Seuraavaksi voit käyttää seuraavia nappeja muuttaaksesi valitsemiasi arvoja: \r\n"
        "+ : kasvata kaikkia arvoja  \r\n"
        "- : pienennä kaikkia arvoja \r\n"
        "a : muuta kaikki arvot ensimmäsenä olevaksi arvoksi \r\n"
        "l : linearisoi alue, linearisoidaan ensimmöisen ja viimisen arvon väli suoraksi\r\n"
        "Injection Analyzer: Laskee lambdan keskiarvoa kussakin karttan paikassa (AFR).\r\n"
        "Tuning Agent:       Aktiivisesti korjaa kartan arvoja analysoinnin perusteella.\r\n"
        "Modify lambda setpoints: Muutetaan lambdan tavoitearvoja. max teho ~12.0. ";
    window_.btnHelp.press();
    const auto messages = machine_.dialogs.takeMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].title, "Ohje ");
    EXPECT_EQ(messages[0].text, expected);
}

}  // namespace
}  // namespace korvane::maps
