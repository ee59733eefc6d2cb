// The log viewer in a whole program on the virtual machine, with verbs.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/LogText.h"
#include "support/VirtualProgram.h"
#include "trend/FrmTrend_txt.h"

namespace korvane::trend {

class LogViewerBench : public testing::Test {
protected:
    LogViewerBench() { main.btnDatalogTrend.press(); }

    [[nodiscard]] FrmTrend_txt& viewer() { return *run.program.logViewer().window(); }
    void load(const std::string& text, const char* name = "log.txt") {
        run.dialogs.answerFile(run.folder.write(name, text).string());
        viewer().btnLoad.press();
    }
    // The page on show, as it stands beside the plot.
    [[nodiscard]] std::string page() {
        std::string text;
        for (const auto& words : texts()) {
            if (words.starts_with("from ") || words.starts_with("to ")) {
                text += (text.empty() ? "" : " ") + words;
            }
        }
        return text;
    }
    [[nodiscard]] std::vector<std::string> texts() {
        std::vector<std::string> all;
        const auto& drawing = viewer().Picture1.drawing();
        for (const auto& shape : drawing.shapes()) {
            if (shape.kind == controls::Drawing::Kind::Text) {
                all.push_back(drawing.textOf(shape).words);
            }
        }
        return all;
    }
    // The names of the lines that are drawn.
    [[nodiscard]] std::vector<std::string> legend() {
        auto all = texts();
        std::erase_if(all, [](const std::string& words) {
            return words.find_first_not_of("0123456789.-") == std::string::npos || words.starts_with("from ") ||
                   words.starts_with("to ");
        });
        return all;
    }
    [[nodiscard]] std::vector<std::string> messages() {
        std::vector<std::string> all;
        for (const auto& box : run.dialogs.takeMessages()) {
            all.push_back(box.text);
        }
        return all;
    }
    void wait(int milliseconds) { run.pump.wait(milliseconds); }
    [[nodiscard]] double channel(int number) const {
        return run.tables.liveValues[static_cast<std::size_t>(number)].value;
    }

    support::VirtualProgram run;
    live::FrmSarn2& main = run.window;
};

}  // namespace korvane::trend
