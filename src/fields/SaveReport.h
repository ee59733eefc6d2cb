// What a save has sent, and what the ECU has told of it since, in words.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "controls/Property.h"
#include "core/tables/SharedTables.h"
#include "fields/SentValue.h"

namespace korvane::fields {

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

    // The port that was closed is open again.
    void lineOpened();

private:
    void heardByte(std::int64_t address, std::uint8_t byte);
    void compose();
    [[nodiscard]] std::string sentPart() const;
    [[nodiscard]] std::string backPart() const;
    [[nodiscard]] std::string difference(const SentValue& item) const;

    const core::SharedTables& tables_;
    std::string group_;
    std::vector<SentValue> items_;
    std::string refused_;
    int save_ = 0;
    int planned_ = 0;
    bool closed_ = false;
    bool opened_ = false;  // again since then
};

}  // namespace korvane::fields
