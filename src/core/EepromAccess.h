// The only way in which the program writes a setting to the ECU's EEPROM or asks for one.
//
//     write a byte   'W'  address low  address high  data  data  ~'W'
//     ask for a byte 'R'  address low  address high  ~'R'
//     ask for a word 'U'  address low  address high  ~'U'
//
// Each byte of a frame goes out as an Output of its own. Nothing waits for an answer and nothing is sent again: a reply
// arrives through the dispatcher, later or never. With the port closed nothing happens.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string_view>

#include "controls/MSComm.h"
#include "core/Overwritten.h"
#include "core/tables/EepromShadow.h"
#include "platform/EventPump.h"

namespace korvane::core {

class EepromAccess {
public:
    EepromAccess(controls::MSComm& port, platform::EventPump& pump, const EepromShadow& tables)
        : port_(port), pump_(pump), tables_(tables) {}

    // Writes the low byte of `value`. Where the row is marked as 16 bits, or with `force16`, also its next byte to the
    // next address, 50 ms later; events run before and behind those 50 ms. An address above 3000 or below 0 raises
    // RuntimeError 9.
    void WriteEE(std::int16_t addr, std::int32_t value, bool force16 = false);

    // Something begins that overwrites what the ECU has: a map, the misc block, a group of settings, an image is
    // stored, or the tuning agent starts. Called before the first byte goes out, with words that say what ("fuel map").
    // With the port closed nobody is told.
    void announceStore(std::string_view what, const Overwritten& overwritten = {}) const {
        if (storing && isOpen()) {
            storing(what);
        }
        if (overwriting && isOpen()) {
            overwriting(what, overwritten);
        }
    }
    std::function<void(std::string_view what)> storing;
    // Told behind `storing` what is overwritten.
    std::function<void(std::string_view what, const Overwritten& overwritten)> overwriting;

    // Is told of each byte that went out to be written.
    std::function<void(std::int32_t addr, std::uint8_t data)> written;

    // Writes one cell, whatever its row is marked as: a single 'W' frame. RuntimeError 9 as WriteEE.
    void writeCell(std::int16_t addr, std::uint8_t data);

    // Is told of each byte that is asked for alone.
    std::function<void(std::int32_t addr)> asked;

    // Whether what is written now goes out.
    [[nodiscard]] bool isOpen() const { return port_.PortOpen(); }

    // Ask for a byte or a word. `unused` is the value that the dispatcher passes along with `suppress`, by which
    // nothing is sent.
    void ReadEE(std::int16_t addr, std::int32_t unused = 0, bool suppress = false);
    void ReadEE16(std::int16_t addr, std::int32_t unused = 0, bool suppress = false);

private:
    void writeByte(std::int32_t addr, std::uint8_t data);
    void ask(std::uint8_t command, std::int16_t addr, bool suppress);
    void send(std::initializer_list<std::uint8_t> frame);

    controls::MSComm& port_;
    platform::EventPump& pump_;
    const EepromShadow& tables_;
};

}  // namespace korvane::core
