// What the system shows of a serial device before anything is opened or sent.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace korvane::platform {

// The number of a port that is no COM1 to COM15: its device is named by the path alone.
inline constexpr int kPortOfPath = 0;

struct RunningProgram {
    std::string name;
    int process = 0;
    friend bool operator==(const RunningProgram&, const RunningProgram&) = default;
};

// An adapter at a USB socket, as it and the system name it.
struct UsbAdapter {
    std::string name;            // "FT232R USB UART", may be empty
    std::string numbers;         // of vendor and product, "0403:6001"
    std::string driver;          // "ftdi_sio", may be empty
    std::optional<int> latency;  // ms for which it may hold bytes back; nothing if it does not tell
    std::string latencyFile;     // where the latency is set
};

struct PortFacts {
    enum class Kind {
        InMemory,   // no device: the line is a part of the program
        NoDevice,   // no device stands for the port
        Missing,    // the named device is not there
        NotSerial,  // it is a file, a folder or another kind of device
        Serial,
    };
    enum class Access {
        Allowed,
        AtNextLogin,  // the user has joined the group, and has not logged in since
        ByGroup,      // not allowed; the members of the device's group are
        Nobody,       // not allowed, and neither is its group
    };

    // By which right it may be opened.
    enum class Right {
        Root,
        Owner,
        Group,
        Everyone,
        List,  // the device's access list names the user, as that of a device with the tag "uaccess" does
    };

    Kind kind = Kind::InMemory;
    std::string device{};               // its path
    std::vector<std::string> others{};  // serial devices that are there, as the user would choose them
    // Of a device that is there:
    std::string owner{};
    std::string group{};
    Access access = Access::Allowed;
    Right right = Right::Owner;                    // of access that is allowed
    bool isForSeat = false;                        // it has the tag "uaccess": whoever sits at the screen may open it
    std::vector<RunningProgram> users{};           // that have it open, as far as this user can see; not this program
    std::optional<RunningProgram> modemManager{};  // it runs, and nothing keeps it from the device
    std::optional<UsbAdapter> adapter{};
};

}  // namespace korvane::platform
