// What a trial of the line means for the tuner.
#pragma once

#include <string>
#include <vector>

#include "doctor/Finding.h"
#include "doctor/PortTrial.h"

namespace korvane::doctor {

// Of listening: what arrives while nothing is asked.
[[nodiscard]] Finding findingOf(const PortTrial::Heard& heard);

// A run that ended early. `device` is the path, to be named in a remedy.
[[nodiscard]] Finding findingOfFailure(const PortTrial& trial, const std::string& device);

// "57600 baud: answer, firmware 3.386, type 11".
[[nodiscard]] std::string lineOf(const PortTrial::Asked& asked);

// The whole of a complete run. Good if there was an answer, a fault if not.
[[nodiscard]] Finding verdictOf(const std::vector<PortTrial::Asked>& asked);

}  // namespace korvane::doctor
