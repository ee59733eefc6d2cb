// The plans of a limiter box: its whole read and send, written for a window of the tests.
#include "LimiterBench.h"

namespace korvane::fields {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

using LimiterTest = LimiterBench;

TEST_F(LimiterTest, ReadsWordAfterWordEvery150Ms) {
    Reader(context_, kReadData).run();
    EXPECT_THAT(line_.sent(),
                ElementsAre("0 U 1900", "150 U 1960", "300 R 346", "450 R 971", "600 U 1904", "750 U 1906",
                            "900 U 1908", "1050 U 1910", "1200 U 1938", "1350 U 1944", "1500 U 1950", "1650 U 1956",
                            "1800 U 1912", "1950 U 1918", "2100 U 1924", "2250 U 1914", "2400 U 1920", "2550 U 1926",
                            "2700 U 1916", "2850 U 1922", "3000 U 1928"));
    EXPECT_EQ(now(), 3150);
}

TEST_F(LimiterTest, TheCaptionTellsHowFarTheReadIs) {
    Reader(context_, kReadData).run();
    Lines expected;
    for (const char* percent : {"5",  "10", "12", "15", "20", "25", "30", "35", "36", "37", "38",
                                "39", "40", "45", "50", "55", "60", "65", "70", "80", "100"}) {
        expected.push_back(std::string("Receiving data from target device!:  Loading.. ") + percent + "%");
    }
    expected.emplace_back("Receiving data from target device!:  Received 100%");
    EXPECT_THAT(captions_.values, ElementsAreArray(expected));
}

class Sending : public LimiterBench {
protected:
    Sending() {
        window_.txtSigPerRev.Text = "180";
        window_.txtCylCount.Text = "6";
        window_.Combosensortype.ListIndex = 1;
        window_.txtrpmlimitHIGH.Text = "7500";    // 29 * 256 + 76
        window_.txtrpmlimitHIGHpre.Text = "300";  // 256 + 44
        window_.txtrpmlimitLOW.Text = "4000";     // 15 * 256 + 160
        window_.txtrpmlimitLOWpre.Text = "200";
        fields_.take(250, 1912, true);
        fields_.take(100, 1918, true);
        fields_.take(0x0203, 1914, true);
        window_.ComboInputFuncLow(1).ListIndex = 1;
        window_.ComboInputFuncLow(2).ListIndex = 6;
        window_.comboInputFuncHi(2).ListIndex = 5;
        window_.txtInputFuncVal(0).Text = "500";  // 256 + 244
        window_.txtInputFuncVal(1).Text = "none";
        window_.txtInputFuncVal(2).Text = "7";
        for (int i = 0; i < 4; ++i) {
            window_.ComboInputFuncLow(3 + i).ListIndex = i;
        }
    }
};

// A word takes 50 ms between its bytes, and each step 150 ms.
TEST_F(Sending, GoesStepByStep) {
    EXPECT_TRUE(saver_.run(kSendSettings));
    EXPECT_THAT(line_.sent(), ElementsAre("0 1900=180", "50 1901=0",       //
                                          "200 1960=6", "250 1961=0",      //
                                          "400 346=1",                     //
                                          "550 1908=76", "600 1909=29",    //
                                          "750 1910=44", "800 1911=1",     //
                                          "950 1904=160", "1000 1905=15",  //
                                          "1150 1906=200", "1200 1907=0",  //
                                          "1350 1912=250", "1400 1913=0",  //
                                          "1550 1914=3", "1550 1915=2",    //
                                          "1700 1916=244", "1750 1917=1",  //
                                          "1900 1918=100", "1950 1919=0",  //
                                          "2100 1920=1", "2100 1921=0",    //
                                          "2250 1922=0", "2300 1923=0",    //
                                          "2450 1924=0", "2500 1925=0",    //
                                          "2650 1926=6", "2650 1927=5",    //
                                          "2800 1928=7", "2850 1929=0",    //
                                          "3000 1938=0", "3150 1944=1", "3300 1950=2", "3450 1956=3"));
    EXPECT_EQ(now(), 3600);
}

TEST_F(Sending, TheCaptionStandsBehindEachStep) {
    saver_.run(kSendSettings);
    Lines expected;
    for (const char* percent : {"5", "10", "15", "20", "25", "30", "35", "40", "45", "50", "55", "60", "65", "70", "75",
                                "76", "77", "78", "79"}) {
        expected.push_back(std::string("Sending data to device: Sending.. ") + percent + "%");
    }
    expected.emplace_back("Data sent and stored to device.");
    EXPECT_THAT(captions_.values, ElementsAreArray(expected));
}

TEST_F(Sending, ThePercentageComesWhenThePauseIsOver) {
    std::string inside = "never looked";
    virtual_.at(199, [&] { inside = window_.Caption; });
    std::string behind;
    virtual_.at(201, [&] { behind = window_.Caption; });
    saver_.run(kSendSettings);
    EXPECT_EQ(inside, "");
    EXPECT_EQ(behind, "Sending data to device: Sending.. 5%");
}

TEST_F(Sending, AClosedPortWalksAllSteps) {
    panel_.MSComm1.setPortOpen(false);
    EXPECT_TRUE(saver_.run(kSendSettings));
    EXPECT_THAT(line_.sent(), IsEmpty());
    EXPECT_EQ(now(), 20 * 150);
    EXPECT_EQ(window_.Caption.get(), "Data sent and stored to device.");
}

TEST_F(Sending, EndsAtANumberThatDoesNotFit) {
    window_.txtCylCount.Text = "40000";
    EXPECT_FALSE(saver_.run(kSendSettings));
    EXPECT_THAT(line_.sent(), ElementsAre("0 1900=180", "50 1901=0"));
    EXPECT_EQ(window_.Caption.get(), "Sending data to device: Sending.. 5%");
    EXPECT_THAT(virtual_.dialogs.takeMessages(), SizeIs(1));
}

TEST_F(LimiterTest, AFunctionWordChoosesARowOfBothLists) {
    EXPECT_TRUE(fields_.take(0x0203, addressOf(&A::INPUT2_LIMIT_FUNC_OFF), true));
    EXPECT_EQ(window_.ComboInputFuncLow(1).ListIndex.get(), 3);
    EXPECT_EQ(window_.comboInputFuncHi(1).ListIndex.get(), 2);
}

TEST_F(LimiterTest, VoltsShowAndStepTheirCountUpTo250) {
    auto& box = window_.txtInputvolt(0);
    fields_.take(249, 1912, true);
    EXPECT_EQ(box.Text.get(), "4.98");
    for (const char* shown : {"5", "5"}) {
        box.keyDown(controls::kKeyPlus, 0);
        EXPECT_EQ(box.Text.get(), shown);
    }
    EXPECT_EQ(box.ToolTipText.get(), "250");
    box.keyDown(controls::kKeyMinus, 0);
    EXPECT_EQ(box.Text.get(), "4.98");
    box.keyDown(controls::kKeyUp, 0);  // a single box: arrows step nothing
    EXPECT_EQ(box.ToolTipText.get(), "249");
}

TEST_F(LimiterTest, TheLaunchPaneIsReadByteByByte) {
    Reader(context_, kReadLaunch).run();
    EXPECT_THAT(line_.sent(), ElementsAre("0 R 511", "150 R 512", "300 R 971", "450 R 972", "600 R 973", "750 R 974"));
    EXPECT_THAT(captions_.values, IsEmpty());
}

TEST_F(LimiterTest, TheLaunchLimitIsTheWordInTheImage) {
    fields_.take(0x88, 511, false);
    fields_.take(0x13, 512, false);
    EXPECT_EQ(window_.txtLaunchControlLimit.Text.get(), "5000");
}

// The low byte's parameter has the mark of a word: its write clears the high byte, 50 ms later.
TEST_F(LimiterTest, TheLaunchPaneIsSavedWithPausesOf50Ms) {
    window_.txtLaunchControlLimit.Text = "5000";
    window_.Combolaunchmode.ListIndex = 5;
    window_.txtLaunchFixedDelay.Text = "12";
    window_.ComboAccellimiter.ListIndex = 2;
    window_.txtMaxAccel.Text = "99";
    EXPECT_TRUE(saver_.run(kSaveLaunch));
    EXPECT_THAT(line_.sent(), ElementsAre("0 511=136", "50 512=0", "50 512=19", "100 971=5", "150 972=12", "200 973=2",
                                          "250 974=99"));
    EXPECT_EQ(now(), 300);
}

}  // namespace
}  // namespace korvane::fields
