// The settings window on an open port, and what its save buttons send.
#pragma once

#include "MiscBench.h"

namespace korvane::settings {

class SaveBench : public MiscBench {
protected:
    SaveBench() { showOnOpenPort(); }

    // Cell i holds first + i.
    static void number(controls::ControlArray<controls::TextBox>& boxes, int first) {
        for (int i = 0; i < boxes.count(); ++i) {
            boxes(i).Text = std::to_string(first + i);
        }
    }

    // Cell i of `count` cells written at i * ms.
    static Lines paced(int count, int addr, int value, int ms, int start = 0) {
        Lines lines;
        for (int i = 0; i < count; ++i) {
            lines.push_back(std::to_string(start + i * ms) + " " + std::to_string(addr + i) + "=" +
                            std::to_string(value + i));
        }
        return lines;
    }

    Lines save(controls::CommandButton& button) {
        button.press();
        return sent();
    }

    // The poll is stopped while the save runs, and runs when it has ended.
    void expectPollStopped(controls::CommandButton& button, int moment) {
        poll().Enabled = true;
        bool seen = false;
        at(moment, [&] {
            seen = true;
            EXPECT_FALSE(poll().Enabled);
        });
        button.press();
        EXPECT_TRUE(seen);
        EXPECT_TRUE(poll().Enabled);
    }
    // The poll's own state does not matter to the save.
    void expectPollLeft(controls::CommandButton& button) {
        for (const bool running : {true, false}) {
            poll().Enabled = running;
            button.press();
            EXPECT_EQ(poll().Enabled.get(), running) << button.name();
        }
    }

    std::string onlyMessage() {
        const auto messages = virtual_.dialogs.takeMessages();
        EXPECT_EQ(messages.size(), 1U);
        if (messages.empty()) {
            return {};
        }
        EXPECT_EQ(messages[0].title, "Korvane Tuner");
        return messages[0].text;
    }
};

}  // namespace korvane::settings
