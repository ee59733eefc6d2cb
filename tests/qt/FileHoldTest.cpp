#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/qt/FileHold.h"
#include "support/TempFolder.h"

namespace korvane::platform {
namespace {

TEST(FileHoldTest, OneHolderAtATime) {
    const support::TempFolder folder;
    auto held = holdFile(folder / "a");
    ASSERT_TRUE(held);
    EXPECT_FALSE(holdFile(folder / "a"));
    EXPECT_TRUE(holdFile(folder / "b"));
    held.reset();
    EXPECT_TRUE(holdFile(folder / "a"));
}

TEST(FileHoldTest, AKilledProcessLetsItGo) {
    const support::TempFolder folder;
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        const auto held = holdFile(folder / "a");
        static_cast<void>(write(ready[1], held ? "1" : "0", 1));
        for (;;) {
            pause();
        }
    }
    char got = 0;
    EXPECT_EQ(read(ready[0], &got, 1), 1);
    EXPECT_EQ(got, '1');
    EXPECT_FALSE(holdFile(folder / "a"));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_TRUE(holdFile(folder / "a"));
    close(ready[0]);
    close(ready[1]);
}

TEST(FileHoldTest, WhatCantBeOpenedIsNotHeld) {
    const support::TempFolder folder;
    EXPECT_FALSE(holdFile(folder.nowhere()));
    EXPECT_FALSE(holdFile(folder.path()));
}

}  // namespace
}  // namespace korvane::platform
