#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "console/ProgramBench.h"
#include "keep/restore/RestoreJournal.h"

namespace korvane::console {
namespace {

struct RestoreNamesTest : testing::Test, ProgramBench {
    // The ECU, of type 11 and version 3.386, has told its identity.
    void connect() {
        EXPECT_EQ(run("click frmSarn2.btnConnect"), "ok");
        EXPECT_EQ(run("receive 7905FFFF0D3A0B86"), "ok");
        static_cast<void>(run("wait 500"));
    }
};

TEST_F(RestoreNamesTest, WithoutAJournalThereIsNothingToOffer) {
    connect();
    EXPECT_EQ(run("get restore"), "ok \"\"");
    EXPECT_EQ(run("get restore.running"), "ok false");
    EXPECT_EQ(run("get restore.offer"), "ok \"\"");
    EXPECT_EQ(run("get restore.total"), "ok 0");
    EXPECT_EQ(run("call restore.goOn"), "ok false");
    EXPECT_EQ(run("call restore.goBack"), "ok false");
    EXPECT_EQ(run("call restore.stop"), "ok");
    EXPECT_EQ(run("call restore.forget"), "ok");
}

TEST_F(RestoreNamesTest, AJournalIsOfferedAndForgotten) {
    keep::RestoreJournal journal;
    journal.ecu = {11, 3386};
    journal.pointTime = {2026, 5, 6, 7, 8, 9};
    journal.cells = {{600, 1, 2}};
    EXPECT_EQ(keep::JournalFile(folder / "restore").save(journal), "");
    connect();
    EXPECT_EQ(run("get restore.offer"),
              "ok \"A restore of the point of 2026-05-06 07:08:09 was not completed: 0 of 1 settings written.\"");
    // Nobody answers: the old byte has to be told first.
    EXPECT_EQ(run("call restore.goOn"), "ok false");
    EXPECT_EQ(run("get restore"), "ok \"Nothing was written: no answer.\"");
    EXPECT_EQ(run("call restore.forget"), "ok");
    EXPECT_EQ(run("get restore.offer"), "ok \"\"");
}

TEST_F(RestoreNamesTest, TheChoiceToVerifyIsOneForAllWindows) {
    EXPECT_EQ(run("click frmSarn2.btnKartat"), "ok");
    EXPECT_EQ(run("get frmMaps.Verify"), "ok false");
    EXPECT_EQ(run("set frmMaps.Verify true"), "ok");
    EXPECT_EQ(run("click frmSarn2.Command7"), "ok");
    EXPECT_EQ(run("click frmSarn2.btnAsetukset"), "ok");
    EXPECT_EQ(run("get frmMaps_ign_limiter.Verify"), "ok true");
    EXPECT_EQ(run("get frmMisc.Verify"), "ok true");
    EXPECT_EQ(run("get frmMisc.VerifyResult"), "ok \"\"");
    EXPECT_EQ(run("get frmMaps.StoreStatus"), "ok \"\"");
    EXPECT_EQ(run("click frmMaps.btnWriteFuel"), "ok");
    EXPECT_EQ(run("get frmMaps.VerifyResult"), "ok \"Fuel: not verified: the port is closed\"");
    EXPECT_EQ(run("set frmMaps.VerifyResult \"x\"").substr(0, 5), "error");
}

}  // namespace
}  // namespace korvane::console
