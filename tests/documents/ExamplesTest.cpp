// The examples of the documents do what they show, run as they stand.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <unistd.h>

#include "app/Process.h"
#include "documents/Markdown.h"
#include "support/TempFolder.h"

namespace korvane::documents {
namespace {

using app::linesOf;
using app::Outcome;
using app::runProgram;
using support::TempFolder;
using testing::Contains;
using testing::Each;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

const std::string kPrompt = "$ korvane-tuner ";
constexpr std::array kConsoleDocuments{"README.md", "docs/console.md", "docs/virtual-ecu.md"};

// In place of a real port: dropped, and where there is no display, the built-in virtual ECU in virtual time instead.
constexpr std::string_view kStandIn = R"(#!/bin/sh
for word; do
    shift
    case $previous in --port) previous=; continue;; esac
    previous=$word
    case $word in --port) continue;; esac
    set -- "$@" "$word"
done
case " $* " in
*" --virtual-time "*) ;;
*" --headless "*) set -- "$@" --virtual-time --ecu "$KORVANE_ECU";;
esac
exec "$KORVANE_BIN/korvane-tuner" "$@"
)";

// A computer of which nothing is known: a home of its own, and the folder in which the reader stands.
class Reader {
public:
    explicit Reader(std::string ecu = "type=11,drive=idle") : ecu_(std::move(ecu)) {
        std::filesystem::create_directories(home_ / "bin");
        home_.write("bin/korvane-tuner", kStandIn);
        allowToRun("bin/korvane-tuner");
        std::filesystem::create_directory(home_ / "run");
        allowToRun("run");
        // The car of which the examples speak.
        const auto formats = document("docs/file-formats.md");
        home_.write("car.par", block(formats, "Car file (`*.par`)").text());
    }

    [[nodiscard]] Outcome tuner(std::vector<std::string> arguments, const std::string& commands) const {
        if (std::ranges::find(arguments, "--folder") == arguments.end()) {
            arguments.insert(arguments.end(), {"--folder", home_.path().string()});
        }
        return runProgram("korvane-tuner", arguments, commands, [this] { stand(); });
    }

    // By the interpreter that its first line names, or by the shell.
    [[nodiscard]] Outcome script(const std::string& text, const std::string& input = {}) const {
        home_.write("example", text.starts_with("#!") ? text : "#!/bin/sh\nset -e\n" + text);
        allowToRun("example");
        return runProgram("/bin/sh", {"-c", "./example"}, input, [this] { stand(); });
    }

    [[nodiscard]] const TempFolder& home() const { return home_; }

    static const Block& block(const Document& document, std::string_view section) {
        const auto block = std::ranges::find(document.blocks, section, &Block::section);
        if (block == document.blocks.end()) {
            throw std::runtime_error("there is no example under " + std::string(section));
        }
        return *block;
    }

private:
    // And nobody else.
    void allowToRun(const std::string& name) const {
        std::filesystem::permissions(home_ / name, std::filesystem::perms::owner_all);
    }

    void stand() const {
        const std::string folder = home_.path().string();
        const std::string path = folder + "/bin:" + std::getenv("PATH");
        setenv("PATH", path.c_str(), 1);
        setenv("KORVANE_ECU", ecu_.c_str(), 1);
        setenv("HOME", folder.c_str(), 1);
        setenv("XDG_RUNTIME_DIR", (folder + "/run").c_str(), 1);
        for (const char* const place : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
            unsetenv(place);
        }
        if (chdir(folder.c_str()) != 0) {
            _exit(126);
        }
    }

    TempFolder home_;
    std::string ecu_;
};

std::vector<std::string> commandWords() {
    const auto replies = linesOf(
        runProgram("korvane-tuner", {"--headless", "--virtual-time", "--ecu", "none", "--folder", "/tmp"}, "help\n")
            .output);
    return found(replies.at(0), "\"([a-z]+)");
}

bool isReply(const std::string& line) {
    return line == "ok" || line.starts_with("ok ") || line.starts_with("error ");
}

bool hasReplies(const Block& block) {
    return std::ranges::any_of(block.lines, isReply);
}

class Examples : public testing::Test {
protected:
    [[nodiscard]] bool isCommand(const std::string& line) const {
        return std::ranges::find(words_, line.substr(0, line.find(' '))) != words_.end();
    }
    [[nodiscard]] bool isOfCommands(const Block& block) const {
        return std::ranges::all_of(block.lines, [this](const auto& line) { return isCommand(line) || isReply(line); });
    }

private:
    std::vector<std::string> words_ = commandWords();
};

// A session as it is shown: how the program was started, what was typed, and what it answered.
struct Transcript {
    std::string where;
    std::vector<std::string> arguments;
    std::string commands;
    std::vector<std::string> replies;
};

std::vector<std::string> splitWords(const std::string& line) {
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

void addLine(Transcript& transcript, const std::string& line) {
    if (isReply(line)) {
        transcript.replies.push_back(line);
    } else {
        transcript.commands += line + '\n';
    }
}

// A block without a start goes on with the session before.
std::vector<Transcript> transcriptsIn(const Document& document) {
    std::vector<Transcript> all;
    for (const Block& block : document.blocks) {
        const bool starts = block.lines.front().starts_with(kPrompt);
        if (starts) {
            all.push_back(
                {document.name + ", " + block.section, splitWords(block.lines.front().substr(kPrompt.size())), {}, {}});
        }
        if (starts || (hasReplies(block) && !all.empty())) {
            std::for_each(block.lines.begin() + (starts ? 1 : 0), block.lines.end(),
                          [&](const std::string& line) { addLine(all.back(), line); });
        }
    }
    return all;
}

TEST_F(Examples, WithRepliesGetThem) {
    int transcripts = 0;
    for (const char* const name : kConsoleDocuments) {
        for (const auto& transcript : transcriptsIn(document(name))) {
            const auto outcome = Reader().tuner(transcript.arguments, transcript.commands);
            EXPECT_THAT(linesOf(outcome.output), ElementsAreArray(transcript.replies)) << transcript.where;
            EXPECT_EQ(outcome.errors, "") << transcript.where;
            EXPECT_EQ(outcome.status, 0) << transcript.where;
            ++transcripts;
        }
    }
    EXPECT_GE(transcripts, 3);
}

TEST_F(Examples, OfCommandsAloneGetNoError) {
    int examples = 0;
    for (const char* const name : kConsoleDocuments) {
        for (const Block& block : document(name).blocks) {
            if (isOfCommands(block) && !hasReplies(block)) {
                const auto outcome = Reader().tuner({"--headless", "--virtual-time", "--ecu", "type=11"}, block.text());
                EXPECT_THAT(linesOf(outcome.output), SizeIs(block.lines.size())) << name << ", " << block.section;
                EXPECT_THAT(linesOf(outcome.output), Each(StartsWith("ok"))) << block.text();
                EXPECT_EQ(outcome.errors, "") << block.text();
                ++examples;
            }
        }
    }
    EXPECT_GE(examples, 3);
}

// The pull in the example about timing is seen: the reply is no empty text.
TEST_F(Examples, TimeAPull) {
    for (const Block& block : document("docs/console.md").blocks) {
        if (block.has("btnTuningHelp")) {
            const auto outcome = Reader().tuner({"--headless", "--virtual-time", "--ecu", "type=11"}, block.text());
            EXPECT_THAT(linesOf(outcome.output).back(), HasSubstr(" Time: "));
        }
    }
}

bool isForAShell(const Block& block) {
    const bool runs = block.has("--headless") || block.has("--script");
    const bool shown = block.lines.front().starts_with("$ ") || block.lines.front().starts_with("#!");
    // korvane-ecu goes on for ever.
    return runs && !shown && block.has("korvane-tuner") && !block.has("korvane-ecu");
}

TEST_F(Examples, ForAShellRunWithoutAnError) {
    int examples = 0;
    for (const char* const name : kConsoleDocuments) {
        for (const Block& block : document(name).blocks) {
            if (isForAShell(block)) {
                const std::string text = block.text();
                const auto outcome = Reader().script(text);
                EXPECT_EQ(outcome.status, 0) << name << ":\n" << text << outcome.errors;
                // What the toolkit says of a display that nobody sees.
                EXPECT_THAT(linesOf(outcome.errors), Each(HasSubstr("This plugin does not support"))) << name << ":\n"
                                                                                                      << text;
                EXPECT_THAT(linesOf(outcome.output), Not(Contains(StartsWith("error")))) << text;
                ++examples;
            }
        }
    }
    EXPECT_GE(examples, 3);
}

Outcome runFrom(const Reader& reader, std::string_view section) {
    return reader.script(Reader::block(document("docs/console.md"), section).text());
}

std::vector<std::string> backupsIn(const Reader& reader) {
    std::string names;
    for (const auto& entry : std::filesystem::directory_iterator(reader.home() / "ecu-backups")) {
        names += entry.path().filename().string() + '\n';
    }
    return found(names, "(EEPROM_\\d\\d_\\d\\d_\\d\\d\\.txt)\n");
}

constexpr std::string_view kBackup = "A backup each night";
constexpr std::string_view kLogger = "A logger that notices a silent ECU";

TEST_F(Examples, BackUpEachNight) {
    const Reader reader;
    const auto outcome = runFrom(reader, kBackup);
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.errors, "");
    const auto backups = backupsIn(reader);
    ASSERT_THAT(backups, SizeIs(1));
    EXPECT_THAT(linesOf(reader.home().read("ecu-backups/" + backups.front())), SizeIs(3001));
}

TEST_F(Examples, SayThatTheEcuWasSilentAtNight) {
    const Reader reader("silent=1");
    const auto outcome = runFrom(reader, kBackup);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("EEPROM read error"));
    EXPECT_THAT(backupsIn(reader), IsEmpty());
}

TEST_F(Examples, LogWhileTheEcuSends) {
    const auto outcome = runFrom(Reader(), kLogger);
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.errors, "");
    EXPECT_THAT(linesOf(outcome.output), SizeIs(600));
}

TEST_F(Examples, EndWhenTheEcuIsSilent) {
    const auto outcome = runFrom(Reader("silent=1"), kLogger);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(linesOf(outcome.output), IsEmpty());
    EXPECT_THAT(outcome.errors, HasSubstr("the line is silent"));
}

// At 2450 rpm the column is that of 2000, at 50 % load the row the sixth: cell 5 * 16 + 2.
TEST_F(Examples, ReadTheLineWithALoggerOfTheirOwn) {
    const Reader reader;
    const auto link = (reader.home() / "ecu").string();
    const app::BackgroundProgram ecu("korvane-ecu", {"--pty", link, "--drive", "2450:50:20"});
    reader.home().write("logger.py", Reader::block(document("docs/protocol.md"), "A logger").text());
    const auto outcome = reader.script(
        "for turn in $(seq 200); do [ -e ecu ] && break; sleep 0.05; done\n"
        "timeout 30 python3 logger.py ecu 2>/dev/null | head -n 5\n");
    EXPECT_THAT(linesOf(outcome.output), SizeIs(5));
    EXPECT_THAT(linesOf(outcome.output), Each(StartsWith("2450 1/min, water ")));
    EXPECT_THAT(linesOf(outcome.output), Each(HasSubstr("throttle 20 %")));
    EXPECT_THAT(linesOf(outcome.output), Each(HasSubstr("cell 82")));
}

}  // namespace
}  // namespace korvane::documents
