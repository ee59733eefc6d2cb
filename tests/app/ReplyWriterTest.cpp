#include <array>
#include <csignal>
#include <fcntl.h>
#include <future>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <utility>

#include "app/Process.h"
#include "app/ReplyWriter.h"

namespace korvane::app {
namespace {

class ReplyWriterTest : public testing::Test {
protected:
    ReplyWriterTest() : oldHandler_(std::signal(SIGPIPE, SIG_IGN)) { testing::internal::CaptureStderr(); }
    ~ReplyWriterTest() override {
        std::signal(SIGPIPE, oldHandler_);
        if (output_ >= 0) {
            close(output_);
        }
    }

    static std::string errors() { return testing::internal::GetCapturedStderr(); }

    int output_ = -1;

private:
    void (*oldHandler_)(int);
};

TEST_F(ReplyWriterTest, TellsAPipeThatNobodyReadsOnce) {
    output_ = brokenPipe();
    ReplyWriter writer(output_);
    EXPECT_FALSE(writer.failed());
    writer.write("ok\n");
    EXPECT_TRUE(writer.failed());
    writer.write("ok\n");
    EXPECT_EQ(errors(), "korvane-tuner: replies can't be written: Broken pipe\n");
}

TEST_F(ReplyWriterTest, TellsAFullDisk) {
    output_ = open("/dev/full", O_WRONLY | O_CLOEXEC);
    ReplyWriter writer(output_);
    writer.write("");
    EXPECT_FALSE(writer.failed());
    writer.write("ok\n");
    EXPECT_TRUE(writer.failed());
    EXPECT_EQ(errors(), "korvane-tuner: replies can't be written: No space left on device\n");
}

TEST_F(ReplyWriterTest, WaitsForTheReaderOfAPipeThatDoesNotBlock) {
    std::array<int, 2> ends{-1, -1};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    output_ = ends[1];
    fcntl(output_, F_SETFL, O_NONBLOCK);
    const std::string reply(1 << 20, 'x');  // more than a pipe holds
    auto read = std::async(std::launch::async, [&] {
        std::string all(reply.size(), ' ');
        std::size_t size = 0;
        for (ssize_t count = 1; count > 0 && size < all.size(); size += static_cast<std::size_t>(count)) {
            count = ::read(ends[0], all.data() + size, all.size() - size);
        }
        return all;
    });
    ReplyWriter writer(output_);
    writer.write(reply);
    close(std::exchange(output_, -1));
    EXPECT_TRUE(read.get() == reply);
    EXPECT_FALSE(writer.failed());
    EXPECT_EQ(errors(), "");
    close(ends[0]);
}

}  // namespace
}  // namespace korvane::app
