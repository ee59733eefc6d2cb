// What the program itself says and does about an operation that something went wrong with.
#pragma once

#include <functional>
#include <memory>

#include "Bench.h"
#include "EcuState.h"
#include "Operations.h"

namespace korvane::proof {

// An operation with nothing going wrong.
struct Reference {
    EcuState before, wanted;
    CellSet written;
    long bytes = 0;    // to the ECU
    long answers = 0;  // bytes from it
    std::vector<Storing> storings;
    std::string words;
};

struct WayBack {
    // Once everything has been read again, it tells rightly whether the ECU has the old values.
    bool says = false;
    // The restore point that was made before the operation, restored by one press and its maps sent, brings them back.
    // Of a restore, the press of "Go back" does.
    bool toOld = false;
    // So does the point with the new ones, for a map as it was edited; for what boxes hold the operation itself. Of a
    // restore, the press of "Go on" does.
    bool toNew = false;
    // The cells that are to blame: that had other values than before when the program was asked, that have others than
    // before behind the way to the old values, and others than they should behind the way to the new ones.
    CellSet changed, notOld, notNew;

    std::string words;  // of the program, about the restore
};

// Asks the program, which has the line again, about the ECU. `again` does the same operation with the same thing going
// wrong once more.
[[nodiscard]] WayBack wayBackOf(Bench& bench, const Operation& operation, const Reference& reference,
                                const std::function<std::unique_ptr<Bench>()>& again);

}  // namespace korvane::proof
