#include "platform/qt/PortMap.h"

#include <QSerialPortInfo>

#include <algorithm>
#include <system_error>
#include <tuple>
#include <utility>

#include "platform/Texts.h"

namespace korvane::platform {

namespace {

constexpr Micros kFoundStaysGood = kMicrosPerSecond;
constexpr std::string_view kPreferencesKey = "Ports";
constexpr std::string_view kLinkFolder = "/dev/serial/by-id";

std::string nameOfPort(int port) {
    return "COM" + std::to_string(port);
}

std::string realPath(const std::string& path) {
    std::error_code error;
    const auto real = std::filesystem::weakly_canonical(path, error);
    return error ? path : real.string();
}

// "ttyUSB10" comes after "ttyUSB9".
auto orderOf(const FoundPort& port) {
    const std::string& name = port.byId.empty() ? port.path : port.byId;
    const auto digits = name.find_last_not_of("0123456789") + 1;
    auto number = name.substr(digits);
    return std::tuple(!port.isUsb, port.byId.empty(), name.substr(0, digits), number.size(), std::move(number));
}

bool isUsb(const std::string& name) {
    return realPath("/sys/class/tty/" + name + "/device").find("/usb") != std::string::npos;
}

}  // namespace

FixedPorts fixedPorts(const PreferencesStore& preferences, FixedPorts options) {
    for (int port = 1; port <= kPortCount; ++port) {
        const auto path = preferences.read(kPreferencesKey, nameOfPort(port));
        if (path && !path->empty()) {
            options.emplace(port, *path);
        }
    }
    return options;
}

std::map<std::string, std::string> linksByDevice(const std::filesystem::path& folder) {
    std::map<std::string, std::string> links;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string link = entry->path().string();
        auto& kept = links[realPath(link)];
        if (kept.empty() || link < kept) {
            kept = link;
        }
    }
    return links;
}

std::vector<FoundPort> findSerialPorts() {
    const auto links = linksByDevice(kLinkFolder);
    std::vector<FoundPort> found;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        FoundPort port;
        port.path = info.systemLocation().toStdString();
        port.description = info.description().toStdString();
        port.isUsb = isUsb(info.portName().toStdString());
        const auto link = links.find(realPath(port.path));
        port.byId = link == links.end() ? std::string() : link->second;
        found.push_back(std::move(port));
    }
    return found;
}

PortMap::PortMap(const EventPump& pump, FixedPorts fixed, Finder find)
    : pump_(pump), fixed_(std::move(fixed)), find_(std::move(find)) {}

const std::vector<FoundPort>& PortMap::found() {
    if (!foundAt_ || pump_.now() - *foundAt_ > kFoundStaysGood) {
        found_ = find_();
        std::sort(found_.begin(), found_.end(),
                  [](const FoundPort& one, const FoundPort& other) { return orderOf(one) < orderOf(other); });
        foundAt_ = pump_.now();
    }
    return found_;
}

std::map<int, FoundPort> PortMap::ports() {
    auto unplaced = found();
    std::map<int, FoundPort> ports;
    for (const auto& [number, path] : fixed_) {
        const auto isIt = [real = realPath(path)](const FoundPort& port) { return realPath(port.path) == real; };
        const auto device = std::find_if(unplaced.begin(), unplaced.end(), isIt);
        ports[number] = device == unplaced.end() ? FoundPort{} : *device;
        ports[number].path = path;
        std::erase_if(unplaced, isIt);
    }
    int next = 1;
    for (const FoundPort& port : unplaced) {
        while (ports.contains(next)) {
            ++next;
        }
        if (next <= kPortCount) {
            ports[next] = port;
        }
    }
    return ports;
}

std::string PortMap::pathOf(int port) {
    const auto all = ports();
    const auto entry = all.find(port);
    return entry == all.end() ? std::string() : entry->second.path;
}

std::string PortMap::describe(int port) {
    const auto all = ports();
    const auto entry = all.find(port);
    if (entry == all.end()) {
        return {};
    }
    const FoundPort& device = entry->second;
    return device.description.empty() ? device.path : device.path + ", " + device.description;
}

}  // namespace korvane::platform
