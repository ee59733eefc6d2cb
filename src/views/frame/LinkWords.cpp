#include "views/frame/LinkWords.h"

#include <array>

namespace korvane::views {

namespace {

using State = link::LinkState::State;

constexpr platform::Micros kMinute = 60 * platform::kMicrosPerSecond;
constexpr platform::Micros kHour = 60 * kMinute;

struct Saying {
    LinkBadge::Look look;
    QString word;
    QString meaning;
};

// In the order of the states; the last is that of a transfer.
const Saying& sayingOf(const link::LinkState& link) {
    static const std::array kSayings{
        Saying{{LinkBadge::Shape::Cross, QColor(130, 130, 130)},
               QStringLiteral("Closed"),
               QStringLiteral("The port is closed.")},
        Saying{{LinkBadge::Shape::Ring, QColor(225, 150, 0)},
               QStringLiteral("Silent"),
               QStringLiteral("The port is open, but the ECU has not answered yet.")},
        Saying{{LinkBadge::Shape::Disc, QColor(40, 170, 70)},
               QStringLiteral("Live"),
               QStringLiteral("Live data comes in.")},
        Saying{{LinkBadge::Shape::Triangle, QColor(225, 45, 40)},
               QStringLiteral("Late"),
               QStringLiteral("No live data comes in: what is shown is old.\nThe ECU does not answer.")},
        Saying{{LinkBadge::Shape::Bars, QColor(50, 120, 210)},
               QStringLiteral("Paused"),
               QStringLiteral("The ECU is not asked for live data: what is shown of it is old.\n"
                              "To go on, choose a refresh time in the main window.")},
        Saying{{LinkBadge::Shape::Hourglass, QColor(50, 120, 210)},
               QStringLiteral("Busy"),
               QStringLiteral("A transfer has the line. What else is sent now would disturb it.")},
    };
    return kSayings.at(link.isBusy() ? kSayings.size() - 1 : static_cast<std::size_t>(link.state()));
}

QString meaningOf(const link::LinkState& link) {
    return link.programWaits() && !link.isBusy()
               ? QStringLiteral(
                     "The program waits for an answer in a box, and does not ask the ECU meanwhile:\n"
                     "what is shown of it is old.")
               : sayingOf(link).meaning;
}

QString ageWords(platform::Micros age) {
    if (age < platform::kMicrosPerSecond) {
        return QStringLiteral("< 1 s");
    }
    if (age < kMinute) {
        return QStringLiteral("%1 s").arg(age / platform::kMicrosPerSecond);
    }
    return age < kHour ? QStringLiteral("%1 min").arg(age / kMinute) : QStringLiteral("%1 h").arg(age / kHour);
}

QString milliseconds(platform::Micros time) {
    return QString::number(static_cast<double>(time) / platform::kMicrosPerMilli, 'f', 1);
}

}  // namespace

LinkBadge::Look linkLook(const link::LinkState& link) {
    return sayingOf(link).look;
}

QString linkWord(const link::LinkState& link) {
    return sayingOf(link).word;
}

QString linkAge(const link::LinkState& link) {
    return link.state() == State::Closed ? QString() : ageWords(link.age());
}

QString linkTip(const link::LinkState& link) {
    const auto counts = link.counts();
    QString tip = meaningOf(link) + QStringLiteral(
                                        "\n\nFrames: %1\nBytes: %2\nDamaged frames: %3\n"
                                        "Resynchronised: %4\nUnanswered polls: %5")
                                        .arg(counts.frames)
                                        .arg(counts.bytes)
                                        .arg(counts.dropped)
                                        .arg(counts.resyncs)
                                        .arg(counts.unanswered);
    if (const auto trip = link.roundTrip()) {
        tip += QStringLiteral("\nAnswer time, last minute: %1 ms, worst %2 ms")
                   .arg(milliseconds(trip->median), milliseconds(trip->worst));
    }
    return tip;
}

}  // namespace korvane::views
