// What the dispatcher and the live update need of windows that are in later modules. A null pointer means that the
// window is not open, or does not exist.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace korvane::link {

// Any map window. It also implements the part classes below for the data that it takes.
class MapWindow {
public:
    virtual ~MapWindow() = default;

    virtual void setCaption(std::string_view caption) = 0;
};

class FuelMapPart {
public:
    virtual ~FuelMapPart() = default;
    virtual void populateFuel() = 0;
};

class IgnitionMapPart {
public:
    virtual ~IgnitionMapPart() = default;
    virtual void populateIGN() = 0;
};

class PwmMapPart {
public:
    virtual ~PwmMapPart() = default;
    virtual void populatePWMOUT() = 0;
};

class MiscPart {
public:
    virtual ~MiscPart() = default;
    virtual void LoadMisc(bool skipTimer) = 0;
};

class EepromPart {
public:
    virtual ~EepromPart() = default;
    virtual void UpdateReadEE(std::int32_t value, int addr, bool is16) = 0;
};

class EnginePlacePart {
public:
    virtual ~EnginePlacePart() = default;
    virtual void updateMapPlace() = 0;
};

// Null for a window without the part, and for a null pointer.
template <class Part>
[[nodiscard]] Part* partOf(MapWindow* window) {
    return dynamic_cast<Part*>(window);
}

// The settings window, one for the whole run.
class SettingsWindow {
public:
    virtual ~SettingsWindow() = default;

    // `handled` becomes true once the whole block has been taken.
    virtual void LoadMisc2(std::span<const std::uint8_t> payload, bool& handled) = 0;
    virtual void UpdateReadEE(std::int32_t value, int addr, bool is16) = 0;
    virtual void setTextArvo(std::string_view text) = 0;
    virtual void setLambdaSetpoint(int row, std::uint8_t value) = 0;
    virtual void setLambdaAuthority(int row, std::uint8_t value) = 0;
    virtual void MarkAccelCell(int index) = 0;
};

// The ignition debug window.
class IgnitionDebugWindow {
public:
    virtual ~IgnitionDebugWindow() = default;

    virtual void showDebugFrame(std::span<const std::uint8_t> payload) = 0;
};

// The windows that frames are handed to.
struct Windows {
    MapWindow* curMapWindow = nullptr;
    MapWindow* frmMaps_QV_ign = nullptr;  // serves map and EEPROM replies while ignWindowOpen
    SettingsWindow* frmMisc = nullptr;
    IgnitionDebugWindow* frmIGNDebug = nullptr;
};

// Takes the payload of an 'R' frame.
class LiveDecoder {
public:
    virtual ~LiveDecoder() = default;

    // May change the payload: the throttle byte is scaled in place.
    virtual void decodeLivePacket(std::span<std::uint8_t> payload) = 0;
};

}  // namespace korvane::link
