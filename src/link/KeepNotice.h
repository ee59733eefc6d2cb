// One line of the main window about the restore points of the ECU on the line.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "controls/Property.h"

namespace korvane::link {

class KeepNotice : public controls::Object {
public:
    // That the ECU has changed since its newest restore point before this connection, or that the last point could not
    // be written. Empty if there is nothing to say.
    controls::Property<std::string> Text{*this};
    // The point that the text compares the ECU with; empty if it speaks of no point.
    controls::Property<std::string> Point{*this};

    // That a restore of this ECU was not completed, and the point that it was about, which may be gone. Told ahead of
    // the text; empty if there is none.
    controls::Property<std::string> Offer{*this};
    controls::Property<std::string> OfferPoint{*this};

    void say(const std::string& text, const std::string& point) {
        Point = point;
        Text = text;
    }

    void offer(const std::string& text, const std::string& point) {
        OfferPoint = point;
        Offer = text;
    }
    // Both, as the line has them.
    [[nodiscard]] std::string words() const {
        return Offer.get() + (Offer.get().empty() || Text.get().empty() ? "" : "\n") + Text.get();
    }

    // Shows the restore that was not completed; set by who owns the window.
    std::function<void(const std::string& point)> showOffer;
    // Shows what differs from a point; set by who owns the window.
    std::function<void(const std::string& point)> compare;

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override { return {}; }
};

}  // namespace korvane::link
