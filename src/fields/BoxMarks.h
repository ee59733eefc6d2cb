// Which boxes of a window show what the ECU has, and which do not.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "controls/Controls.h"

namespace korvane::fields {

enum class Mark {
    None,     // what the ECU last sent
    Changed,  // not what it last sent, or what a save has sent it since
    Sent,     // a save has sent it, and the ECU has not told of it since
    Misread,  // a save has sent the number that its text counts as, which is not what the text shows
};

// What a save takes for 0 although it is no plain zero: "", "words", "0,5".
[[nodiscard]] bool countsAsZero(std::string_view text);

// Whether a text is a number and nothing else, so that it counts as what it shows.
[[nodiscard]] bool isPlainNumber(std::string_view text);

// Knows each box that was added and what the ECU last sent for it. Observers are told with the box's address when the
// mark of a box may have changed by something else than its text.
class BoxMarks : public controls::Object {
public:
    // A box for a value of the ECU, and one whose number stays in the program. The boxes outlive their marks' last use.
    void add(const controls::TextBox& box) { boxes_[&box].isOfEcu = true; }
    void addOwn(const controls::TextBox& box) { boxes_[&box]; }

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
        bool isOfEcu = false;
        bool wasHeard = false;
        bool wasSaved = false;  // since the ECU has filled it
    };

    [[nodiscard]] const Known* find(const controls::TextBox& box) const;
    [[nodiscard]] static bool isTyped(const controls::TextBox& box, const Known& known);
    [[nodiscard]] std::string standing(const controls::TextBox& box) const;

    std::unordered_map<const controls::TextBox*, Known> boxes_;
};

}  // namespace korvane::fields
