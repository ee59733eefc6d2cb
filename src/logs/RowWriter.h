// Takes a row for each live frame.
#pragma once

namespace korvane::logs {

class RowWriter {
public:
    virtual ~RowWriter() = default;

    virtual void writeLiveRow() = 0;
};

}  // namespace korvane::logs
