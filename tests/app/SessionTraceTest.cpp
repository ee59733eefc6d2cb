// Whole sessions with each kind of ECU: none of what keeps a tune from being lost changes a byte on the line, or its
// time, while it is not used. The sessions are the scripts in tests/app/sessions, which tools/session-traces explains.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "app/Process.h"
#include "support/TempFolder.h"

namespace korvane::app {
namespace {

namespace fs = std::filesystem;

constexpr auto kRestore = "restore";

struct Section {
    std::string name;
    std::string commands;
};

// A line "# name" begins a section.
std::vector<Section> sectionsOf(const std::string& type) {
    const char* const source = std::getenv("KORVANE_SOURCE");
    std::ifstream file(fs::path(source != nullptr ? source : ".") / "tests/app/sessions" / (type + ".txt"));
    std::vector<Section> sections;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("# ")) {
            sections.push_back({line.substr(2), {}});
        } else {
            sections.back().commands += line + "\n";
        }
    }
    return sections;
}

// What each section has in addition, and what the folder holds at the start.
struct Variant {
    const char* name;
    void (*prepare)(const support::TempFolder& folder);
    const char* (*more)(const std::string& section, const std::string& type);
};

const char* nothing(const std::string&, const std::string&) {
    return "";
}

struct Session {
    std::vector<std::string> replies;  // one a command
    std::string trace;
};

class SessionTrace : public testing::TestWithParam<const char*> {
protected:
    [[nodiscard]] Session run(const std::string& type, const Variant& variant) const {
        folder_.write("Settings_par.ini", "");
        fs::remove_all(folder_ / kRestore);
        variant.prepare(folder_);
        std::string script;
        for (const auto& section : sectionsOf(type)) {
            script += section.commands + variant.more(section.name, type) + "now\n";
        }
        const auto trace = folder_ / "trace";
        const auto outcome = runProgram("korvane-tuner",
                                        {"--headless", "--virtual-time", "--folder", folder_.path().string(), "--ecu",
                                         "type=" + type + ",drive=lap,seed=7", "--trace", trace.string()},
                                        script);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        auto replies = linesOf(outcome.output);
        EXPECT_THAT(replies, testing::Each(testing::StartsWith("ok"))) << variant.name;
        return {std::move(replies), folder_.read("trace")};
    }

    support::TempFolder folder_;
};

void leave(const support::TempFolder&) {}

void barFolder(const support::TempFolder& folder) {
    folder.write(kRestore, "a file, so that no point can be written");
}

void lockFolder(const support::TempFolder& folder) {
    fs::create_directory(folder / kRestore);
    fs::permissions(folder / kRestore, fs::perms::owner_read | fs::perms::owner_exec);
}

// The newest of three hundred are damaged.
void fillFolder(const support::TempFolder& folder) {
    fs::create_directory(folder / kRestore);
    for (int i = 0; i < 300; ++i) {
        const auto number = std::to_string(1000 + i);
        folder.write("restore/2027-01-05_12_00_00_000_" + number + ".point", "KTRP" + number);
    }
}

// The windows read what is known; the list of the steps and the keys for them change maps on the desk alone, and bring
// each back.
const char* useWithoutSending(const std::string& section, const std::string&) {
    if (section == "connect") {
        return "call history.show\ncall keep.open\ncall keep.compare \"ecu\" \"maps\"\ncall keep.add \"by hand\"\n";
    }
    if (section == "edit") {
        return "call history.undo\ncall history.undo\ncall history.redo\ncall history.redo\n";
    }
    if (section == "save settings") {
        return "get keep.count\nget keep(1).differs\nget history.count\n";
    }
    return "";
}

constexpr Variant kPlain{"plain", leave, nothing};
constexpr Variant kVariants[] = {
    {"a file in place of the folder", barFolder, nothing},
    {"a folder that is read-only", lockFolder, nothing},
    {"a folder with many damaged points", fillFolder, nothing},
    {"open windows, an undo list that is walked", leave, useWithoutSending},
};

// The first line in which two traces differ.
std::string firstDifference(const std::string& one, const std::string& other) {
    const auto differ = std::ranges::mismatch(one, other);
    const auto at = static_cast<std::size_t>(differ.in1 - one.begin());
    const auto begin = one.rfind('\n', at) + 1;
    return "\"" + one.substr(begin, 40) + "\", not \"" + other.substr(begin, 40) + "\"";
}

TEST_P(SessionTrace, IsTheSameByteForByteWhateverIsKept) {
    const auto plain = run(GetParam(), kPlain);
    ASSERT_GT(plain.trace.size(), 100'000U);
    for (const auto& variant : kVariants) {
        const auto trace = run(GetParam(), variant).trace;
        EXPECT_TRUE(trace == plain.trace) << variant.name << ": " << firstDifference(trace, plain.trace);
    }
}

// FNV-1a of the bytes that went to the ECU, each with its time since the section began.
struct Digest {
    long bytes = 0;
    std::uint64_t sum = 0xCBF29CE484222325U;

    void add(long milliseconds, const std::string& rest) {
        ++bytes;
        for (const char c : std::to_string(milliseconds) + rest + "\n") {
            sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
        }
    }
};

// "type, section, bytes, digest", a line each, as the stored file has them. The last reply of a section is its end.
std::string digestsOf(const std::string& type, const Session& session) {
    std::istringstream trace(session.trace);
    std::ostringstream digests;
    std::string line;
    std::getline(trace, line);
    std::size_t reply = 0;
    long begin = 0;
    for (const auto& section : sectionsOf(type)) {
        reply += static_cast<std::size_t>(std::ranges::count(section.commands, '\n')) + 1;
        const long end = std::stol(session.replies.at(reply - 1).substr(3));
        Digest digest;
        for (; trace && std::stol(line) < end; std::getline(trace, line)) {
            if (const auto mark = line.find(" > "); mark != std::string::npos) {
                digest.add(std::stol(line) - begin, line.substr(mark));
            }
        }
        digests << type << ", " << section.name << ", " << digest.bytes << ", " << std::hex << digest.sum << std::dec
                << "\n";
        begin = end;
    }
    return digests.str();
}

std::string storedDigests(const std::string& type) {
    const char* const source = std::getenv("KORVANE_SOURCE");
    std::ifstream file(fs::path(source != nullptr ? source : ".") / "tests/app/sessions/digests.txt");
    std::string digests;
    for (std::string line; std::getline(file, line);) {
        digests += line.starts_with(type + ", ") ? line + "\n" : "";
    }
    return digests;
}

TEST_P(SessionTrace, SendsWhatItSentBefore) {
    EXPECT_EQ(digestsOf(GetParam(), run(GetParam(), kPlain)), storedDigests(GetParam()))
        << "tools/session-traces tells what that means";
}

INSTANTIATE_TEST_SUITE_P(Types, SessionTrace, testing::Values("11", "14", "30", "112"),
                         [](const auto& each) { return std::string("Type") + each.param; });

}  // namespace
}  // namespace korvane::app
