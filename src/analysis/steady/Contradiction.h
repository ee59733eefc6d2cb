// Whether what was learnt still holds: the car itself may have changed.
#pragma once

namespace korvane::steady {

// It does not where more samples contradict it than agree, between two proofs of life, often enough in a row.
class Contradiction {
public:
    static constexpr int kProofs = 8;

    void reset() { *this = Contradiction(); }
    void agreed() { ++agreeing_; }
    void contradicted() { ++against_; }
    // At each proof of life. Whether what was learnt is to be forgotten.
    [[nodiscard]] bool atProof();

private:
    int agreeing_ = 0;  // samples since the last proof
    int against_ = 0;
    int doubted_ = 0;  // proofs in a row
};

}  // namespace korvane::steady
