#include <fcntl.h>
#include <gtest/gtest.h>
#include <memory>

#include "ecu/server/OpenWatch.h"
#include "support/TempFolder.h"

namespace korvane::ecu {
namespace {

class OpenWatching : public testing::Test {
protected:
    [[nodiscard]] std::unique_ptr<Descriptor> open(int mode = O_RDWR) const {
        return std::make_unique<Descriptor>(::open(path_.c_str(), mode | O_CLOEXEC));
    }

    support::TempFolder folder_;
    const std::filesystem::path path_ = folder_.write("device", "");
    OpenWatch watch_{path_};
};

TEST_F(OpenWatching, SeesTheLastOneLeave) {
    for (const int mode : {O_RDWR, O_RDONLY, O_WRONLY}) {
        auto one = open(mode);
        EXPECT_FALSE(watch_.lastOneLeft());
        one.reset();
        EXPECT_TRUE(watch_.lastOneLeft());
        EXPECT_FALSE(watch_.lastOneLeft()) << "says so once";
    }
}

TEST_F(OpenWatching, CountsTwoThatCameAtTheSameTime) {
    auto one = open();
    auto two = open();
    one.reset();
    EXPECT_FALSE(watch_.lastOneLeft());
    two.reset();
    EXPECT_TRUE(watch_.lastOneLeft());
}

TEST_F(OpenWatching, CountsTwoThatLeftAtTheSameTime) {
    auto one = open();
    EXPECT_FALSE(watch_.lastOneLeft());
    auto two = open();
    EXPECT_FALSE(watch_.lastOneLeft());
    one.reset();
    two.reset();
    EXPECT_TRUE(watch_.lastOneLeft());
}

TEST_F(OpenWatching, TheNextOneMayHaveComeAlready) {
    open().reset();
    const auto next = open();
    EXPECT_FALSE(watch_.lastOneLeft());
}

TEST_F(OpenWatching, OneThatWasThereBeforeDoesNotSpoilTheCount) {
    auto early = open();
    OpenWatch late(path_);
    early.reset();
    EXPECT_TRUE(late.lastOneLeft());
    auto next = open();
    EXPECT_FALSE(late.lastOneLeft());
    next.reset();
    EXPECT_TRUE(late.lastOneLeft());
}

TEST_F(OpenWatching, OtherFilesOfTheFolderDoNotCount) {
    const auto one = open();
    static_cast<void>(folder_.write("other", "text"));
    EXPECT_FALSE(watch_.lastOneLeft());
}

TEST_F(OpenWatching, IsSilentWhereNothingCanBeWatched) {
    OpenWatch none(folder_ / "none/device");
    EXPECT_FALSE(none.lastOneLeft());
}

}  // namespace
}  // namespace korvane::ecu
