// The read of all settings, started by the user or by the opening of the window.
#pragma once

#include "fields/Reader.h"
#include "settings/MiscContext.h"

namespace korvane::settings {

class FullRead {
public:
    // `answers` is told what was asked for.
    FullRead(const MiscContext& context, fields::Answers& answers);

    // Asks for the settings block and then for one address after the other. The bars of this window and of the main
    // window count the reads.
    void run();

private:
    void requestBlock();

    const MiscContext& context_;
    fields::Reader reader_;
};

}  // namespace korvane::settings
