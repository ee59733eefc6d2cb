#include "fields/SaveReport.h"

#include <algorithm>
#include <utility>

#include "core/Bytes.h"
#include "core/Numbers.h"

namespace korvane::fields {

namespace {

std::string values(std::ptrdiff_t count) {
    return std::to_string(count) + (count == 1 ? " value" : " values");
}

}  // namespace

int SaveReport::begin(std::string group, int values) {
    group_ = std::move(group);
    planned_ = values;
    items_.clear();
    refused_.clear();
    closed_ = false;
    opened_ = false;
    return ++save_;
}

void SaveReport::add(int save, SavedValue value, bool sent) {
    if (save != save_) {
        return;
    }
    if (sent) {
        items_.push_back({std::move(value), {}});
    }
    closed_ = closed_ || !sent;
    compose();
}

void SaveReport::refused(int save, std::string label) {
    if (save == save_) {
        refused_ = label.empty() ? "a value" : std::move(label);
        compose();
    }
}

void SaveReport::heard(std::int64_t address, std::int32_t value, bool is16) {
    heardByte(address, core::lowByte(value));
    if (is16) {
        heardByte(address + 1, core::highByte(value));
    }
}

void SaveReport::heardByte(std::int64_t address, std::uint8_t byte) {
    for (SentValue& item : items_) {
        const std::int64_t index = address - item.value.address;
        if (index >= 0 && index < item.value.bytes) {
            item.back.at(static_cast<std::size_t>(index)) = byte;
            compose();
        }
    }
}

void SaveReport::lineOpened() {
    if (closed_) {
        opened_ = true;
        compose();
    }
}

void SaveReport::compose() {
    Text = group_ + ": " + sentPart() + backPart();
}

std::string SaveReport::sentPart() const {
    const auto sent = static_cast<int>(items_.size());
    const std::string some =
        sent == planned_ ? values(sent) + " sent" : std::to_string(sent) + " of " + values(planned_) + " sent";
    if (!refused_.empty()) {
        return some + ", then " + refused_ + " did not fit";
    }
    if (closed_) {
        return sent == 0 ? std::string("nothing sent, the port ") + (opened_ ? "was" : "is") + " closed"
                         : some + ", then the port was closed";
    }
    return some;
}

std::string SaveReport::backPart() const {
    const auto back = std::count_if(items_.begin(), items_.end(), [](const SentValue& item) { return item.isBack(); });
    if (back == 0) {
        return items_.empty() ? "" : "; nothing has come back yet";
    }
    const auto isOther = [](const SentValue& item) { return item.isBack() && !item.isSame(); };
    const auto other = std::count_if(items_.begin(), items_.end(), isOther);
    const std::string same = std::to_string(back - other) + " came back the same";
    if (other == 0) {
        return "; " + same;
    }
    const auto first = std::find_if(items_.begin(), items_.end(), isOther);
    return "; " + same + ", " + values(other) + (other == 1 ? " differs: " : " differ: ") + difference(*first);
}

std::string SaveReport::difference(const SentValue& item) const {
    const std::string name = item.value.label.empty() ? "" : item.value.label + " ";
    return name + "is " + item.shown(item.told(), tables_) + ", not " + item.shown(item.value.value, tables_);
}

}  // namespace korvane::fields
