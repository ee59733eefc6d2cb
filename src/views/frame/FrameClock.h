// The one timer that paints: what changes between two of its frames is shown with the second.
#pragma once

#include <QTimer>

#include <vector>

namespace korvane::views {

class FrameClock {
public:
    class Client {
    public:
        virtual ~Client() = default;
        // Shows everything that has changed.
        virtual void frame() = 0;
    };

    FrameClock();
    FrameClock(const FrameClock&) = delete;
    FrameClock& operator=(const FrameClock&) = delete;
    ~FrameClock() = default;

    static constexpr int kFrame = 40;  // ms

    void add(Client& client);
    void remove(Client& client);

    // Asks for a frame, at most kFrame from now. Without a request nothing ticks.
    void wake();
    [[nodiscard]] bool isAwake() const { return timer_.isActive(); }
    // The frame that was asked for, now.
    void tick();

private:
    QTimer timer_;
    std::vector<Client*> clients_;
};

}  // namespace korvane::views
