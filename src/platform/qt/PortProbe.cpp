#include "platform/qt/PortProbe.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <functional>
#include <grp.h>
#include <pwd.h>
#include <span>
#include <sstream>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <system_error>
#include <unistd.h>

namespace korvane::platform {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kModemManager = "ModemManager";
constexpr std::array<std::string_view, 2> kKeptFromModemManager{"E:ID_MM_DEVICE_IGNORE=1", "E:ID_MM_PORT_IGNORE=1"};
constexpr std::array<std::string_view, 2> kForSeat{"G:uaccess", "Q:uaccess"};
constexpr mode_t kGroupBits = S_IRGRP | S_IWGRP;
constexpr mode_t kOtherBits = S_IROTH | S_IWOTH;
constexpr std::string_view kTerminals = "/dev/pts";
constexpr std::string_view kMaster = "/dev/ptmx";
constexpr std::string_view kMasterInPts = "/dev/pts/ptmx";
constexpr int kMostFoldersUp = 8;  // from a serial device to the adapter that it is a part of

std::string firstLine(const fs::path& file) {
    std::ifstream in(file);
    std::string line;
    std::getline(in, line);
    return line;
}

std::optional<int> wholeNumber(const std::string& text) {
    int value = 0;
    const auto* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end ? std::optional(value) : std::nullopt;
}

fs::path targetOf(const fs::path& link) {
    std::error_code error;
    const auto target = fs::canonical(link, error);
    return error ? fs::path() : target;
}

void forEachEntry(const fs::path& folder, const std::function<void(const fs::path&)>& visit) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        visit(entry->path());
    }
}

void forEachProcess(const fs::path& processes,
                    const std::function<void(const RunningProgram&, const fs::path&)>& visit) {
    forEachEntry(processes, [&](const fs::path& folder) {
        if (const auto process = wholeNumber(folder.filename().string()); process && *process != ::getpid()) {
            visit({firstLine(folder / "comm"), *process}, folder);
        }
    });
}

// A program that has made the terminal, and with it the master's end, is no user of it.
bool uses(const fs::path& process, const fs::path& device) {
    bool has = false;
    bool made = false;
    forEachEntry(process / "fd", [&](const fs::path& descriptor) {
        std::error_code error;
        const auto target = fs::read_symlink(descriptor, error);
        has = has || target == device;
        made = made || target == kMaster || target == kMasterInPts;
    });
    return has && !(made && device.parent_path() == kTerminals);
}

// In the database, whatever the groups of this process are.
bool isMember(const group& members, const std::string& user) {
    const auto* name = members.gr_mem;
    while (name != nullptr && *name != nullptr) {
        if (user == *name++) {
            return true;
        }
    }
    return false;
}

std::string nameOfUser(uid_t number) {
    const auto* const user = ::getpwuid(number);
    return user != nullptr ? user->pw_name : std::to_string(number);
}

PortFacts::Access accessTo(const fs::path& device, const struct stat& state) {
    if (::access(device.c_str(), R_OK | W_OK) == 0) {
        return PortFacts::Access::Allowed;
    }
    const auto user = nameOfUser(::getuid());
    const auto* const members = ::getgrgid(state.st_gid);
    if (members == nullptr || (state.st_mode & kGroupBits) != kGroupBits) {
        return PortFacts::Access::Nobody;
    }
    return isMember(*members, user) ? PortFacts::Access::AtNextLogin : PortFacts::Access::ByGroup;
}

// Of this process, at this moment.
bool isInGroup(gid_t wanted) {
    std::vector<gid_t> groups(static_cast<std::size_t>(std::max(::getgroups(0, nullptr), 0)));
    groups.resize(static_cast<std::size_t>(std::max(::getgroups(static_cast<int>(groups.size()), groups.data()), 0)));
    return ::getgid() == wanted || std::find(groups.begin(), groups.end(), wanted) != groups.end();
}

// In the order in which the system decides, but for the access list, which shows in nothing else.
PortFacts::Right rightTo(const struct stat& state) {
    if (::getuid() == 0) {
        return PortFacts::Right::Root;
    }
    if (::getuid() == state.st_uid) {
        return PortFacts::Right::Owner;
    }
    if ((state.st_mode & kGroupBits) == kGroupBits && isInGroup(state.st_gid)) {
        return PortFacts::Right::Group;
    }
    return (state.st_mode & kOtherBits) == kOtherBits ? PortFacts::Right::Everyone : PortFacts::Right::List;
}

// Whether a line of the device manager's notes on this device is one of these.
bool isNoted(const fs::path& notes, dev_t numbers, std::span<const std::string_view> wanted) {
    std::ifstream in(notes / ("c" + std::to_string(major(numbers)) + ":" + std::to_string(minor(numbers))));
    for (std::string line; std::getline(in, line);) {
        if (std::find(wanted.begin(), wanted.end(), line) != wanted.end()) {
            return true;
        }
    }
    return false;
}

bool isSerialDriver(const std::string& type) {
    return type.starts_with("serial") || type == "pty:slave";
}

// "serial  /dev/ttyS  4  64-95  serial": name, devices, major number, minor numbers, type.
bool isSerial(const fs::path& processes, const struct stat& state) {
    std::ifstream in(processes / "tty/drivers");
    bool isListed = false;
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::string name, devices, minors, type;
        unsigned number = 0;
        isListed = true;
        if (words >> name >> devices >> number >> minors >> type && number == major(state.st_rdev) &&
            isSerialDriver(type)) {
            return true;
        }
    }
    return !isListed;
}

PortFacts::Kind kindOf(const fs::path& processes, const struct stat& state) {
    return S_ISCHR(state.st_mode) && isSerial(processes, state) ? PortFacts::Kind::Serial : PortFacts::Kind::NotSerial;
}

std::optional<UsbAdapter> adapterOf(const fs::path& part) {
    fs::path folder = part;
    for (int up = 0; up < kMostFoldersUp && folder.has_relative_path(); ++up, folder = folder.parent_path()) {
        if (const auto vendor = firstLine(folder / "idVendor"); !vendor.empty()) {
            UsbAdapter adapter;
            adapter.name = firstLine(folder / "product");
            adapter.numbers = vendor + ":" + firstLine(folder / "idProduct");
            adapter.driver = targetOf(part / "driver").filename().string();
            adapter.latencyFile = (part / "latency_timer").string();
            adapter.latency = wholeNumber(firstLine(adapter.latencyFile));
            return adapter;
        }
    }
    return std::nullopt;
}

}  // namespace

PortFacts probePort(const std::string& device, const SystemFolders& folders) {
    PortFacts facts;
    facts.device = device;
    struct stat state {};
    const auto path = targetOf(device);
    if (path.empty() || ::stat(path.c_str(), &state) != 0) {
        facts.kind = PortFacts::Kind::Missing;
        return facts;
    }
    facts.kind = kindOf(folders.processes, state);
    const auto* const owners = ::getgrgid(state.st_gid);
    facts.group = owners != nullptr ? owners->gr_name : std::to_string(state.st_gid);
    facts.owner = nameOfUser(state.st_uid);
    facts.access = accessTo(path, state);
    facts.right = rightTo(state);
    facts.isForSeat = isNoted(folders.notes, state.st_rdev, kForSeat);
    forEachProcess(folders.processes, [&](const RunningProgram& program, const fs::path& folder) {
        if (uses(folder, path)) {
            facts.users.push_back(program);
        }
        if (program.name == kModemManager && !isNoted(folders.notes, state.st_rdev, kKeptFromModemManager)) {
            facts.modemManager = program;
        }
    });
    facts.adapter = adapterOf(targetOf(folders.devices / "class" / "tty" / path.filename() / "device"));
    return facts;
}

}  // namespace korvane::platform
