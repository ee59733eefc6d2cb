// How often a piece of work that lets events run may be started inside itself.
#pragma once

namespace korvane::fields {

// Each start needs room on the stack until it ends, and a line that never rests must not pile them up.
class Nesting {
public:
    explicit Nesting(int limit) : limit_(limit) {}

    // One start; false if it goes beyond the limit.
    class Level {
    public:
        explicit Level(Nesting& nesting) : depth_(nesting.depth_), entered_(depth_ < nesting.limit_) {
            depth_ += entered_ ? 1 : 0;
        }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;
        ~Level() { depth_ -= entered_ ? 1 : 0; }

        [[nodiscard]] explicit operator bool() const { return entered_; }

    private:
        int& depth_;
        bool entered_;
    };

private:
    int limit_;
    int depth_ = 0;
};

}  // namespace korvane::fields
