#include <QApplication>

#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

// One application for all tests of the program, as Qt requires; no display is needed.
class QtEnvironment : public testing::Environment {
public:
    void SetUp() override {
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
        }
        application_ = std::make_unique<QApplication>(argc_, argv_.data());
        // Each dialog of a test is the last window.
        QApplication::setQuitOnLastWindowClosed(false);
    }
    void TearDown() override { application_.reset(); }

private:
    std::string name_ = "korvane-test";
    int argc_ = 1;
    std::array<char*, 2> argv_{name_.data(), nullptr};
    std::unique_ptr<QApplication> application_;
};

const auto* const kEnvironment = testing::AddGlobalTestEnvironment(std::make_unique<QtEnvironment>().release());

}  // namespace
