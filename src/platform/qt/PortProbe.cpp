#include "platform/qt/PortProbe.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <functional>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <system_error>
#include <unistd.h>

namespace korvane::platform {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kModemManager = "ModemManager";
constexpr std::string_view kKeptFromModemManager = "E:ID_MM_DEVICE_IGNORE=1";
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
    constexpr mode_t kReadAndWrite = S_IRGRP | S_IWGRP;
    const auto user = nameOfUser(::getuid());
    const auto* const members = ::getgrgid(state.st_gid);
    if (members == nullptr || (state.st_mode & kReadAndWrite) != kReadAndWrite) {
        return PortFacts::Access::Nobody;
    }
    return isMember(*members, user) ? PortFacts::Access::AtNextLogin : PortFacts::Access::ByGroup;
}

bool isKeptFromModemManager(const fs::path& notes, dev_t numbers) {
    std::ifstream in(notes / ("c" + std::to_string(major(numbers)) + ":" + std::to_string(minor(numbers))));
    for (std::string line; std::getline(in, line);) {
        if (line == kKeptFromModemManager) {
            return true;
        }
    }
    return false;
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
    facts.kind = S_ISCHR(state.st_mode) ? PortFacts::Kind::Serial : PortFacts::Kind::NotSerial;
    const auto* const owners = ::getgrgid(state.st_gid);
    facts.group = owners != nullptr ? owners->gr_name : std::to_string(state.st_gid);
    facts.owner = nameOfUser(state.st_uid);
    facts.access = accessTo(path, state);
    forEachProcess(folders.processes, [&](const RunningProgram& program, const fs::path& folder) {
        if (uses(folder, path)) {
            facts.users.push_back(program);
        }
        if (program.name == kModemManager && !isKeptFromModemManager(folders.notes, state.st_rdev)) {
            facts.modemManager = program;
        }
    });
    facts.adapter = adapterOf(targetOf(folders.devices / "class" / "tty" / path.filename() / "device"));
    return facts;
}

}  // namespace korvane::platform
