// Makes the restore points that nobody has to think of, and knows what there are.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Property.h"
#include "core/Overwritten.h"
#include "keep/point/PointDifference.h"
#include "keep/point/PointStore.h"
#include "link/ConnectionPanel.h"
#include "link/FrameWitness.h"
#include "platform/Machine.h"

namespace korvane::keep {

// It sends nothing. A point is made when the maps of the ECU have been read for the first time in a connection, when
// its settings have, before each operation that stores into the ECU, at the end of a connection and of the program, and
// when somebody asks for one. All but the last make none while the newest point of the ECU has all that is known
// already. That a point can't be written stops nothing; notice() says so until one can.
class Keeper : public controls::Object, private link::FrameWitness, private controls::Observer {
public:
    // All of it outlives the keeper.
    struct Surroundings {
        platform::Machine& machine;
        const core::SharedTables& tables;
        link::ConnectionPanel& connection;
    };
    explicit Keeper(const Surroundings& surroundings);
    ~Keeper() override;

    // What the main window shows until the next connect.
    [[nodiscard]] link::KeepNotice& notice() const { return in_.connection.keepNotice; }

    // For core::EepromAccess::storing, and for the end of a read of all settings.
    void beforeStore(std::string_view what);
    // Behind it: notice() tells of what nobody has read.
    void beforeOverwriting(std::string_view what, const core::Overwritten& overwritten);
    // Edits that neither the ECU nor the newest point has are kept before others take their place on the desk.
    void beforeReplacing(std::string_view what);
    // The newest point has the desk behind it, unless none can be made.
    void keepDesk(std::string_view reason);
    // A desk that was left by an undo or a revert: a sentence why no point could be made of it, or empty.
    std::string keepUndone(const Snapshot& undone);
    // Whether the newest point that this program has made or found to have the desk has that of `known`.
    [[nodiscard]] bool hasDesk(const Snapshot& known) const;
    void settingsRead();
    // For the end of the program.
    void programEnds() { keepWhatIsNew("end of the program"); }
    // Made in any case. A sentence why not, or empty.
    std::string addByHand(std::string_view note);

    // As they were when the folder was read last. Observers are told of pointsProperty() when they may be others.
    [[nodiscard]] const std::vector<PointEntry>& points();
    [[nodiscard]] const void* pointsProperty() const { return &points_; }
    // Reads the folder anew: other programs may use it.
    void refresh();
    // The same if anything in it has changed since it was read.
    void follow();
    // A sentence why not, or empty.
    std::string remove(const std::string& name);
    std::string setNote(const std::string& name, std::string_view text);
    [[nodiscard]] Decoded<Snapshot> load(std::string_view name) const { return store_.load(name); }

    // How many cells of a point the ECU has otherwise now; or why nobody can say: "other ECU", "unknown" while nothing
    // is known that the point knows, empty for a point that can't be read.
    [[nodiscard]] std::string differsText(const std::string& name) const;

    // What is known now.
    [[nodiscard]] Snapshot now() const;
    [[nodiscard]] const PointStore& store() const { return store_; }

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override { return {}; }

private:
    void frameHeard(std::uint8_t code, std::span<const std::uint8_t> payload) override;
    void propertyChanged(controls::Object& object, const void* property) override;
    void begin();
    void look();
    [[nodiscard]] bool mapsAreRead() const;
    [[nodiscard]] bool hasSettings() const;
    void keepWhatIsNew(std::string_view reason);
    void keepRead(std::string_view reason);
    void keepUnlessKnown(std::string_view reason);
    std::string add(std::string_view reason, std::string_view note);
    PointStore::Added write(const Snapshot& point);
    struct Found {
        std::string name;
        Snapshot content;
    };
    // The newest point of this ECU.
    [[nodiscard]] std::optional<Found> newest() const;
    // Shows the points of this ECU, the newest first, until `wants` says no. A folder of many takes time: those behind
    // the newest hundred are left out.
    void eachPoint(const std::function<bool(Found point)>& wants) const;
    void compare();
    void pointsChanged();

    Surroundings in_;
    PointStore store_;
    std::optional<std::vector<PointEntry>> points_;
    std::filesystem::file_time_type read_;  // when the folder had last changed as it was read
    int opening_ = 0;                       // that all below is about
    bool identityHeard_ = false;
    bool mapsKept_ = false;
    bool settingsKept_ = false;
    std::optional<Snapshot> last_;  // what was known when keepWhatIsNew() looked, without its time
    std::set<std::string> added_;   // names
    std::string failure_;           // of the last point
    Found desk_;                    // the point that hasDesk() is about
};

}  // namespace korvane::keep
