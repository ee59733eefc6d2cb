// What the ECU was heard to answer to reads of parameters, and that a save has no answer.
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "controls/Property.h"

namespace korvane::fields {

// Of the last read or save; those that run at the same time are told together.
class Answers : public controls::Object {
public:
    controls::Property<std::string> Text{*this};    // "Parameters: 3 of 21 answered"; empty before the first
    controls::Property<bool> Failed{*this, false};  // something that was asked for has not come

    // While one exists a read or a save runs. Null: nobody to tell.
    class Running {
    public:
        explicit Running(Answers* answers) : answers_(answers) {
            if (answers_ != nullptr) {
                answers_->begin();
            }
        }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;
        ~Running() {
            if (answers_ != nullptr) {
                answers_->end();
            }
        }

    private:
        Answers* answers_;
    };

    // A parameter was asked for, or sent; with the port closed nothing left the machine.
    void asked(int address, bool isOpen);
    void sent(bool isOpen);
    // The ECU has told a parameter, also one that nobody has asked for. An answer that is late still counts.
    void heard(int address);

    // "3 of 21 cells answered", also while none has; empty where nothing was asked.
    [[nodiscard]] std::string tally() const;
    // Called when it may be another one.
    std::function<void()> tallied;

    // The port that was closed is open again.
    void lineOpened();

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override { return {}; }

private:
    void begin();
    void end();
    void show();
    [[nodiscard]] std::string words() const;

    std::set<int> asked_;
    std::set<int> heard_;
    int running_ = 0;
    bool sent_ = false;
    bool closed_ = false;
    bool opened_ = false;  // again since then
};

}  // namespace korvane::fields
