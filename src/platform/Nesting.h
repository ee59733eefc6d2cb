// Limits how often some work that lets events run is started inside itself.
#pragma once

namespace korvane::platform {

// Each start takes stack space until it ends, and a line that is never silent could start it again and again.
class Nesting {
public:
    explicit Nesting(int limit) : limit_(limit) {}

    // The starts that have not ended.
    [[nodiscard]] int depth() const { return depth_; }

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

}  // namespace korvane::platform
