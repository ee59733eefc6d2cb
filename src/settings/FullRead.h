// The read of all settings, which the user starts or the opening of the window.
#pragma once

#include "settings/MiscContext.h"
#include "settings/ReadList.h"

namespace korvane::settings {

class FullRead {
public:
    explicit FullRead(const MiscContext& context) : context_(context) {}

    // Asks for the settings block and then for one address after the other, 150 ms apart, whether or not an answer
    // comes; with the port closed it takes as long and sends nothing. The poll stands still meanwhile. Nothing but the
    // end of the program breaks it off: one that is started inside another runs to its end, and then the outer one
    // goes on.
    void run();

private:
    // A pass under way, with the poll as it has to be meanwhile.
    class Pass {
    public:
        Pass(int& passes, controls::Timer& poll);
        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;
        ~Pass();

    private:
        int& passes_;
        controls::Timer& poll_;
        int interval_;
    };

    void readAll();
    void read(const ReadRow& row, int cell);
    void showPercent(double percent);
    void requestBlock();
    // One pause of the list, with events before and behind it.
    void pause();

    const MiscContext& context_;
    int passes_ = 0;
};

}  // namespace korvane::settings
