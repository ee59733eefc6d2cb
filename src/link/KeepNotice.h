// One line of the main window about the ECU on the line: its restore points, and a backup or an upload that is not
// whole.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "controls/Property.h"
#include "core/Overwritten.h"

namespace korvane::link {

enum class ImageRun : std::uint8_t { Upload, Backup };
// What is kept on the disk without being asked for.
enum class Kept : std::uint8_t { Points, Desk };

class KeepNotice : public controls::Object {
public:
    // That the last restore point or the desk could not be written; behind it what the last upload of an image has not
    // sent, or that the last backup has old bytes; then that the ECU has changed since its newest restore point before
    // this connection. Empty if there is nothing to say.
    controls::Property<std::string> Text{*this};
    // The point that the text compares the ECU with; empty if it speaks of no point.
    controls::Property<std::string> Point{*this};

    // That a restore of this ECU was not completed, and the point that it was about, which may be gone. Told ahead of
    // the text; empty if there is none.
    controls::Property<std::string> Offer{*this};
    controls::Property<std::string> OfferPoint{*this};

    // That an earlier run did not end properly, and the point that has what was on its desk. Told ahead of all else,
    // until the point was shown.
    controls::Property<std::string> Unfinished{*this};
    controls::Property<std::string> UnfinishedPoint{*this};

    void say(const std::string& text, const std::string& point) {
        Point = point;
        aboutPoint_ = text;
        join();
    }

    // What has become of a run, until the next of its kind says otherwise or the tuner closes it: a new connection
    // makes it no less true.
    void tell(ImageRun run, const std::string& text) {
        aboutRuns_.at(static_cast<std::size_t>(run)) = text;
        join();
    }

    // Why something can't be kept, until it can: a new connection and the tuner make it no less true.
    void cannotKeep(Kept what, const std::string& why) {
        failures_.at(static_cast<std::size_t>(what)) = why;
        join();
    }

    // That something was overwritten which nobody had read: of each part of the ECU the last one, until the tuner
    // closes it.
    void overwrites(core::Overwritten::Part part, const std::string& text) {
        overwritten_.at(static_cast<std::size_t>(part)) = text;
        join();
    }
    [[nodiscard]] const std::string& overwritten(core::Overwritten::Part part) const {
        return overwritten_.at(static_cast<std::size_t>(part));
    }

    // The tuner has read the text.
    void close() {
        overwritten_ = {};
        aboutRuns_ = {};
        say({}, {});
    }

    void offer(const std::string& text, const std::string& point) {
        OfferPoint = point;
        Offer = text;
    }
    void unfinished(const std::string& text, const std::string& point) {
        UnfinishedPoint = point;
        Unfinished = text;
    }
    // All of them, as the line has them.
    [[nodiscard]] std::string words() const {
        std::string all;
        for (const auto* part : {&Unfinished.get(), &Offer.get(), &Text.get()}) {
            all += (all.empty() || part->empty() ? "" : "\n") + *part;
        }
        return all;
    }
    void showUnfinished() {
        const std::string point = UnfinishedPoint.get();
        unfinished({}, {});
        showOffer(point);
    }

    // Shows a point in the window of the restore points, which has the restore that was not completed; set by who owns
    // the window.
    std::function<void(const std::string& point)> showOffer;
    // Shows what differs from a point; set by who owns the window.
    std::function<void(const std::string& point)> compare;

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override { return {}; }

private:
    void join() {
        std::string all;
        for (const auto& text : {failures_[0], failures_[1], aboutRuns_[0], aboutRuns_[1], aboutPoint_}) {
            all += (all.empty() || text.empty() ? "" : "\n") + text;
        }
        for (const auto& text : overwritten_) {
            all += (all.empty() || text.empty() ? "" : "\n") + text;
        }
        Text = all;
    }

    std::array<std::string, 2> failures_;
    std::array<std::string, 6> overwritten_;  // by part
    std::array<std::string, 2> aboutRuns_;
    std::string aboutPoint_;
};

}  // namespace korvane::link
