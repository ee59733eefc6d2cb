// A throw-away window with boxes for a few parameters, and what is read and written for it.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "core/EepromAccess.h"
#include "core/tables/Module1.h"
#include "fields/Fields.h"
#include "fields/Reader.h"
#include "fields/Saver.h"
#include "link/ConnectionPanel.h"
#include "support/MachineBench.h"

namespace korvane::fields {

using A = core::ParameterAddresses;
using support::Lines;

inline constexpr Pause k50{50};

// The window is open, and so is the port unless a test closes it. The clock stands at 0.
class FieldsBench : public support::NotingBench {
protected:
    FieldsBench() {
        core::InitModule(tables_, virtual_.preferences);
        core::InitTimeUnits(tables_);
        window_.show();
        panel_.MSComm1.Settings = "57600,N,8,1";
        panel_.MSComm1.setPortOpen(true);
        line_.notes.clear();
    }

    core::SharedTables tables_;
    controls::Window main_{machine_, "main"};
    link::ConnectionPanel panel_{main_};
    core::EepromAccess eeprom_{panel_.MSComm1, pump_, tables_};
    controls::Window window_{machine_, "window"};
    controls::TextBox txtDelay_{window_, "txtDelay"};
    controls::TextBox txtLimit_{window_, "txtLimit"};
    controls::TextBox txtLaunch_{window_, "txtLaunch"};
    Context context_{window_, tables_, eeprom_, panel_.TimerRequestData};
    Fields fields_{tables_,
                   {{&A::LAUNCH_DELAY_OFF, txtDelay_},
                    {&A::RPM_LIMIT_OFF, txtLimit_, kUnsignedWord},
                    {&A::LAUNCHCONTROL_LO, txtLaunch_, kTwoBytes}}};
    Saver saver_{context_, fields_};
};

}  // namespace korvane::fields
