// What came of reading back what was sent, in words.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "controls/Property.h"
#include "link/ReadBack.h"

namespace korvane::fields {

// "verified", or which of the values differ, each with what it is and what was sent.
class Differences {
public:
    void add(const std::string& name, const std::string& is, const std::string& sent);

    [[nodiscard]] bool any() const { return count_ > 0; }
    [[nodiscard]] std::string words() const;

    static constexpr int kNamed = 8;  // of more, the rest is counted
    static constexpr auto kNone = "verified";

private:
    int count_ = 0;
    std::string named_;
};

// "not verified: no answer"
[[nodiscard]] std::string notVerified(link::ReadEnd end);

// Of the sends that were verified last; those that run at the same time are told together. One that begins while the
// same is being verified takes its place.
class VerifyReport : public controls::Object, private controls::Observer {
public:
    VerifyReport() = default;
    VerifyReport(const VerifyReport&) = delete;
    VerifyReport& operator=(const VerifyReport&) = delete;
    ~VerifyReport() override;

    // "Fuel: verified", "Fuel: cell 18 is 90, sent 93; Misc: not verified: no answer"; empty before the first.
    controls::Property<std::string> Text{*this};
    // Something is not, or is not known to be, as it was sent.
    controls::Property<bool> Failed{*this};

    // A send of `subject` is being read back; `again` sends it once more. The number names it in end().
    int begin(const std::string& subject, std::function<void()> again);
    void end(int number, const std::string& verdict, bool failed);
    // What was verified holds for as long as `holds` says so, which is asked whenever `of` has changed: then the
    // verdict becomes "verified before the last changes". `of` lives as long as what `holds` asks.
    void holdsWhile(int number, controls::Object& of, std::function<bool()> holds);
    // The port that was closed is open again.
    void lineOpened();

    // Sends once more what has failed.
    void sendAgain();

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override { return {}; }

private:
    struct Entry {
        int number;
        std::string subject;
        std::string verdict;
        bool runs;
        bool failed;
        std::function<void()> again;
        std::function<bool()> holds = {};
    };
    void show();
    void propertyChanged(controls::Object& object, const void* property) override;
    void objectGone(const controls::Object& object) override;

    std::vector<Entry> entries_;
    std::vector<controls::Object*> observed_;
    int last_ = 0;
};

}  // namespace korvane::fields
