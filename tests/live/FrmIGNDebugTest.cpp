#include <gmock/gmock.h>

#include "controls/WindowShelf.h"
#include "live/FrmIGNDebug.h"
#include "live/LiveBench.h"
#include "support/ErrorOf.h"

namespace korvane::live {
namespace {

using support::errorOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A message box during which something happens.
class EventfulDialogs : public platform::Dialogs {
public:
    void show(const platform::MessageBox&) override { during(); }
    [[nodiscard]] std::string choose(const platform::FileDialog&) override { return {}; }

    std::function<void()> during;
};

// Tells when it is destroyed.
class MortalWindow : public FrmIGNDebug {
public:
    MortalWindow(platform::Machine& machine, FrmSarn2& main, TrendSink& trends, logs::LogWriter& log, bool& gone)
        : FrmIGNDebug(machine, main, trends, log), gone_(gone) {}
    MortalWindow(const MortalWindow&) = delete;
    MortalWindow& operator=(const MortalWindow&) = delete;
    ~MortalWindow() override { gone_ = true; }

private:
    bool& gone_;
};

class FrmIGNDebugTest : public LiveBench {
protected:
    void openPort() { window_.MSComm1.setPortOpen(true); }
    // What arrives at the ECU meanwhile.
    Bytes sentWithin(int milliseconds) {
        pump_.wait(milliseconds);
        return virtual_.recorder.takeBytes();
    }
    Bytes cleanPlugs(const char* count) {
        debug_.txtSparks.Text = count;
        debug_.btnCleanSparkPlugs.press();
        return sentWithin(20);
    }
    // Low byte first, in the order of the payload.
    static Bytes payload(int ignition, int rpmTicks, int spark, int advanceTicks) {
        Bytes bytes;
        for (const int word : {ignition, rpmTicks, spark, advanceTicks}) {
            bytes.push_back(static_cast<std::uint8_t>(word % 256));
            bytes.push_back(static_cast<std::uint8_t>(word / 256));
        }
        return bytes;
    }
    // Both debug words are the same.
    void showWords(int word) { debug_.showDebugFrame(payload(word, 0, word, 0)); }
    [[nodiscard]] std::vector<std::string> words() const {
        return {debug_.lblIgnDeb.Caption, debug_.lblSparkDeb.Caption, debug_.lblRPMticks.Caption,
                debug_.lblEnnakkoTicks.Caption};
    }
    [[nodiscard]] std::vector<std::string> errors() const {
        return {debug_.lblIgnErr.Caption, debug_.lblSparkErr.Caption};
    }
    [[nodiscard]] std::string cell(int column, int row) const { return std::string(tables_.logData.cell(column, row)); }

    logs::LogWriter writer_{virtual_.machine, tables_, window_.chkDatalog, window_.txtDatalogFile, window_.logCounts};
    FrmIGNDebug debug_{virtual_.machine, window_, trends_, writer_};
};

TEST_F(FrmIGNDebugTest, ItsControlsAreAsDesigned) {
    EXPECT_EQ(debug_.Caption.get(), "Ignition Debug");
    EXPECT_EQ(debug_.Command1.Caption.get(), "Start");
    EXPECT_EQ(debug_.Command2.Caption.get(), "stop");
    EXPECT_EQ(debug_.FrameSparks.Caption.get(), "Fire sparks, (count*100 sparks)");
    EXPECT_EQ(debug_.btnCleanSparkPlugs.Caption.get(), "cleanPlugs");
    EXPECT_EQ(debug_.btnCleanSparkPlugs.container(), &debug_.FrameSparks);
    EXPECT_EQ(debug_.txtSparks.container(), &debug_.FrameSparks);
    EXPECT_EQ(debug_.TimerIGN.Interval, 10);
    EXPECT_FALSE(debug_.TimerIGN.Enabled);
    EXPECT_THAT(errors(), ElementsAre("0", "0"));
}

TEST_F(FrmIGNDebugTest, WordsAreFreshForASecondBehindTheirFrame) {
    openPort();
    EXPECT_FALSE(debug_.wordsAge.Fresh);
    showWords(21845);
    pump_.wait(900);
    showWords(21845);
    pump_.wait(999);
    EXPECT_TRUE(debug_.wordsAge.Fresh);
    pump_.wait(1);
    EXPECT_FALSE(debug_.wordsAge.Fresh);
}

TEST_F(FrmIGNDebugTest, WordsAreOldOnceThePortIsClosed) {
    openPort();
    showWords(21845);
    window_.MSComm1.setPortOpen(false);
    EXPECT_FALSE(debug_.wordsAge.Fresh);
}

TEST_F(FrmIGNDebugTest, WordsOfAFrameThatEndsTooSoonAreNotFresh) {
    openPort();
    EXPECT_THROW(debug_.showDebugFrame(Bytes{1, 2}), platform::RuntimeError);
    EXPECT_FALSE(debug_.wordsAge.Fresh);
}

TEST_F(FrmIGNDebugTest, StartAndStopExchangeThePolls) {
    window_.TimerRequestData.Enabled = true;
    debug_.show();
    EXPECT_TRUE(window_.TimerRequestData.Enabled) << "opening it changes no poll";
    debug_.Command1.press();
    EXPECT_TRUE(debug_.TimerIGN.Enabled);
    EXPECT_FALSE(window_.TimerRequestData.Enabled);
    debug_.Command2.press();
    EXPECT_FALSE(debug_.TimerIGN.Enabled);
    EXPECT_TRUE(window_.TimerRequestData.Enabled);
}

TEST_F(FrmIGNDebugTest, StopStartsTheLivePollAlsoIfItWasOff) {
    debug_.show();
    debug_.Command2.press();
    EXPECT_TRUE(window_.TimerRequestData.Enabled);
}

TEST_F(FrmIGNDebugTest, AsksEveryTenMilliseconds) {
    openPort();
    debug_.show();
    debug_.Command1.press();
    EXPECT_THAT(sentWithin(9), IsEmpty());
    // Three bytes at 9600 baud take 3.1 ms.
    EXPECT_THAT(sentWithin(5), ElementsAre('S', 0, 0xAC));
    EXPECT_EQ(sentWithin(100).size(), 30U);
    debug_.Command2.press();
    EXPECT_THAT(sentWithin(100), IsEmpty());
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(FrmIGNDebugTest, EachTickFailsOnAClosedPort) {
    debug_.show();
    debug_.Command1.press();
    pump_.wait(45);
    ASSERT_EQ(log_.lines.size(), 4U);
    EXPECT_THAT(log_.lines.front(), HasSubstr("Operation valid only when the port is open"));
    EXPECT_TRUE(debug_.TimerIGN.Enabled);
    openPort();
    // At 50, 60, ... 140; three bytes at 9600 baud take 3.1 ms.
    EXPECT_EQ(sentWithin(99).size(), 30U) << "the next one finds it open";
}

TEST_F(FrmIGNDebugTest, CleansPlugsWithTheCountRoundedToAByte) {
    openPort();
    debug_.show();
    EXPECT_THAT(cleanPlugs("25"), ElementsAre('!', 1, 25, 0xDE));
    EXPECT_THAT(cleanPlugs("255"), ElementsAre('!', 1, 255, 0xDE));
    EXPECT_THAT(cleanPlugs(""), ElementsAre('!', 1, 0, 0xDE));
    EXPECT_THAT(cleanPlugs("many"), ElementsAre('!', 1, 0, 0xDE));
    EXPECT_THAT(cleanPlugs("2.5"), ElementsAre('!', 1, 2, 0xDE)) << "of two equally near the even one";
    EXPECT_THAT(cleanPlugs("3.5 sets"), ElementsAre('!', 1, 4, 0xDE));
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(FrmIGNDebugTest, ACountThatIsNoByteFiresNothing) {
    openPort();
    debug_.show();
    for (const char* count : {"256", "-1", "1e300"}) {
        EXPECT_THAT(cleanPlugs(count), IsEmpty()) << count;
    }
    ASSERT_EQ(log_.lines.size(), 3U);
    EXPECT_THAT(log_.lines.front(), HasSubstr("Overflow"));
}

TEST_F(FrmIGNDebugTest, CleaningPlugsOnAClosedPortFails) {
    debug_.show();
    EXPECT_THAT(cleanPlugs("1"), IsEmpty());
    ASSERT_EQ(log_.lines.size(), 1U);
    EXPECT_THAT(log_.lines.front(), HasSubstr("Operation valid only when the port is open"));
}

TEST_F(FrmIGNDebugTest, ShowsTheWordsLowByteFirst) {
    debug_.showDebugFrame(Bytes{0x55, 0x55, 0xD0, 0x02, 0xAA, 0xAA, 0xFF, 0xFF});
    EXPECT_THAT(words(), ElementsAre("21845", "43690", "720", "65535"));
}

TEST_F(FrmIGNDebugTest, PushesATenthOfEachWordAndDrawsOnce) {
    debug_.showDebugFrame(payload(21845, 725, 43690, 61));
    EXPECT_THAT(trends_.samples,
                ElementsAre(Sample{0, 0, 2184.5}, Sample{0, 1, 4369}, Sample{2, 0, 72.5}, Sample{2, 1, 6.1}));
    EXPECT_EQ(trends_.draws, 1);
    debug_.showDebugFrame(payload(0, 0, 0, 0));
    EXPECT_EQ(trends_.draws, 2) << "each frame redraws";
}

TEST_F(FrmIGNDebugTest, AWordThatIsNoGoodPatternCountsAnError) {
    showWords(0x5555);
    showWords(0xAAAA);
    EXPECT_THAT(errors(), ElementsAre("0", "0"));
    showWords(0x5554);
    EXPECT_THAT(errors(), ElementsAre("1", "1"));
    debug_.showDebugFrame(payload(0x5555, 0, 0xAAAB, 0));
    EXPECT_THAT(errors(), ElementsAre("1", "2"));
    debug_.showDebugFrame(payload(0, 0, 0xAAAA, 0));
    EXPECT_THAT(errors(), ElementsAre("2", "2"));
}

TEST_F(FrmIGNDebugTest, TheTicksCountNoErrors) {
    debug_.showDebugFrame(payload(0x5555, 1, 0x5555, 1));
    EXPECT_THAT(errors(), ElementsAre("0", "0"));
}

TEST_F(FrmIGNDebugTest, ErrorsCountOnFromWhatTheLabelSays) {
    debug_.lblIgnErr.Caption = "41";
    debug_.lblSparkErr.Caption = "none";
    showWords(1);
    EXPECT_THAT(errors(), ElementsAre("42", "1"));
}

TEST_F(FrmIGNDebugTest, NothingResetsTheErrors) {
    debug_.show();
    showWords(1);
    for (auto* button : {&debug_.Command2, &debug_.Command1, &debug_.Command2}) {
        button->press();
    }
    EXPECT_THAT(errors(), ElementsAre("1", "1"));
}

// In the order in which the words are shown: bytes 0 and 1, 4 and 5, 2 and 3, 6 and 7.
TEST_F(FrmIGNDebugTest, AShortFrameEndsBehindTheWordsThatItHas) {
    const Bytes whole = payload(1, 2, 3, 4);
    const std::size_t shown[] = {0, 0, 1, 1, 1, 1, 3, 3};
    for (std::size_t size = 0; size < 8; ++size) {
        trends_.samples.clear();
        EXPECT_EQ(errorOf([&] { debug_.showDebugFrame(std::span(whole).first(size)); }), 9) << size;
        EXPECT_EQ(trends_.samples.size(), shown[size]) << size;
    }
    EXPECT_THAT(words(), ElementsAre("1", "3", "2", "0"));
    EXPECT_EQ(trends_.draws, 0);
    EXPECT_THAT(errors(), ElementsAre("0", "0"));
}

TEST_F(FrmIGNDebugTest, AShortFrameWritesNoRow) {
    window_.chkDatalog.press();
    const Bytes cut(7, 0);
    EXPECT_EQ(errorOf([&] { debug_.showDebugFrame(cut); }), 9);
    EXPECT_EQ(tables_.logDataCount, 0);
}

TEST_F(FrmIGNDebugTest, MoreBytesThanEightAreIgnored) {
    Bytes longer = payload(0x5555, 1, 0x5555, 2);
    longer.insert(longer.end(), 200, 0xFF);
    debug_.showDebugFrame(longer);
    EXPECT_THAT(words(), ElementsAre("21845", "21845", "1", "2"));
}

TEST_F(FrmIGNDebugTest, WritesARowOnlyWhileTheMainWindowLogs) {
    showWords(0x5555);
    EXPECT_EQ(tables_.logDataCount, 0);
    window_.chkDatalog.press();
    showWords(0x5555);
    showWords(0x5555);
    EXPECT_EQ(tables_.logDataCount, 2);
    window_.chkDatalog.press();
    showWords(0x5555);
    EXPECT_EQ(tables_.logDataCount, 2);
}

TEST_F(FrmIGNDebugTest, ARowHasWordsErrorsAndWhatTheMainWindowShows) {
    for (int i = 0; i < 12; ++i) {
        window_.lblValue(i).Caption = "v" + std::to_string(i);
    }
    tables_.IdlePidWord = -7;
    tables_.BoostPidWord = 100000;
    tables_.AccelWord = 9;
    showWords(1);
    window_.chkDatalog.press();
    debug_.showDebugFrame(payload(21845, 720, 4, 60));
    std::vector<std::string> cells;
    for (int column = 0; column < 16; ++column) {
        cells.push_back(cell(column, 0).substr(0, cell(column, 0).find(' ')));
    }
    EXPECT_THAT(cells, ElementsAre("12:00:00", "720", "60", "21845", "4", "1", "2", "v6", "v7", "v8", "v9", "-7",
                                   "100000", "9", "v10", "v11"));
    EXPECT_EQ(cell(16, 0), std::string(10, '\0'));
}

TEST_F(FrmIGNDebugTest, TheHundredAndFirstRowSavesTheLog) {
    window_.txtDatalogFile.Text = "sparks";
    window_.chkDatalog.press();
    for (int i = 0; i < 100; ++i) {
        showWords(0x5555);
    }
    EXPECT_FALSE(virtual_.folder.has("sparks.txt"));
    showWords(0x5555);
    EXPECT_EQ(virtual_.folder.read("sparks.txt").size(), 101U * 272U);
    EXPECT_EQ(tables_.logDataCount, 0);
}

// The tuner closes it while the message of a batch that failed stands.
TEST_F(FrmIGNDebugTest, ItOutlivesTheFrameThatItIsClosedIn) {
    EventfulDialogs dialogs;
    auto machine = virtual_.with(pump_, virtual_.line, dialogs);
    logs::LogWriter writer(machine, tables_, window_.chkDatalog, window_.txtDatalogFile, window_.logCounts);
    window_.txtDatalogFile.Text = "no folder/drive";
    window_.chkDatalog.press();
    tables_.logDataCount = 100;
    bool gone = false;
    bool goneInside = false;
    controls::WindowShelf shelf(pump_);
    auto& debug = shelf.show(std::make_unique<MortalWindow>(machine, window_, trends_, writer, gone));
    dialogs.during = [&] {
        static_cast<void>(debug.unload());
        pump_.wait(1000);
        goneInside = gone;
    };
    const Bytes words = payload(1, 1, 1, 1);
    debug.showDebugFrame(words);
    EXPECT_FALSE(goneInside);
    EXPECT_EQ(tables_.logDataCount, 0);
    pump_.wait(1000);
    EXPECT_TRUE(gone);
}

TEST_F(FrmIGNDebugTest, ClosingItEndsItsPollAndLeavesTheOtherOff) {
    openPort();
    window_.TimerRequestData.Enabled = true;
    debug_.show();
    debug_.Command1.press();
    bool told = false;
    debug_.Unloaded = [&] { told = true; };
    EXPECT_TRUE(debug_.unload());
    EXPECT_TRUE(told);
    EXPECT_FALSE(debug_.TimerIGN.Enabled);
    static_cast<void>(sentWithin(5));
    EXPECT_THAT(sentWithin(100), IsEmpty());
    EXPECT_FALSE(window_.TimerRequestData.Enabled);
}

}  // namespace
}  // namespace korvane::live
