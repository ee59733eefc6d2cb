// The parameters of one window: brings values of the ECU to the controls that show them, and back.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/tables/SharedTables.h"
#include "fields/BoxMarks.h"
#include "fields/Field.h"
#include "fields/SaveReport.h"

namespace korvane::fields {

// Where a value comes from: the ECU tells what it has, a file does not.
enum class From { Ecu, File };

class Fields {
public:
    // `rows` are in the order in which a reply is matched. Locks the boxes that step and sets their keys.
    Fields(core::SharedTables& tables, std::vector<Field> rows);
    Fields(const Fields&) = delete;
    Fields& operator=(const Fields&) = delete;
    ~Fields() = default;

    // A reply, or a row of a settings file: keeps EEImage current and shows `value` in the first row that answers to
    // `addr`; false if none does. RuntimeError 9 for an address outside the EEPROM, 6 for a negative word, 380 for a
    // row that a list does not have.
    bool take(std::int32_t value, int addr, bool is16, From from = From::Ecu);

    // Shows a value of the ECU that did not come as a reply of its own. RuntimeError 9 for a cell that does not exist.
    void show(Address address, std::int32_t value, int cell = 0);

    // The row that stores a parameter; RuntimeError 9 if there is none.
    [[nodiscard]] const Field& storing(Address address) const;
    // How many values it stores, and what its cell `cell` holds. RuntimeError 6, with a sentence for the user, for a
    // number that does not fit.
    [[nodiscard]] static int cells(const Field& field);
    [[nodiscard]] std::int32_t stored(const Field& field, int cell) const;

    // A value that a control holds, as it would be stored: at one address, or as a word at two.
    struct Held {
        int address;
        std::int32_t value;
        bool isWord;
    };
    // What the controls hold that store something. Left out: empty boxes, texts that do not fit, and options and
    // lists that were never shown a value.
    [[nodiscard]] std::vector<Held> held() const;
    // Shows a value in the control that stores it at `addr`, as if the user had put it there; false if none does.
    // RuntimeError 380 for a row that a list does not have.
    bool put(std::int32_t value, int addr);

    // An address that a control shows: how the number is written and what it is called.
    struct Called {
        int address;
        int first;  // of its row of boxes
        Codec codec;
        std::string title;  // of the group
        std::string label;  // of the control, empty if it has none
    };
    [[nodiscard]] std::vector<Called> called() const;

    // Both are told from now on what the ECU sends and what is saved; they outlive the fields.
    void watch(BoxMarks& marks, SaveReport& report);
    [[nodiscard]] BoxMarks* marks() const { return marks_; }
    [[nodiscard]] SaveReport* report() const { return report_; }

private:
    template <class Condition>
    [[nodiscard]] const Field& first(Address address, Condition&& condition) const;
    void keepImage(std::int32_t value, int addr, bool is16);
    void show(const Field& field, std::int32_t value, int cell);
    void putInto(const Field& field, std::int32_t value, int cell);
    void showBox(const Field& field, std::int32_t value, int cell);
    [[nodiscard]] std::int32_t storedBox(const Field& field, int cell) const;

    void heard(const Field& field, int cell) const;
    [[nodiscard]] int addressOf(const Field& field, int cell) const;
    [[nodiscard]] bool holds(const Field& field, int cell) const;
    [[nodiscard]] std::optional<std::int32_t> heldBy(const Field& field, int cell) const;

    core::SharedTables& tables_;
    std::vector<Field> rows_;
    std::set<const Field*> shown_;  // that have been shown a value
    BoxMarks* marks_ = nullptr;
    SaveReport* report_ = nullptr;
};

// The box that shows a cell; null if none does.
[[nodiscard]] controls::TextBox* boxOf(const Field& field, int cell);
// What messages call a cell; empty for one that has no label.
[[nodiscard]] std::string labelOf(const Field& field, int cell);

// The caption of the frame around its box or list; empty for others.
[[nodiscard]] std::string titleOf(const Field& field, int cell);

// What messages call a control: its label, or else its own name.
[[nodiscard]] std::string calledName(const controls::Control& control);
// The caption of a frame; empty for anything else.
[[nodiscard]] std::string titleOf(const controls::Control* container);

// From one value of a row to the next.
[[nodiscard]] inline int bytesOf(const Field& field) {
    return field.codec.width == Width::TwoBytes ? 2 : 1;
}

}  // namespace korvane::fields
