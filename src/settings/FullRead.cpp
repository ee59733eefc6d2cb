#include "settings/FullRead.h"

#include "link/Commands.h"
#include "platform/EventPump.h"
#include "platform/Machine.h"
#include "settings/FullReadPlan.h"

namespace korvane::settings {

namespace {

constexpr int kFirstPause = 30;  // ms

fields::Context withAnswers(fields::Context context, fields::Answers& answers) {
    context.answers = &answers;
    return context;
}

}  // namespace

FullRead::FullRead(const MiscContext& context, fields::Answers& answers)
    : context_(context),
      reader_(withAnswers(context.fieldsContext(), answers), fullReadPlan(),
              {&context.window.prgLoad, &context.connection.prgSettings}) {}

void FullRead::run() {
    reader_.run([this] { requestBlock(); });
}

void FullRead::requestBlock() {
    auto& pump = context_.window.machine().pump;
    kFullReadCaptions.showPercent(context_.window, 0);
    pump.wait(kFirstPause);
    pump.pump();
    if (context_.connection.MSComm1.PortOpen()) {
        context_.connection.MSComm1.Output(link::kAskSettingsBlock);
    }
    pump.pump();
    pump.wait(kFullReadPause);
}

}  // namespace korvane::settings
