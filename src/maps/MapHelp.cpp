#include "maps/MapHelp.h"

namespace korvane::maps {

namespace {

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

void showMapHelp(platform::Dialogs& dialogs) {
    dialogs.show({"Ohje ", kHelp, platform::MessageIcon::Information});
}

}  // namespace korvane::maps
