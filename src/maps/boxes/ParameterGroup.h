// Parameters of the ECU in a frame of their own, with a button that reads them and one that writes them.
#pragma once

#include <initializer_list>
#include <vector>

#include "fields/Fields.h"
#include "fields/Reader.h"
#include "fields/Saver.h"
#include "maps/panes/GridPane.h"

namespace korvane::maps {

struct ParameterGroupPlan {
    NamedCaption frame;
    NamedCaption read;
    NamedCaption write;
    fields::ReadPlan reads;
    fields::SavePlan writes;
};

class ParameterGroup {
public:
    // `fields` has the group's rows, among others. `bars` count the reads.
    ParameterGroup(const fields::Context& context, const fields::Fields& fields, const ParameterGroupPlan& plan,
                   std::vector<controls::ProgressBar*> bars = {});

    controls::Frame frame;
    controls::CommandButton btnRead, btnSave;

    // The frame's place in its window, twips, and what stands in it, one below the other.
    void place(int left, int top, std::initializer_list<controls::Control*> inside);

private:
    fields::Reader reader_;
    fields::Saver saver_;
};

// Puts controls into a frame, one below the other, and the frame to its place; all in twips. Every frame is as wide.
void stack(controls::Frame& frame, int left, int top, int margin, const std::vector<controls::Control*>& inside);

}  // namespace korvane::maps
