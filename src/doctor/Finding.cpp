#include "doctor/Finding.h"

namespace korvane::doctor {

std::string_view nameOf(Finding::Weight weight) {
    switch (weight) {
        case Finding::Weight::Hint:
            return "hint";
        case Finding::Weight::Fault:
            return "fault";
        case Finding::Weight::Good:
            break;
    }
    return "good";
}

std::string rowOf(const Finding& finding) {
    switch (finding.weight) {
        case Finding::Weight::Hint:
            return "Hint: " + finding.text;
        case Finding::Weight::Fault:
            return "Fault: " + finding.text;
        case Finding::Weight::Good:
            break;
    }
    return "Good: " + finding.text;
}

}  // namespace korvane::doctor
