// The controls that choose one side of a comparison, and the side itself.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "controls/Controls.h"
#include "keep/compare/CompareContext.h"
#include "keep/compare/Side.h"
#include "keep/compare/Source.h"

namespace korvane::keep {

class SourcePanel {
public:
    // Literals.
    struct Names {
        std::string_view list, file, points, words;
    };
    SourcePanel(controls::Window& window, const Names& names, const CompareContext& context);

    controls::ComboBox list;       // kinds of sources
    controls::CommandButton file;  // asks for another file
    controls::ComboBox points;     // visible for a restore point
    controls::Label words;         // what the side is, or why there is none

    // Called when the user has chosen another source.
    std::function<void()> changed;

    // Takes a source without asking anything. A file or point that can't be read leaves no side, and the words say why.
    void take(const Source& source);
    // The same, with a list of the points as they are now.
    void open(const Source& source);
    // Brings a live side up to date.
    void refresh(const Snapshot& now);

    [[nodiscard]] const Source& source() const { return source_; }
    // Null while there is none.
    [[nodiscard]] const Side* side() const { return side_ ? &*side_ : nullptr; }

private:
    void fillList();
    void fillPoints();
    void listChosen();
    void askForFile();
    void pointChosen();
    void select();
    void load();
    [[nodiscard]] Side read(const Snapshot& now) const;
    [[nodiscard]] Side readPoint() const;
    [[nodiscard]] Side readProposal() const;
    void addBoxes(Side& side) const;
    void tell();

    controls::Window& window_;
    const CompareContext& context_;
    Source source_;
    std::optional<Side> side_;
    std::string failure_;
    std::vector<PointName> names_;
    bool selecting_ = false;
};

}  // namespace korvane::keep
