// Which boxes of the misc block show what the ECU does not have.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "link/EcuMisc.h"
#include "maps/transfer/MiscBlock.h"

namespace korvane::maps {

class MiscPane;

// Knows what the line has told of the block last; without it, or before the boxes were filled, nothing is changed.
// Observers are told when a mark may have changed by something else than the box.
class MiscMarks : public controls::Object, private controls::Observer {
public:
    // Both outlive it.
    MiscMarks(MiscPane& pane, link::EcuMisc& ecu);
    MiscMarks(const MiscMarks&) = delete;
    MiscMarks& operator=(const MiscMarks&) = delete;
    ~MiscMarks() override;

    // The boxes show a whole block, of the ECU or of a file.
    void filled();
    [[nodiscard]] bool isFilled() const { return isFilled_; }
    // The ECU has told the number of one box.
    void heard(int box, std::int32_t number);

    // "Not sent: the ECU has 7000"; empty for a box of the ECU's value. Boxes are those of txtMisc, bits those of
    // CheckMisc.
    [[nodiscard]] std::string numberNote(int box) const;
    [[nodiscard]] std::string bitNote(int bit) const;
    [[nodiscard]] std::string openingNote() const;

    // How many there are.
    [[nodiscard]] int count() const;

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void listen();
    [[nodiscard]] bool isKnown() const { return isFilled_ && known_; }
    [[nodiscard]] bool isNumberChanged(int box) const;

    MiscPane& pane_;
    link::EcuMisc& ecu_;
    std::optional<MiscValues> known_;
    bool isFilled_ = false;
};

}  // namespace korvane::maps
