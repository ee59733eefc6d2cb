#include "maps/boxes/ParameterGroup.h"

#include <utility>

namespace korvane::maps {

namespace {

constexpr int kWidth = 4500;  // twips
constexpr int kRow = 360;
constexpr int kMargin = 240;

}  // namespace

ParameterGroup::ParameterGroup(const fields::Context& context, const fields::Fields& fields,
                               const ParameterGroupPlan& plan, std::vector<controls::ProgressBar*> bars)
    : frame(context.window, plan.frame.name),
      btnRead(context.window, plan.read.name),
      btnSave(context.window, plan.write.name),
      reader_(context, plan.reads, std::move(bars)),
      saver_(context, fields) {
    frame.Caption = plan.frame.caption;
    btnRead.Caption = plan.read.caption;
    btnSave.Caption = plan.write.caption;
    btnRead.Click = [this] { reader_.run(); };
    btnSave.Click = [this, writes = plan.writes] { saver_.run(writes, frame.Caption.get()); };
}

void ParameterGroup::place(int left, int top, std::initializer_list<controls::Control*> inside) {
    std::vector<controls::Control*> controls(inside);
    controls.insert(controls.end(), {&btnRead, &btnSave});
    stack(frame, left, top, kMargin, controls);
}

void stack(controls::Frame& frame, int left, int top, int margin, const std::vector<controls::Control*>& inside) {
    int row = margin;
    for (auto* control : inside) {
        control->setContainer(&frame);
        control->place(margin, row, kWidth - 2 * margin, kRow - 60);
        row += kRow;
    }
    frame.place(left, top, kWidth, row);
}

}  // namespace korvane::maps
