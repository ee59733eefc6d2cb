// What a save has sent, and what the ECU has told of it since, in words.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "controls/Property.h"
#include "core/tables/SharedTables.h"
#include "fields/Codec.h"

namespace korvane::fields {

// One value of a save, in one byte or, low byte first, in two.
struct SavedValue {
    std::string label;  // empty for one that nobody has to name
    int address = 0;
    int bytes = 1;
    std::int32_t value = 0;
    Codec codec = {};  // how people read it
};

// Tells of the save that was begun last; of an earlier one that goes on meanwhile it hears no more.
class SaveReport : public controls::Object {
public:
    explicit SaveReport(const core::SharedTables& tables) : tables_(tables) {}

    controls::Property<std::string> Text{*this};  // empty before the first save

    // The number that later calls name the save by. `values` is how many it is to send.
    int begin(std::string group, int values);
    // The next value goes out; with the port closed it is not `sent`.
    void add(int save, SavedValue value, bool sent);
    // The save ended at a value that does not fit.
    void refused(int save, std::string label);
    // A byte, or a word of two, that the ECU has told. An address may be any number that a script gives a parameter.
    void heard(std::int64_t address, std::int32_t value, bool is16);

private:
    struct Item {
        SavedValue value;
        std::array<std::optional<std::uint8_t>, 2> back;

        [[nodiscard]] bool isBack() const { return back[0] && (value.bytes == 1 || back[1]); }
        [[nodiscard]] std::uint8_t byte(std::size_t index) const;
        [[nodiscard]] bool isSame() const;
        [[nodiscard]] std::int32_t told() const;
    };

    void heardByte(std::int64_t address, std::uint8_t byte);
    void compose();
    [[nodiscard]] std::string sentPart() const;
    [[nodiscard]] std::string backPart() const;
    [[nodiscard]] std::string difference(const Item& item) const;

    const core::SharedTables& tables_;
    std::string group_;
    std::vector<Item> items_;
    std::string refused_;
    int save_ = 0;
    int planned_ = 0;
    bool closed_ = false;
};

}  // namespace korvane::fields
