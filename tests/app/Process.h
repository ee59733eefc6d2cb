// Running the built programs as users do.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace korvane::app {

struct Outcome {
    int status = -1;  // exit status; -1 if it did not end by itself
    std::string output;
    std::string errors;
};

// Runs the program of this name from the build, or the one at this full path, with `arguments` and `input` on standard
// input until it ends. `prepare` runs in the new process before the program.
[[nodiscard]] Outcome runProgram(const std::string& name, const std::vector<std::string>& arguments,
                                 const std::string& input = {}, const std::function<void()>& prepare = {});

[[nodiscard]] std::vector<std::string> linesOf(const std::string& text);

// The end for writing of a pipe that nobody reads. The caller closes it.
[[nodiscard]] int brokenPipe();

// A program that runs beside the test and answers each line with a line. It is killed with the object.
class Conversation {
public:
    Conversation(const std::string& name, const std::vector<std::string>& arguments);
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;
    ~Conversation();

    // Empty if the program has ended.
    [[nodiscard]] std::string ask(const std::string& line) const;

private:
    int process_ = -1;
    int to_ = -1;
    int from_ = -1;
};

// A program that runs beside the test and is ended with it.
class BackgroundProgram {
public:
    BackgroundProgram(const std::string& name, const std::vector<std::string>& arguments);
    BackgroundProgram(const BackgroundProgram&) = delete;
    BackgroundProgram& operator=(const BackgroundProgram&) = delete;
    ~BackgroundProgram();

    void end();

private:
    int process_ = -1;
};

}  // namespace korvane::app
