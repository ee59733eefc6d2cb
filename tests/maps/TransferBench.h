// A map window, and actions that happen while one waits.
#pragma once

#include <functional>
#include <numeric>

#include "MapsBench.h"

namespace korvane::maps {

// The clock is at 12:00:00 when a test begins. Moments are milliseconds of the test.
class TransferBench : public MapsBench {
protected:
    TransferBench(MapGeometry shape, Halves halves, InjectionScale scale = &ordinaryInjectionScale)
        : window_(machine_.machine, context_, shape, scale, halves) {
        window_.load();
        window_.Visible = true;
        window_.isFormLoaded = true;
        poll().Enabled = true;
    }

    controls::Timer& poll() { return main_.TimerRequestData; }

    void at(int milliseconds, std::function<void()> action) { machine_.at(milliseconds, std::move(action)); }
    // Also while the program blocks.
    void whileBlocked(int milliseconds, std::function<void()> action) {
        machine_.at(milliseconds, std::move(action), platform::AlarmKind::Device);
    }
    [[nodiscard]] std::int64_t now() const { return machine_.pump.milliseconds(); }

    // When byte `index` had arrived, in microseconds. A byte takes 173 of them at 57600 baud.
    [[nodiscard]] platform::Micros arrivalOf(std::size_t index) const {
        return machine_.recorder.arrivals.at(index).at;
    }

    // `head`, then the cells from `first` to `last` of the image, then `tail`.
    [[nodiscard]] static support::Bytes framed(const support::Bytes& head, const core::MapImage& image,
                                               std::size_t first, std::size_t last, const support::Bytes& tail) {
        support::Bytes bytes = head;
        for (std::size_t cell = first; cell <= last; ++cell) {
            bytes.push_back(image.at(cell));
        }
        bytes.insert(bytes.end(), tail.begin(), tail.end());
        return bytes;
    }

    // Cell i holds i + 3, so that no two neighbours are equal and the halves differ.
    static void number(core::MapImage& image) { std::iota(image.begin(), image.end(), std::uint8_t{3}); }

    BenchWindow window_;
};

class SmallTransferBench : public TransferBench {
protected:
    SmallTransferBench() : TransferBench(kOrdinaryMaps, Halves::One) {}
};

class LargeTransferBench : public TransferBench {
protected:
    LargeTransferBench() : TransferBench(kLargeMaps, Halves::Two) {}
};

inline constexpr const char* kPortClosed = "Operation valid only when the port is open";

}  // namespace korvane::maps
