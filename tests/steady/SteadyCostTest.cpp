// What a frame costs.
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <vector>

#include "steady/Ride.h"

namespace {

std::int64_t allocations = 0;  // NOLINT: counted by the replaced operator new

}  // namespace

// Not inlined: the compiler would miss one of a pair and warn of a wrong partner.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace korvane::steady {
namespace {

// Ten minutes of frames in which it learns and corrects.
TEST(SteadyCost, AFrameTakesMicrosecondsAndAllocatesNothing) {
    TinyCar car(1);
    car.spoil(10.0);
    SteadyAgent agent;
    agent.start(wideSetup(), car.bytes(), 0.0);
    std::vector<Frame> frames;
    for (int i = 0; i < 8000; ++i) {
        frames.push_back(car.next());
    }
    std::size_t changes = 0;
    const auto before = allocations;
    const auto begun = std::chrono::steady_clock::now();
    for (const Frame& frame : frames) {
        changes += agent.onFrame(frame).size();
    }
    const std::chrono::duration<double, std::micro> took = std::chrono::steady_clock::now() - begun;
    EXPECT_EQ(allocations, before);
    EXPECT_GT(changes, 20U);
    // 5 are said, and some 2 are measured; a busy or instrumented machine may take longer.
    EXPECT_LT(took.count() / static_cast<double>(frames.size()), 100.0);
}

}  // namespace
}  // namespace korvane::steady
