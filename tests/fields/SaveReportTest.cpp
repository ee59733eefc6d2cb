#include <limits>

#include "FieldsBench.h"
#include "fields/SaveReport.h"

namespace korvane::fields {
namespace {

constexpr std::array kSteps{SaveStep{&A::LAUNCH_DELAY_OFF, k50}, SaveStep{&A::RPM_LIMIT_OFF, k50},
                            SaveStep{&A::LAUNCHCONTROL_LO}};

// The delay at one address, the limit and the launch speed at two each.
struct SaveReportTest : FieldsBench {
    SaveReportTest() {
        txtDelay_.setLabel("Delay");
        txtLimit_.setLabel("Limit");
        txtDelay_.Text = "5";
        txtLimit_.Text = "7000";
        txtLaunch_.Text = "4500";
        fields_.watch(marks_, report_);
    }

    std::string saved() {
        saver_.run({kSteps}, "Launch");
        return report_.Text;
    }
    std::string heard(int value, int address, bool is16 = false) {
        fields_.take(value, address, is16);
        return report_.Text;
    }
    [[nodiscard]] int delay() const { return tables_.addresses.LAUNCH_DELAY_OFF; }
    [[nodiscard]] int limit() const { return tables_.addresses.RPM_LIMIT_OFF; }
    [[nodiscard]] int launch() const { return tables_.addresses.LAUNCHCONTROL_LO; }

    BoxMarks marks_;
    SaveReport report_{tables_};
};

TEST_F(SaveReportTest, SaysNothingBeforeTheFirstSave) {
    EXPECT_EQ(report_.Text.get(), "");
    EXPECT_EQ(heard(5, delay()), "");
}

TEST_F(SaveReportTest, TellsWhatWasSentAndThatNothingHasComeBack) {
    EXPECT_EQ(saved(), "Launch: 3 values sent; nothing has come back yet");
}

TEST_F(SaveReportTest, CountsTheValuesWhileTheyAreSent) {
    std::string seen;
    at(110, [&] { seen = report_.Text; });  // the word takes 50 ms by itself
    saved();
    EXPECT_EQ(seen, "Launch: 2 of 3 values sent; nothing has come back yet");
}

TEST_F(SaveReportTest, CountsWhatComesBackTheSame) {
    saved();
    EXPECT_EQ(heard(5, delay()), "Launch: 3 values sent; 1 came back the same");
    EXPECT_EQ(heard(7000, limit(), true), "Launch: 3 values sent; 2 came back the same");
    EXPECT_EQ(heard(4500 % 256, launch()), "Launch: 3 values sent; 2 came back the same") << "half of it";
    EXPECT_EQ(heard(4500 / 256, launch() + 1), "Launch: 3 values sent; 3 came back the same");
}

// Scripts may give a parameter any address; that of the last byte has no room in an int then.
TEST_F(SaveReportTest, AnAddressBeyondTheEepromIsNoneOfTheSave) {
    saved();
    report_.heard(std::int64_t{std::numeric_limits<int>::max()} + 1, 5, true);
    report_.heard(std::numeric_limits<int>::min(), 5, true);
    EXPECT_EQ(report_.Text.get(), "Launch: 3 values sent; nothing has come back yet");
}

TEST_F(SaveReportTest, NamesTheFirstValueThatCameBackDifferent) {
    saved();
    EXPECT_EQ(heard(6, delay()), "Launch: 3 values sent; 0 came back the same, 1 value differs: Delay is 6, not 5");
    EXPECT_EQ(heard(6999, limit(), true),
              "Launch: 3 values sent; 0 came back the same, 2 values differ: Delay is 6, not 5");
    EXPECT_EQ(heard(5, delay()),
              "Launch: 3 values sent; 1 came back the same, 1 value differs: Limit is 6999, not 7000");
}

TEST_F(SaveReportTest, AnotherAddressSaysNothingOfTheSave) {
    saved();
    EXPECT_EQ(heard(5, delay() + 1), "Launch: 3 values sent; nothing has come back yet");
}

TEST_F(SaveReportTest, AFileIsNoAnswer) {
    saved();
    fields_.take(5, delay(), false, From::File);
    EXPECT_EQ(report_.Text.get(), "Launch: 3 values sent; nothing has come back yet");
}

TEST_F(SaveReportTest, OnAClosedPortNothingWasSent) {
    panel_.MSComm1.setPortOpen(false);
    EXPECT_EQ(saved(), "Launch: nothing sent, the port is closed");
}

TEST_F(SaveReportTest, TellsHowFarItCameWhenThePortWasClosed) {
    at(125, [this] { panel_.MSComm1.setPortOpen(false); });
    EXPECT_EQ(saved(), "Launch: 2 of 3 values sent, then the port was closed; nothing has come back yet");
}

TEST_F(SaveReportTest, TellsWhichValueDidNotFit) {
    txtLimit_.Text = "70000";
    EXPECT_EQ(saved(), "Launch: 1 of 3 values sent, then Limit did not fit; nothing has come back yet");
    txtDelay_.Text = "300";
    EXPECT_EQ(saved(), "Launch: 0 of 3 values sent, then Delay did not fit");
}

TEST_F(SaveReportTest, AValueWithoutALabelIsNotNamed) {
    saved();
    heard(0, launch());
    EXPECT_EQ(heard(0, launch() + 1), "Launch: 3 values sent; 0 came back the same, 1 value differs: is 0, not 4500");
}

TEST_F(SaveReportTest, TellsOfTheSaveThatWasBegunLast) {
    static constexpr std::array kOne{SaveStep{&A::LAUNCH_DELAY_OFF}};
    at(60, [this] { saver_.run({kOne}, "Delay"); });
    EXPECT_EQ(saved(), "Delay: 1 value sent; nothing has come back yet");
}

TEST_F(SaveReportTest, APortThatIsOpenAgainWasClosed) {
    panel_.MSComm1.setPortOpen(false);
    saved();
    report_.lineOpened();
    EXPECT_EQ(report_.Text.get(), "Launch: nothing sent, the port was closed");
    EXPECT_EQ(saved(), "Launch: nothing sent, the port is closed");
}

}  // namespace
}  // namespace korvane::fields
