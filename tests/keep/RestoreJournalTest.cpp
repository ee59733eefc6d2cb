#include <gtest/gtest.h>

#include "keep/restore/RestoreJournal.h"
#include "support/TempFolder.h"

namespace korvane::keep {
namespace {

// As docs/file-formats.md says it: words of eight bytes, low byte first, the last one filled up with zeros.
std::string sumOf(const std::string& text) {
    std::uint64_t sum = 0xCBF29CE484222325U;
    for (std::size_t at = 0; at < text.size(); at += 8) {
        std::uint64_t word = 0;
        for (std::size_t i = 0; i < 8 && at + i < text.size(); ++i) {
            word += std::uint64_t{static_cast<unsigned char>(text[at + i])} << (8 * i);
        }
        sum = (sum ^ word) * 0x9E3779B97F4A7C15U;
        sum ^= sum >> 32U;
    }
    std::string digits;
    for (int i = 60; i >= 0; i -= 4) {
        digits += "0123456789abcdef"[(sum >> static_cast<unsigned>(i)) & 15U];
    }
    return digits;
}

std::string sealed(const std::string& body) {
    return body + "end " + sumOf(body) + "\n";
}

const std::string kBody =
    "Korvane restore journal 1\n"
    "ecu 11 3386\n"
    "point a.point\n"
    "time 2026-05-06 07:08:09\n"
    "reason fuel map\n"
    "goal point\n"
    "written 1\n"
    "cells 2\n"
    "350 17 20\n"
    "2998 0 255\n";

std::string with(const std::string& from, const std::string& to) {
    std::string body = kBody;
    return body.replace(body.find(from), from.size(), to);
}

RestoreJournal journal() {
    return {.ecu = {11, 3386},
            .pointName = "a.point",
            .pointTime = {2026, 5, 6, 7, 8, 9},
            .pointReason = "fuel map",
            .goal = RestoreJournal::Goal::Point,
            .written = 1,
            .cells = {{350, 17, 20}, {2998, 0, 255}}};
}

TEST(RestoreJournalTest, IsATextWithAChecksum) {
    EXPECT_EQ(encodeJournal(journal()), sealed(kBody));
}

TEST(RestoreJournalTest, IsReadBack) {
    const auto found = decodeJournal(sealed(kBody));
    EXPECT_EQ(found.journal, journal());
    EXPECT_EQ(found.damage, "");
    const auto back = decodeJournal(sealed(with("goal point", "goal before")));
    ASSERT_TRUE(back.journal);
    EXPECT_EQ(back.journal->wanted(back.journal->cells[0]), 17);
    EXPECT_EQ(found.journal->wanted(found.journal->cells[0]), 20);
}

TEST(RestoreJournalTest, HasTheFeaturesOfAnEcuThatTellsThem) {
    auto told = journal();
    told.ecu.features = 1234;
    const auto text = sealed(with("ecu 11 3386\n", "ecu 11 3386\nfeatures 1234\n"));
    EXPECT_EQ(encodeJournal(told), text);
    EXPECT_EQ(decodeJournal(text).journal, told);
    EXPECT_FALSE(decodeJournal(sealed(with("ecu 11 3386\n", "ecu 11 3386\nfeatures 65535\n"))).journal);
}

TEST(RestoreJournalTest, OneThatWasCutOrChangedAnywhereIsDamaged) {
    const auto whole = sealed(kBody);
    for (std::size_t at = 0; at < whole.size(); ++at) {
        EXPECT_FALSE(decodeJournal(whole.substr(0, at)).journal);
        EXPECT_FALSE(decodeJournal(whole.substr(at + 1)).journal);
        for (int other = 0; other < 256; ++other) {
            auto changed = whole;
            changed[at] = static_cast<char>(other);
            EXPECT_TRUE(changed == whole || !decodeJournal(changed).journal) << at;
        }
    }
    EXPECT_FALSE(decodeJournal(whole + "\n").journal);
    EXPECT_EQ(decodeJournal("").damage, "it is damaged");
}

TEST(RestoreJournalTest, WhatItSaysIsCheckedThoughItsSumIsRight) {
    for (const auto& body :
         {with("cells 2", "cells 3"), with("cells 2", "cells 1"), with("written 1", "written 3"),
          with("written 1", "written -1"), with("2998 0", "2999 0"), with("350 17", "2998 17"), with("17 20", "17 256"),
          with("17 20", "017 20"), with("17 20", "17 20 "), with("goal point", "goal other"), with("ecu 11", "ecu x"),
          with("350 17 20\n2998 0 255\n", "").replace(kBody.find("cells 2"), 7, "cells 0"), with("time", "tima"),
          with("07:08", "7:08"), kBody + "1 2 3\n"}) {
        EXPECT_EQ(decodeJournal(sealed(body)).damage, "it is damaged") << body;
    }
}

TEST(RestoreJournalTest, ALaterVersionIsCalledSo) {
    EXPECT_EQ(decodeJournal(sealed(with("journal 1", "journal 2"))).damage, "it is of a later version of the program");
}

TEST(RestoreJournalTest, ATextThatIsNoLineBecomesOne) {
    auto odd = journal();
    odd.pointReason = "a\nb\r\x01";
    const auto found = decodeJournal(encodeJournal(odd));
    ASSERT_TRUE(found.journal);
    EXPECT_EQ(found.journal->pointReason, "a b  ");
}

TEST(RestoreJournalTest, EachKindOfEcuHasItsOwnFile) {
    const support::TempFolder folder;
    const JournalFile file(folder / "points");
    EXPECT_FALSE(file.load({11, 3386}).journal);
    EXPECT_EQ(file.load({11, 3386}).damage, "");
    EXPECT_EQ(file.save(journal()), "");
    EXPECT_EQ(file.path({11, 3386}), folder / "points" / "restore-11-3386.journal");
    EXPECT_EQ(file.load({11, 3386}).journal, journal());
    EXPECT_FALSE(file.load({11, 3387}).journal);
    std::filesystem::copy_file(file.path({11, 3386}), file.path({12, 3386}));
    EXPECT_EQ(file.load({12, 3386}).damage, "it is of another ECU");
    file.remove({11, 3386});
    EXPECT_FALSE(file.load({11, 3386}).journal);
}

TEST(RestoreJournalTest, IsOnTheDiskBeforeTheFirstCellIsWritten) {
    const support::TempFolder folder;
    int flushed = 0;
    const JournalFile file(folder.path(), [&](const std::filesystem::path&) { return ++flushed, std::error_code(); });
    auto begun = journal();
    begun.written = 0;
    EXPECT_EQ(file.save(begun), "");
    EXPECT_EQ(flushed, 2) << "the file and its folder";
    begun.written = 1;
    EXPECT_EQ(file.save(begun), "");
    EXPECT_EQ(flushed, 2);
    EXPECT_EQ(file.save(begun, true), "");
    EXPECT_EQ(flushed, 4) << "one that is taken over";
    const JournalFile failing(folder.path(),
                              [](const std::filesystem::path&) { return std::make_error_code(std::errc::io_error); });
    begun.written = 0;
    EXPECT_THAT(failing.save(begun), testing::HasSubstr("can't be written"));
}

TEST(RestoreJournalTest, AFolderInItsPlaceIsToldAndStays) {
    const support::TempFolder folder;
    const JournalFile file(folder.path());
    std::filesystem::create_directories(file.path({11, 3386}));
    EXPECT_EQ(file.load({11, 3386}).damage, "it can't be read");
    EXPECT_NE(file.save(journal()), "");
}

}  // namespace
}  // namespace korvane::keep
