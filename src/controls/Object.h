// What windows and controls have in common: a name, named properties, and observers of their changes.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace korvane::controls {

class Object;

// A property's value as scripts see it; empty for a value never set.
using Value = std::variant<std::monostate, bool, std::int64_t, double, std::string>;

// How a property is reached by name. `set` is null for one that can only be read; it raises RuntimeError 13 for a value
// of the wrong kind and otherwise assigns as the program's own code would.
struct PropertyInfo {
    std::string_view name;
    Value (*get)(const Object&);
    void (*set)(Object&, const Value&);
};

class Observer {
public:
    virtual ~Observer() = default;
    // `property` is the address of the Property member that changed.
    virtual void propertyChanged(Object& object, const void* property) = 0;
    // The object is being destroyed: only its address may still be used.
    virtual void objectGone(const Object& object) { static_cast<void>(object); }
};

class Object {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object();

    // The full list of properties, those of the base classes first; none for an object that scripts do not reach.
    [[nodiscard]] virtual std::vector<std::span<const PropertyInfo>> propertyTables() const { return {}; }
    // The property named `name`, or null.
    [[nodiscard]] const PropertyInfo* findProperty(std::string_view name) const;

    // Observers are notified in the order in which they were added. One that is destroyed removes itself before.
    void addObserver(Observer& observer);
    void removeObserver(Observer& observer);

    // Called by a Property after its value has changed: observers first, then what the change sets off.
    void changed(const void* property);

protected:
    // What an assignment sets off in the program, such as the click of a check box whose value was assigned.
    virtual void afterChange(const void* property) { static_cast<void>(property); }

private:
    std::vector<Observer*> observers_;
};

}  // namespace korvane::controls
