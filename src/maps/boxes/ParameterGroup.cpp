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
    btnSave.Click = [this, writes = plan.writes] { saver_.run(writes); };
}

void ParameterGroup::place(int left, int top, std::initializer_list<controls::Control*> inside) {
    int row = kMargin;
    const auto add = [&](controls::Control& control) {
        control.setContainer(&frame);
        control.Left = kMargin;
        control.Top = row;
        control.Width = kWidth - 2 * kMargin;
        control.Height = kRow - 60;
        row += kRow;
    };
    for (auto* control : inside) {
        add(*control);
    }
    add(btnRead);
    add(btnSave);
    frame.Left = left;
    frame.Top = top;
    frame.Width = kWidth;
    frame.Height = row;
}

}  // namespace korvane::maps
