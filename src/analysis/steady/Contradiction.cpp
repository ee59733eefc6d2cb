#include "analysis/steady/Contradiction.h"

namespace korvane::steady {

bool Contradiction::atProof() {
    doubted_ = against_ > agreeing_ ? doubted_ + 1 : 0;
    agreeing_ = against_ = 0;
    return doubted_ >= kProofs;
}

}  // namespace korvane::steady
