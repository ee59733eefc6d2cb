#include "ecu/memory/FirmwareType.h"

namespace korvane::ecu {

FirmwareType firmwareType(int number) {
    FirmwareType type;
    switch (number) {
        case 14:
        case 15:
        case 213:
            type.large = true;
            break;
        case 20:
        case 21:
            type.ignites = false;
            type.ignitionMap = false;
            break;
        case 30:
            type.idleRegulator = false;
            [[fallthrough]];
        case 31:
        case 32:
            type.injects = false;
            break;
        case 112:
            type.limiter = true;
            type.injects = false;
            type.ignitionMap = false;
            break;
        default:
            break;
    }
    return type;
}

}  // namespace korvane::ecu
