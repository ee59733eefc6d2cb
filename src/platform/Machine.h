// The machine that the program runs on, as one bundle of its parts.
#pragma once

#include <filesystem>

#include "platform/DiskFlush.h"
#include "platform/FileHold.h"

namespace korvane::controls {
class WindowList;
}

namespace korvane::platform {

class DebugLog;
class Dialogs;
class EventPump;
class PreferencesStore;
class SerialLine;

struct Screen {
    int Width = 1366 * 15;  // twips
    int Height = 768 * 15;
};

struct Machine {
    EventPump& pump;
    SerialLine& line;
    Dialogs& dialogs;
    PreferencesStore& preferences;
    DebugLog& log;
    controls::WindowList& windows;
    std::filesystem::path folder;  // the program's own: ini files, logs, images
    char decimal = '.';            // the regional decimal separator, of log files alone
    Screen screen;
    DiskFlush toDisk = {};  // nothing to wait for on a machine in memory
    FileHold hold = {};     // nobody else is there on a machine in memory
};

}  // namespace korvane::platform
