// The program's replies on standard output.
#pragma once

#include <string>
#include <string_view>

namespace korvane::app {

// SIGPIPE must be ignored. The first failure is reported on standard error; what is written after it is dropped.
class ReplyWriter {
public:
    // `descriptor` is not closed.
    explicit ReplyWriter(int descriptor) : descriptor_(descriptor) {}

    // Returns when all is written, however long the reader takes.
    void write(std::string_view reply);
    [[nodiscard]] bool failed() const { return failed_; }

private:
    // The number of bytes written, 0 if none could be written now; below 0 on failure.
    [[nodiscard]] long writeSome(std::string_view bytes) const;

    int descriptor_;
    bool failed_ = false;
};

}  // namespace korvane::app
