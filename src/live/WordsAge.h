// Whether the words of the ignition debug window come in, or are old.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "controls/MSComm.h"
#include "controls/Property.h"
#include "platform/EventPump.h"

namespace korvane::live {

class WordsAge : public controls::Object, private controls::Observer {
public:
    // Both outlive it.
    WordsAge(platform::EventPump& pump, controls::MSComm& port);
    WordsAge(const WordsAge&) = delete;
    WordsAge& operator=(const WordsAge&) = delete;
    ~WordsAge() override;

    // True from a frame until none has come for kOld, or the port closes.
    controls::Property<bool> Fresh{*this, false};
    static constexpr platform::Micros kOld = 1000 * platform::kMicrosPerMilli;

    // A frame has come.
    void heard();

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override { return {}; }

private:
    void propertyChanged(controls::Object& object, const void* property) override;

    platform::EventPump& pump_;
    controls::MSComm& port_;
    std::unique_ptr<platform::Alarm> old_;
};

}  // namespace korvane::live
