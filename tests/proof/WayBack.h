// What the program itself says and does about an operation that something went wrong with.
#pragma once

#include "Bench.h"
#include "EcuState.h"

namespace korvane::proof {

enum class Answer { NotAsked, Yes, No };

struct WayBack {
    Answer saysWhich = Answer::NotAsked;  // whether it tells rightly which values the ECU has: old, new or neither
    Answer toOld = Answer::NotAsked;      // whether one press brings the ECU to the old values
    Answer toNew = Answer::NotAsked;      // and to the new ones
};

// Asks the program at the desk, which has the line again, about the ECU, which has `outcome` by now.
[[nodiscard]] WayBack wayBackOf(Bench& bench, const EcuState& before, const EcuState& wanted, Outcome outcome);

}  // namespace korvane::proof
