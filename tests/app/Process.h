// Running the built programs as users do.
#pragma once

#include <string>
#include <vector>

namespace korvane::app {

struct Outcome {
    int status = -1;  // exit status; -1 if it did not end by itself
    std::string output;
    std::string errors;
};

// Runs the program of this name from the build with `arguments` and `input` on standard input until it ends.
[[nodiscard]] Outcome runProgram(const std::string& name, const std::vector<std::string>& arguments,
                                 const std::string& input = {});

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
