#include "LiveBench.h"

namespace korvane::live {
namespace {

class CountingTaker : public FrameTaker {
public:
    void liveFrame() override {
        ++frames;
        if (fails) {
            throw std::runtime_error("no");
        }
    }

    int frames = 0;
    bool fails = false;
};

class FrameTakerTest : public LiveBench {
protected:
    FrameTakerTest() { live_.setFrameTaker(&taker_); }
    void receive() {
        Bytes payload(19, 10);
        live_.decodeLivePacket(payload);
    }

    CountingTaker taker_;
};

TEST_F(FrameTakerTest, IsToldOfEachFrameOfTheEcuAndOfNoReplay) {
    receive();
    receive();
    EXPECT_EQ(taker_.frames, 2);
    live_.updateData_new();
    EXPECT_EQ(taker_.frames, 2);
}

TEST_F(FrameTakerTest, OneThatFailsStopsNothing) {
    taker_.fails = true;
    receive();
    receive();
    EXPECT_EQ(taker_.frames, 2);
}

}  // namespace
}  // namespace korvane::live
