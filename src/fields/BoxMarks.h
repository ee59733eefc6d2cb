// Which boxes of a window show what the ECU has, and which do not.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "controls/Controls.h"
#include "fields/BoxCells.h"
#include "link/EcuEeprom.h"

namespace korvane::fields {

enum class Mark {
    None,     // what the ECU last sent
    Changed,  // not what it last sent, or what has been sent to it since
    Sent,     // it was sent to the ECU, which has not told of it since
    Misread,  // a save has sent the number that its text counts as, which is not what the text shows
};

// What a save takes for 0 although it is no plain zero: "", "words", "0,5".
[[nodiscard]] bool countsAsZero(std::string_view text);

// Whether a text is a number and nothing else, so that it counts as what it shows.
[[nodiscard]] bool isPlainNumber(std::string_view text);

// Knows each box that was added and what the ECU last sent for it. Observers are told with the box's address when the
// mark of a box may have changed by something else than its text.
class BoxMarks : public controls::Object, private controls::Observer {
public:
    BoxMarks() = default;
    BoxMarks(const BoxMarks&) = delete;
    BoxMarks& operator=(const BoxMarks&) = delete;
    ~BoxMarks() override;

    // A box for a value of the ECU, and one whose number stays in the program. The boxes outlive their marks' last use.
    void add(const controls::TextBox& box) { boxes_[&box].isOfEcu = true; }
    void addOwn(const controls::TextBox& box) { boxes_[&box]; }
    // The cells behind a box that was added.
    void setCells(const controls::TextBox& box, const BoxCells& cells) { boxes_.at(&box).cells = cells; }
    // Boxes with cells are compared with them from now on: what the ECU has may have come there past the box.
    void compareWith(link::EcuEeprom& ecu);

    // The ECU has sent what the box shows now; a save has sent it to the ECU.
    void heard(const controls::TextBox& box);
    void sent(const controls::TextBox& box);
    // The ECU has told that it has what was sent.
    void confirmed(const controls::TextBox& box);

    // Of a box that was not added: nothing.
    [[nodiscard]] Mark of(const controls::TextBox& box) const;
    [[nodiscard]] bool wasHeard(const controls::TextBox& box) const;
    // The text has been changed into one that counts as 0.
    [[nodiscard]] bool isTypedZero(const controls::TextBox& box) const;
    // How many boxes show what neither the ECU has nor a save has sent.
    [[nodiscard]] int unsaved() const;
    // What the marks say in words; empty for a box without a mark.
    [[nodiscard]] std::string note(const controls::TextBox& box) const;

    [[nodiscard]] bool knows(const controls::TextBox& box) const { return find(box) != nullptr; }

private:
    struct Known {
        std::string heard;
        std::optional<std::string> sent;
        std::optional<BoxCells> cells;
        std::optional<InEcu> seen;               // in the cells
        std::optional<std::int32_t> countOfBox;  // in the cells when the box was last filled or saved
        std::optional<std::string> toldPast;     // what the ECU has told since the box was filled, but not to the box
        bool isOfEcu = false;
        bool wasHeard = false;
        bool wasSaved = false;  // since the ECU has filled it
    };

    [[nodiscard]] const Known* find(const controls::TextBox& box) const;
    [[nodiscard]] static bool isTyped(const controls::TextBox& box, const Known& known);
    [[nodiscard]] static std::string heardWords(const Known& known);
    [[nodiscard]] std::string standing(const controls::TextBox& box) const;

    void propertyChanged(controls::Object& object, const void* property) override;
    void objectGone(const controls::Object& object) override;
    void look(const controls::TextBox& box, Known& known);
    [[nodiscard]] std::optional<InEcu> inEcu(const Known& known) const;
    [[nodiscard]] std::optional<std::int32_t> countIn(const Known& known) const;
    // What came into the cells past the box, if it is another value.
    [[nodiscard]] std::optional<InEcu> otherInEcu(const controls::TextBox& box, const Known& known) const;

    std::unordered_map<const controls::TextBox*, Known> boxes_;
    link::EcuEeprom* ecu_ = nullptr;
};

}  // namespace korvane::fields
