// The one timer that paints: what changes between two of its frames is shown with the second.
#pragma once

#include <QElapsedTimer>
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

    static constexpr int kFrame = 20;  // ms from one frame to the next

    // How long to wait for a frame, ms, when the last one began `since` ms ago and took `cost` ms with its painting: a
    // slow display keeps half of the time free.
    [[nodiscard]] static qint64 pauseBefore(qint64 since, qint64 cost);

    void add(Client& client);
    void remove(Client& client);

    // Asks for a frame: at once if the last one is long enough ago. Without a request nothing ticks.
    void wake();
    [[nodiscard]] bool isAwake() const { return timer_.isActive(); }
    // The frame that was asked for, now.
    void tick();

private:
    QTimer timer_;
    QTimer painted_;  // its turn comes when the events that a frame has posted are handled
    QElapsedTimer begun_;
    qint64 cost_ = 0;
    std::vector<Client*> clients_;
};

}  // namespace korvane::views
