#include "app/Process.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

#include "support/TempFolder.h"

namespace korvane::app {

namespace {

std::string pathOf(const std::string& name) {
    if (name.starts_with('/')) {
        return name;
    }
    const char* const folder = std::getenv("KORVANE_BIN");
    return std::string(folder != nullptr ? folder : "bin") + "/" + name;
}

void redirect(const std::string& file, int flags, int descriptor) {
    const int opened = open(file.c_str(), flags, 0600);
    dup2(opened, descriptor);
    close(opened);
}

[[noreturn]] void become(const std::string& name, const std::vector<std::string>& arguments) {
    const auto path = pathOf(name);
    std::vector<std::string> texts{path};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> words;
    for (auto& text : texts) {
        words.push_back(text.data());
    }
    words.push_back(nullptr);
    execv(path.c_str(), words.data());
    _exit(127);
}

}  // namespace

Outcome runProgram(const std::string& name, const std::vector<std::string>& arguments, const std::string& input,
                   const std::function<void()>& prepare) {
    const support::TempFolder folder;
    folder.write("input", input);
    const pid_t child = fork();
    if (child == 0) {
        redirect((folder.path() / "input").string(), O_RDONLY, STDIN_FILENO);
        redirect((folder.path() / "output").string(), O_WRONLY | O_CREAT, STDOUT_FILENO);
        redirect((folder.path() / "errors").string(), O_WRONLY | O_CREAT, STDERR_FILENO);
        if (prepare) {
            prepare();
        }
        become(name, arguments);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, folder.read("output"), folder.read("errors")};
}

std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

int brokenPipe() {
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) == 0) {
        close(ends[0]);
    }
    return ends[1];
}

BackgroundProgram::BackgroundProgram(const std::string& name, const std::vector<std::string>& arguments)
    : process_(fork()) {
    if (process_ == 0) {
        redirect("/dev/null", O_RDWR, STDIN_FILENO);
        redirect("/dev/null", O_RDWR, STDOUT_FILENO);
        become(name, arguments);
    }
}

Conversation::Conversation(const std::string& name, const std::vector<std::string>& arguments) {
    std::array<int, 2> in{-1, -1};
    std::array<int, 2> out{-1, -1};
    if (pipe2(in.data(), O_CLOEXEC) != 0 || pipe2(out.data(), O_CLOEXEC) != 0) {
        return;
    }
    process_ = fork();
    if (process_ == 0) {
        dup2(in[0], STDIN_FILENO);
        dup2(out[1], STDOUT_FILENO);
        redirect("/dev/null", O_RDWR, STDERR_FILENO);
        become(name, arguments);
    }
    close(in[0]);
    close(out[1]);
    to_ = in[1];
    from_ = out[0];
}

Conversation::~Conversation() {
    close(to_);
    close(from_);
    if (process_ > 0) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
}

std::string Conversation::ask(const std::string& line) const {
    const std::string text = line + "\n";
    if (write(to_, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        return {};
    }
    std::string reply;
    for (char c = 0; read(from_, &c, 1) == 1 && c != '\n';) {
        reply += c;
    }
    return reply;
}

BackgroundProgram::~BackgroundProgram() {
    end();
}

void BackgroundProgram::end() {
    if (process_ > 0) {
        kill(process_, SIGTERM);
        waitpid(process_, nullptr, 0);
        process_ = -1;
    }
}

}  // namespace korvane::app
