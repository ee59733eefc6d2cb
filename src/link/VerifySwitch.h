// Whether what is sent to the ECU is read back and compared: one choice for the program, remembered.
#pragma once

#include "controls/Property.h"
#include "platform/PreferencesStore.h"

namespace korvane::link {

class VerifySwitch : public controls::Object {
public:
    // Begins as remembered, off if it was never chosen. A change is stored at once.
    explicit VerifySwitch(platform::PreferencesStore& preferences);

    controls::Property<bool> On;

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override { return {}; }

private:
    void afterChange(const void* property) override;

    platform::PreferencesStore& preferences_;
};

}  // namespace korvane::link
