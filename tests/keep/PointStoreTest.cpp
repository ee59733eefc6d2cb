#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "keep/PointSamples.h"
#include "keep/point/PointStore.h"
#include "support/FileSizeLimit.h"
#include "support/ProcessorTime.h"
#include "support/TempFolder.h"

namespace korvane::keep {
namespace {

namespace fs = std::filesystem;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

Snapshot pointAt(int second, std::string reason) {
    auto point = partPoint();
    point.time.second = second;
    point.reason = std::move(reason);
    return point;
}

std::vector<std::string> reasonsIn(const std::vector<PointEntry>& entries) {
    std::vector<std::string> reasons;
    for (const auto& entry : entries) {
        reasons.push_back(entry.reason);
    }
    return reasons;
}

class PointStoreTest : public testing::Test {
protected:
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> names;
        std::error_code error;
        for (fs::directory_iterator file(store_.folder(), error), end; !error && file != end; file.increment(error)) {
            names.push_back(file->path().filename().string());
        }
        return names;
    }
    [[nodiscard]] std::string damageOf(std::string_view name) const {
        for (const auto& entry : store_.list()) {
            if (entry.name == name) {
                return entry.damage;
            }
        }
        return "not listed";
    }
    std::string put(std::string_view name, std::string_view content) {
        fs::create_directories(store_.folder());
        return folder_.write((fs::path("restore") / name).string(), content).filename().string();
    }

    support::TempFolder folder_;
    PointStore store_{folder_ / "restore"};
};

TEST_F(PointStoreTest, ListsNothingWithoutAFolderAndMakesNone) {
    EXPECT_THAT(store_.list(), IsEmpty());
    EXPECT_FALSE(fs::exists(folder_ / "restore"));
}

TEST_F(PointStoreTest, KeepsAPoint) {
    const auto added = store_.add(fullPoint());
    EXPECT_EQ(added.failure, "");
    EXPECT_THAT(added.name, MatchesRegex("2026-05-06_17_08_59_000_[0-9a-f]{12}\\.point"));
    EXPECT_THAT(names(), ElementsAre(added.name));
    const auto loaded = store_.load(added.name);
    ASSERT_TRUE(loaded.content) << loaded.damage;
    EXPECT_EQ(*loaded.content, fullPoint());
    const auto entries = store_.list();
    ASSERT_THAT(entries, SizeIs(1));
    EXPECT_EQ(entries[0].name, added.name);
    EXPECT_EQ(entries[0].time, fullPoint().time);
    EXPECT_EQ(entries[0].reason, "before storing: fuel map");
    EXPECT_EQ(entries[0].ecu, fullPoint().ecu);
    EXPECT_EQ(entries[0].note, "");
    EXPECT_EQ(entries[0].damage, "");
}

TEST_F(PointStoreTest, ListsTheNewestFirst) {
    store_.add(pointAt(7, "a"));
    store_.add(pointAt(9, "b"));
    store_.add(pointAt(8, "c"));
    EXPECT_THAT(reasonsIn(store_.list()), ElementsAre("b", "c", "a"));
}

TEST_F(PointStoreTest, KeepsTheOrderOfPointsOfOneSecond) {
    for (const auto* reason : {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l"}) {
        store_.add(pointAt(7, reason));
    }
    EXPECT_THAT(reasonsIn(store_.list()), ElementsAre("l", "k", "j", "i", "h", "g", "f", "e", "d", "c", "b", "a"));
}

TEST_F(PointStoreTest, HasTheNamesInTheOrderOfMakingOverAClockThatIsSetBack) {
    std::vector<std::string> made;
    for (const int second : {30, 10, 10, 40, 39}) {
        made.insert(made.begin(), store_.add(pointAt(second, "x")).name);
    }
    EXPECT_EQ(store_.names(), made);
    EXPECT_THAT(
        made,
        ElementsAre(testing::StartsWith("2025-12-31_00_00_40_001_"), testing::StartsWith("2025-12-31_00_00_40_000_"),
                    testing::StartsWith("2025-12-31_00_00_30_002_"), testing::StartsWith("2025-12-31_00_00_30_001_"),
                    testing::StartsWith("2025-12-31_00_00_30_000_")));
    EXPECT_EQ(store_.load(made[0]).content->time.second, 39) << "the time is that of the clock";
}

// What another program has done shows at once, also within one step of the clock of the files.
TEST_F(PointStoreTest, NamesGoOnBehindThoseOfAnotherProgram) {
    PointStore other(store_.folder());
    std::vector<std::string> made;
    for (int i = 0; i < 50; ++i) {
        made.push_back((i % 2 == 0 ? store_ : other).add(partPoint()).name);
        made.push_back((i % 3 == 0 ? store_ : other).add(partPoint()).name);
    }
    EXPECT_TRUE(std::is_sorted(made.begin(), made.end()));
    std::ofstream(store_.folder() / "2999-01-01_00_00_00_000_x.point").flush();
    EXPECT_THAT(store_.add(partPoint()).name, testing::StartsWith("2999-01-01_00_00_00_001_"));
}

// The folder of ten thousand is not looked through for each.
TEST_F(PointStoreTest, APointTakesNoLongerInAFullFolder) {
    static_cast<void>(store_.add(partPoint()));
    for (int i = 0; i < 10'000; ++i) {
        std::ofstream(store_.folder() / ("2000-01-01_00_00_00_000_" + std::to_string(i) + ".point")).flush();
    }
    static_cast<void>(store_.add(partPoint()));
    EXPECT_LT(support::bestSeconds(20, [&] { static_cast<void>(store_.add(partPoint())); }), support::allowed(0.001));
}

TEST_F(PointStoreTest, ASecondHasAThousandNames) {
    put("9998-12-31_23_59_59_999_0123456789ab.point", "x");
    EXPECT_THAT(store_.add(partPoint()).name, testing::StartsWith("9999-01-01_00_00_00_000_"));
    put("9999-12-31_23_59_59_999_0123456789ab.point", "x");
    EXPECT_THAT(store_.add(partPoint()).name, testing::StartsWith("9999-12-31_23_59_59_999_"));
}

TEST_F(PointStoreTest, ANameWithAMomentThatNoClockShowsSetsNoOrder) {
    put("2026-99-01_00_00_00_000_0123456789ab.point", "x");
    EXPECT_THAT(store_.add(fullPoint()).name, testing::StartsWith("2026-05-06_17_08_59_000_"));
}

TEST_F(PointStoreTest, RemovesAPointWithItsNoteAndNothingElse) {
    const auto name = store_.add(partPoint()).name;
    const auto other = store_.add(fullPoint()).name;
    EXPECT_EQ(store_.setNote(name, "on the road"), "");
    EXPECT_EQ(store_.remove(name), "");
    EXPECT_THAT(names(), ElementsAre(other));
    EXPECT_EQ(store_.remove(name), "There is no such restore point.");
}

TEST_F(PointStoreTest, HasNotesBesideThePoints) {
    const auto name = store_.add(fullPoint()).name;
    const auto bytes = folder_.read("restore/" + name);
    EXPECT_EQ(store_.setNote(name, "hyvä\nkartta"), "");
    EXPECT_EQ(store_.list()[0].note, "hyvä?kartta");
    EXPECT_EQ(folder_.read("restore/" + name), bytes);
    EXPECT_EQ(store_.setNote(name, "other"), "");
    EXPECT_EQ(store_.list()[0].note, "other");
    EXPECT_EQ(store_.setNote(name, ""), "");
    EXPECT_EQ(store_.setNote(name, ""), "");
    EXPECT_THAT(names(), ElementsAre(name));
    EXPECT_EQ(store_.setNote("other.point", "x"), "There is no such restore point.");
}

TEST_F(PointStoreTest, TakesALimitedNote) {
    const auto name = store_.add(fullPoint()).name;
    EXPECT_EQ(store_.setNote(name, std::string(1000, 'x')), "");
    EXPECT_EQ(store_.list()[0].note, std::string(1000, 'x'));
    EXPECT_EQ(store_.setNote(name, std::string(1001, 'x')), "A note has at most 1000 bytes.");
    EXPECT_EQ(store_.list()[0].note, std::string(1000, 'x'));
}

// However long the file is: the rest of it is not asked for.
TEST_F(PointStoreTest, FindsTheEcuOfAPointByTheFrontOfItsFile) {
    const auto bytes = encodePoint(fullPoint());
    put("a.point", bytes.substr(0, kBytesToEcu));
    EXPECT_TRUE(store_.mayBeOf("a.point", fullPoint().ecu));
    EXPECT_FALSE(store_.mayBeOf("a.point", {12, 3.386F, 0x1234}));
    EXPECT_FALSE(store_.mayBeOf("a.point", {11, 3.4F, 0x1234}));
    EXPECT_FALSE(store_.mayBeOf("b.point", fullPoint().ecu));
    EXPECT_FALSE(store_.mayBeOf("../restore/a.point", fullPoint().ecu));
}

TEST_F(PointStoreTest, ReachesNoFileOutsideItsFolder) {
    const auto name = store_.add(fullPoint()).name;
    fs::copy_file(folder_ / "restore" / name, folder_ / "x.point");
    for (const auto& other :
         std::vector<std::string>{"../x.point", "/etc/x.point", "..", ".", "", ".point", "a/../" + name}) {
        EXPECT_FALSE(store_.load(other).content) << other;
        EXPECT_NE(store_.remove(other), "") << other;
        EXPECT_NE(store_.setNote(other, "x"), "") << other;
    }
    EXPECT_TRUE(fs::exists(folder_ / "x.point"));
    EXPECT_THAT(names(), ElementsAre(name));
}

TEST_F(PointStoreTest, ListsDamagedFilesBehindTheOthers) {
    const auto name = store_.add(partPoint()).name;
    const auto whole = folder_.read("restore/" + name);
    put("2030-01-01.point", std::string_view(whole).substr(0, 500));
    put("empty.point", "");
    put("text.point", "Injection\r\n 1 2 3 4 5 6 7\r\n");
    put("long.point", whole + std::string(100000, '\0'));
    EXPECT_EQ(store_.list()[0].name, name);
    EXPECT_EQ(damageOf(name), "");
    EXPECT_EQ(damageOf("2030-01-01.point"), "cut off");
    EXPECT_EQ(damageOf("empty.point"), "cut off");
    EXPECT_EQ(damageOf("text.point"), "no restore point");
    EXPECT_EQ(damageOf("long.point"), "damaged: longer than it was written");
    EXPECT_EQ(store_.load("empty.point").damage, "cut off");
}

TEST_F(PointStoreTest, OpensNothingButRegularFiles) {
    const auto name = store_.add(partPoint()).name;
    const auto place = store_.folder();
    fs::create_directory(place / "folder.point");
    ASSERT_EQ(mkfifo((place / "pipe.point").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", place / "device.point");
    fs::create_symlink("loop.point", place / "loop.point");
    fs::create_symlink("missing", place / "dangling.point");
    fs::create_symlink(name, place / "link.point");
    for (const auto* other : {"folder.point", "pipe.point", "device.point", "loop.point", "dangling.point"}) {
        EXPECT_EQ(damageOf(other), "no file") << other;
        EXPECT_EQ(store_.load(other).damage, "no file") << other;
    }
    EXPECT_EQ(damageOf("link.point"), "");
    EXPECT_EQ(store_.remove("pipe.point"), "");
    EXPECT_EQ(store_.remove("link.point"), "");
    EXPECT_EQ(damageOf(name), "");
}

TEST_F(PointStoreTest, LeavesOutWhatIsNoPoint) {
    put("notes.txt", "x");
    put("orphan.note", "x");
    put("x.point.korvane-0123456789ab", "x");
    put(".point", "x");
    EXPECT_THAT(store_.list(), IsEmpty());
}

TEST_F(PointStoreTest, TakesNamesOfAnyBytes) {
    const auto name = store_.add(partPoint()).name;
    const std::string odd = "\xFF\n \xE4%s.point";
    fs::copy_file(store_.folder() / name, store_.folder() / odd);
    EXPECT_EQ(damageOf(odd), "");
    EXPECT_TRUE(store_.load(odd).content);
    EXPECT_EQ(store_.setNote(odd, "x"), "");
    EXPECT_EQ(store_.remove(odd), "");
}

TEST_F(PointStoreTest, ReadsNoStrangeNotes) {
    const auto name = store_.add(partPoint()).name;
    const auto note = name.substr(0, name.size() - 6) + ".note";
    ASSERT_EQ(mkfifo((store_.folder() / note).c_str(), 0600), 0);
    EXPECT_EQ(store_.list()[0].note, "");
    fs::remove(store_.folder() / note);
    put(note, std::string(1001, 'x'));
    EXPECT_EQ(store_.list()[0].note, "");
}

TEST_F(PointStoreTest, SaysThatTheFolderCantBeMade) {
    folder_.write("restore", "a file");
    EXPECT_THAT(store_.add(partPoint()).failure, HasSubstr("folder of the restore points can't be made"));
    EXPECT_THAT(store_.list(), IsEmpty());
    EXPECT_EQ(folder_.read("restore"), "a file");
}

TEST_F(PointStoreTest, AFullDiskLeavesNoPointAndTheOthersWhole) {
    const auto name = store_.add(partPoint()).name;
    {
        const support::FileSizeLimit full(5000);
        const auto added = store_.add(fullPoint());
        EXPECT_EQ(added.name, "");
        EXPECT_THAT(added.failure, HasSubstr("The restore point can't be written: "));
        const support::FileSizeLimit fuller(0);
        EXPECT_THAT(store_.setNote(name, "x"), HasSubstr("The note can't be written: "));
    }
    EXPECT_THAT(names(), ElementsAre(name));
    EXPECT_EQ(damageOf(name), "");
}

TEST_F(PointStoreTest, AFailureToReachTheDiskIsTold) {
    std::vector<std::string> flushed;
    PointStore store(folder_ / "restore", [&](const fs::path& path) {
        flushed.push_back(path.filename().string());
        return std::make_error_code(std::errc::io_error);
    });
    EXPECT_THAT(store.add(partPoint()).failure, HasSubstr("Input/output error"));
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_THAT(flushed, ElementsAre(HasSubstr(".point.korvane-")));
}

// Before it has its name, its bytes are on the disk; then the name.
TEST_F(PointStoreTest, BringsAPointToTheDiskBeforeItsName) {
    std::vector<std::string> steps;
    PointStore store(folder_ / "restore", [&](const fs::path& path) {
        steps.push_back(path.filename().string() + " of " + std::to_string(names().size()));
        for (const auto& name : names()) {
            steps.push_back(name.ends_with(".point") ? "point" : "unfinished");
        }
        return std::error_code();
    });
    const auto name = store.add(partPoint()).name;
    ASSERT_THAT(steps, SizeIs(4));
    EXPECT_THAT(steps[0], HasSubstr(name + ".korvane-"));
    EXPECT_EQ(steps[1], "unfinished");
    EXPECT_EQ(steps[2], "restore of 1");
    EXPECT_EQ(steps[3], "point");
}

TEST_F(PointStoreTest, RemovesOldLeftoversOnceAndNoYoungOnes) {
    const auto old = put("x.point.korvane-0123456789ab", "x");
    const auto young = put("y.point.korvane-0123456789ab", "y");
    fs::last_write_time(store_.folder() / old, fs::file_time_type::clock::now() - std::chrono::hours(2));
    const auto name = store_.add(partPoint()).name;
    EXPECT_THAT(names(), testing::UnorderedElementsAre(young, name));
}

TEST_F(PointStoreTest, TwoProgramsDoNotDisturbEachOther) {
    constexpr int kEach = 150;
    std::vector<pid_t> children;
    for (int program = 0; program < 2; ++program) {
        const pid_t child = fork();
        if (child == 0) {
            PointStore store(folder_ / "restore");
            int failures = 0;
            for (int i = 0; i < kEach; ++i) {
                const auto added = store.add(partPoint());
                failures += added.failure.empty() && store.setNote(added.name, "x").empty() ? 0 : 1;
            }
            _exit(failures == 0 ? 0 : 1);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    const auto entries = store_.list();
    EXPECT_THAT(entries, SizeIs(2 * kEach));
    EXPECT_THAT(entries, Each(testing::Field(&PointEntry::damage, "")));
    EXPECT_THAT(entries, Each(testing::Field(&PointEntry::note, "x")));
}

// The owner of all files may write where nobody may.
TEST_F(PointStoreTest, AFolderThatIsReadOnlyIsListedAndLeftAsItIs) {
    const auto name = store_.add(partPoint()).name;
    if (geteuid() == 0) {
        GTEST_SKIP() << "permissions do not bind this user";
    }
    fs::permissions(store_.folder(), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(damageOf(name), "");
    EXPECT_THAT(store_.add(partPoint()).failure, HasSubstr("Permission denied"));
    EXPECT_THAT(store_.remove(name), HasSubstr("can't be removed: Permission denied"));
    EXPECT_THAT(store_.setNote(name, "x"), HasSubstr("Permission denied"));
    EXPECT_THAT(names(), ElementsAre(name));
    fs::permissions(store_.folder(), fs::perms::owner_all);
    fs::permissions(store_.folder() / name, fs::perms::none);
    EXPECT_EQ(damageOf(name), "can't be read");
}

}  // namespace
}  // namespace korvane::keep
