// One step in the history of the working maps: which cells changed, when and by what.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/tables/MapImages.h"
#include "platform/WallTime.h"

namespace korvane::core {

// The maps that the tuner edits, FuelMapOut and so on.
enum class EditedMap : std::uint8_t { Fuel, Ignition, Pwm };

inline constexpr std::array<MapImage MapImages::*, 3> kWorkingMaps{&MapImages::FuelMapOut, &MapImages::IgnMapOut,
                                                                   &MapImages::PwmMapOut};
// The cells of all three, one map behind the other.
inline constexpr std::size_t kWorkingCells = kWorkingMaps.size() * kMapSize;

[[nodiscard]] MapImage& workingMap(MapImages& tables, EditedMap map);

// The bytes of all three.
using WorkingMaps = std::array<MapImage, kWorkingMaps.size()>;

// A cell of one of the working maps.
struct CellPlace {
    EditedMap map;
    std::size_t cell;

    friend bool operator==(const CellPlace&, const CellPlace&) = default;
};

// Kept in four bytes: a history has millions of them.
struct CellChange {
    CellChange(CellPlace place, std::uint8_t before, std::uint8_t after);

    [[nodiscard]] CellPlace place() const;
    // The map and the cell as one number, by which the changes of a step are sorted.
    [[nodiscard]] std::size_t number() const { return packed & kNumber; }
    // The running engine got the byte behind the change, by a "Realtime change".
    [[nodiscard]] bool reachedEngine() const { return (packed & kReached) != 0; }
    void setReachedEngine() { packed = static_cast<std::uint16_t>(packed | kReached); }

    std::uint8_t before;
    std::uint8_t after;

private:
    static constexpr unsigned kReached = 0x8000;
    static constexpr unsigned kNumber = 0x7FFF;

    std::uint16_t packed;
};

// What changed the maps.
struct Cause {
    enum class Kind : std::uint8_t {
        Script,  // anything that gave no notice of itself
        KeyUp,   // a cell by + or -
        KeyDown,
        BlockUp,  // a block command
        BlockDown,
        BlockLevel,
        BlockFill,
        Scaling,     // for other injectors
        File,        // a tune was loaded
        Read,        // of a map, a half or a cell
        Agent,       // the whole run of the tuning agent
        RevertCell,  // to what the ECU sent
        RevertBlock,
        Restore,  // from a restore point
        Copy,     // from a comparison
        Undone,   // an undo, behind which other changes came
        Steady,   // the whole run of the steady agent
    };

    Kind kind = Kind::Script;
    // Of a key, a block command and a read: the cells that it is about. Of a file the last map that it has.
    EditedMap map = EditedMap::Fuel;
    std::int16_t first = 0;
    std::int16_t last = 0;

    [[nodiscard]] static Cause cells(Kind kind, EditedMap map, std::size_t first, std::size_t last);
    [[nodiscard]] static Cause read(EditedMap map, std::size_t first, std::size_t count);
    [[nodiscard]] static Cause file(bool withPwm);

    friend bool operator==(const Cause&, const Cause&) = default;
};

struct MapStep {
    Cause cause;
    std::uint32_t times = 1;        // how many equal commands it is made of, or how many steps were undone
    platform::WallTime time;        // of the last of them, or of the undo
    std::int64_t moment = 0;        // the same in ms since the start
    std::vector<CellChange> cells;  // sorted by number(), each once

    // In words: "Fuel: block 17 to 34 up by 3". Cells count from 1, as the caption of a map window names them.
    [[nodiscard]] std::string words() const;
};

}  // namespace korvane::core
