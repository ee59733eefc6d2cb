#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ecu/server/EcuSettings.h"

namespace korvane::ecu {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string parsed(std::string_view key, std::string_view value) {
    EcuSettings settings;
    return parseKey(settings, key, value);
}

TEST(EcuSettings, DefaultsAreAFullEngineControlOnALap) {
    const EcuSettings settings;
    EXPECT_EQ(settings.type, 11);
    EXPECT_EQ(settings.version, 3386);
    EXPECT_EQ(settings.features, 65535);
    EXPECT_EQ(settings.identityLength, 5);
    EXPECT_EQ(settings.payloadLength, 19);
    EXPECT_EQ(settings.drive.kind, DriveKind::Lap);
    EXPECT_FALSE(settings.silent);
}

TEST(EcuSettings, TakesEveryKey) {
    EcuSettings settings;
    EXPECT_EQ(
        parseKeyList(
            settings,
            "type=15,version=1130,features=257,identity=4,payload=13,seed=18446744073709551615,"
            "drive=pull,save=/tmp/x,lose=0.5,flip=1,add=0,ignfault=0.01,late=250,silent=1,refuse=F+248,mute=A+246,"
            "restart=100,alarm=1"),
        "");
    EXPECT_EQ(settings.type, 15);
    EXPECT_EQ(settings.version, 1130);
    EXPECT_EQ(settings.features, 257);
    EXPECT_EQ(settings.identityLength, 4);
    EXPECT_EQ(settings.payloadLength, 13);
    EXPECT_EQ(settings.seed, 18446744073709551615U);
    EXPECT_EQ(settings.drive.kind, DriveKind::Pull);
    EXPECT_EQ(settings.saveFile, "/tmp/x");
    EXPECT_EQ(settings.lose, 0.5);
    EXPECT_EQ(settings.flip, 1.0);
    EXPECT_EQ(settings.add, 0.0);
    EXPECT_EQ(settings.ignitionFault, 0.01);
    EXPECT_EQ(settings.lateMs, 250);
    EXPECT_TRUE(settings.silent);
    EXPECT_THAT(settings.refused, ElementsAre(70, 248));
    EXPECT_THAT(settings.muted, ElementsAre(65, 246));
    EXPECT_EQ(settings.restartAfter, 100);
    EXPECT_TRUE(settings.alarm);
}

TEST(EcuSettings, TakesTheKeysOfPowerAndWear) {
    EcuSettings settings;
    EXPECT_TRUE(settings.powered);
    EXPECT_EQ(settings.cutAfter, std::nullopt);
    EXPECT_EQ(parseKeyList(settings, "cut=164,power=0,wear=/tmp/w"), "");
    EXPECT_EQ(settings.cutAfter, 164);
    EXPECT_FALSE(settings.powered);
    EXPECT_EQ(settings.wearFile, "/tmp/w");
    EXPECT_EQ(parseKeyList(settings, "cut=0,power=1"), "");
    EXPECT_EQ(settings.cutAfter, std::nullopt);
    EXPECT_TRUE(settings.powered);
    for (const auto& [key, value] : {std::pair{"cut", "-1"}, {"cut", ""}, {"power", "2"}, {"wear", ""}}) {
        EXPECT_THAT(parsed(key, value), HasSubstr(key)) << value;
    }
}

TEST(EcuSettings, AnEmptyListChangesNothing) {
    EcuSettings settings;
    EXPECT_EQ(parseKeyList(settings, ""), "");
    EXPECT_EQ(settings.type, 11);
}

TEST(EcuSettings, RefusesNumbersOutOfRange) {
    for (const auto& [key, value] : {std::pair{"type", "256"},
                                     {"type", "-1"},
                                     {"version", "65536"},
                                     {"features", "x"},
                                     {"identity", "3"},
                                     {"identity", "6"},
                                     {"payload", "12"},
                                     {"payload", "20"},
                                     {"seed", "-1"},
                                     {"seed", ""},
                                     {"lose", "1.01"},
                                     {"flip", "-0.1"},
                                     {"add", "nan"},
                                     {"ignfault", "2"},
                                     {"lose", "0,5"},
                                     {"late", "-5"},
                                     {"late", "10001"},
                                     {"silent", "2"},
                                     {"silent", "yes"},
                                     {"restart", "-1"},
                                     {"alarm", ""},
                                     {"type", "11 "},
                                     {"type", " 11"},
                                     {"type", "0x0B"}}) {
        EXPECT_THAT(parsed(key, value), HasSubstr(key)) << value;
    }
}

TEST(EcuSettings, SaysWhatAKeyTakes) {
    EXPECT_EQ(parsed("payload", "20"), "payload takes 13 to 19, not \"20\"");
    EXPECT_EQ(parsed("paylod", "19"), "the virtual ECU has no key \"paylod\"");
}

TEST(EcuSettings, LeavesEverythingAsItWasOnAnError) {
    EcuSettings settings;
    EXPECT_NE(parseKeyList(settings, "type=20,payload=99"), "");
    EXPECT_EQ(settings.type, 11);
    EXPECT_NE(parseKey(settings, "silent", "on"), "");
    EXPECT_FALSE(settings.silent);
}

TEST(EcuSettings, RefusesAPairWithoutAValue) {
    EcuSettings settings;
    EXPECT_THAT(parseKeyList(settings, "type"), HasSubstr("\"type\""));
    EXPECT_THAT(parseKeyList(settings, "type=11,,silent=1"), HasSubstr("KEY=VALUE"));
}

TEST(EcuSettings, MapHalvesAreNamedOneByOneOrNotAtAll) {
    EcuSettings settings;
    EXPECT_EQ(parseKey(settings, "refuse", "F+A+246+248"), "");
    EXPECT_THAT(settings.refused, ElementsAre(70, 65, 246, 248));
    EXPECT_EQ(parseKey(settings, "refuse", "none"), "");
    EXPECT_THAT(settings.refused, IsEmpty());
    EXPECT_NE(parseKey(settings, "refuse", "F+"), "");
    EXPECT_NE(parseKey(settings, "mute", "247"), "");
    EXPECT_NE(parseKey(settings, "mute", ""), "");
}

TEST(EcuSettings, ZeroRestartsAreNone) {
    EcuSettings settings;
    EXPECT_EQ(parseKey(settings, "restart", "5"), "");
    EXPECT_EQ(parseKey(settings, "restart", "0"), "");
    EXPECT_FALSE(settings.restartAfter.has_value());
}

TEST(EcuSettings, ADriveIsANameOrThreeNumbers) {
    EXPECT_EQ(parseDrive("lap")->kind, DriveKind::Lap);
    EXPECT_EQ(parseDrive("idle")->kind, DriveKind::Idle);
    EXPECT_EQ(parseDrive("pull")->kind, DriveKind::Pull);
    EXPECT_EQ(parseDrive("cruise")->kind, DriveKind::Cruise);
    EXPECT_EQ(parseDrive("off")->kind, DriveKind::Off);
    EXPECT_EQ(parseDrive("3000:55.5:20"), (Drive{DriveKind::Bench, 3000, 55.5, 20.0}));
    for (const char* text : {"", "Lap", "3000", "3000:50", "3000:50:20:1", ":50:20", "3000::20", "3000:50:", "-1:50:20",
                             "12001:50:20", "3000:161:20", "3000:50:101", "a:b:c", "::"}) {
        EXPECT_FALSE(parseDrive(text).has_value()) << text;
    }
}

TEST(EcuSettings, TakesTheKeysOfAHardEngine) {
    EcuSettings settings;
    EXPECT_EQ(parseKeyList(settings,
                           "interpolate=1,need=place,mapfault=checker,lambdadelay=400:80.5,lambdalag=100,"
                           "lambdanoise=1.5,lambdafault=absent,wetting=30,wettingtime=0.25,enrichment=20,coldstart=1,"
                           "throttlenoise=0.5"),
              "");
    EXPECT_TRUE(settings.conditions.interpolate);
    EXPECT_TRUE(settings.conditions.needByPlace);
    EXPECT_EQ(settings.mapFault, MapFault::Checker);
    EXPECT_EQ(settings.conditions.lambdaDelay, (TransportDelay{400.0, 80.5}));
    EXPECT_EQ(settings.conditions.lambdaLagMs, 100.0);
    EXPECT_EQ(settings.conditions.lambdaNoise, 1.5);
    EXPECT_EQ(settings.conditions.lambdaFault, LambdaFault::Absent);
    EXPECT_EQ(settings.conditions.wetting, 30.0);
    EXPECT_EQ(settings.conditions.wettingTime, 0.25);
    EXPECT_EQ(settings.conditions.enrichment, 20.0);
    EXPECT_TRUE(settings.conditions.coldStart);
    EXPECT_EQ(settings.conditions.throttleNoise, 0.5);
    EXPECT_EQ(parseKeyList(settings,
                           "interpolate=0,need=cell,lambdadelay=usual,lambdalag=60,lambdanoise=usual,"
                           "lambdafault=none,wetting=0,wettingtime=0.5,enrichment=0,coldstart=0,throttlenoise=0"),
              "");
    EXPECT_EQ(settings.conditions, EngineConditions{});
}

TEST(EcuSettings, NamesTheFaultsOfAMapAndOfALambdaSensor) {
    EcuSettings settings;
    for (const auto& [name, fault] : {std::pair{"smooth", MapFault::Smooth},
                                      {"rich", MapFault::Rich},
                                      {"lean", MapFault::Lean},
                                      {"checker", MapFault::Checker},
                                      {"none", MapFault::None}}) {
        EXPECT_EQ(parseKey(settings, "mapfault", name), "");
        EXPECT_EQ(settings.mapFault, fault);
    }
    for (const auto& [name, fault] : {std::pair{"none", LambdaFault::None},
                                      {"stuck", LambdaFault::Stuck},
                                      {"lean", LambdaFault::Lean},
                                      {"rich", LambdaFault::Rich},
                                      {"absent", LambdaFault::Absent},
                                      {"slow", LambdaFault::Slow}}) {
        EXPECT_EQ(parseKey(settings, "lambdafault", name), "");
        EXPECT_EQ(settings.conditions.lambdaFault, fault);
    }
}

TEST(EcuSettings, RefusesWhatMakesNoHardEngine) {
    for (const auto& [key, value] : {std::pair{"interpolate", "2"},
                                     {"need", "1"},
                                     {"mapfault", "12"},
                                     {"mapfault", ""},
                                     {"lambdadelay", "400"},
                                     {"lambdadelay", "400:"},
                                     {"lambdadelay", ":80"},
                                     {"lambdadelay", "400:80:1"},
                                     {"lambdadelay", "-1:80"},
                                     {"lambdadelay", "2001:80"},
                                     {"lambdadelay", "80:2001"},
                                     {"lambdadelay", "nan:80"},
                                     {"lambdalag", "-1"},
                                     {"lambdalag", "10001"},
                                     {"lambdalag", "inf"},
                                     {"lambdanoise", "20.1"},
                                     {"lambdanoise", "1%"},
                                     {"lambdafault", "Stuck"},
                                     {"lambdafault", ""},
                                     {"wetting", "91"},
                                     {"wetting", "-1"},
                                     {"wettingtime", "10.1"},
                                     {"wettingtime", "-1"},
                                     {"enrichment", "101"},
                                     {"enrichment", "-1"},
                                     {"coldstart", "yes"},
                                     {"throttlenoise", "21"},
                                     {"throttlenoise", ""}}) {
        EXPECT_THAT(parsed(key, value), HasSubstr(std::string(key) + " takes ")) << value;
    }
}

TEST(EcuSettings, HelpNamesEveryKey) {
    std::vector<std::string_view> names;
    for (const KeyHelp& help : keyHelp()) {
        names.push_back(help.key);
        EXPECT_FALSE(help.meaning.empty());
        EXPECT_FALSE(help.values.empty());
    }
    EXPECT_THAT(names,
                testing::UnorderedElementsAre(
                    "type", "version", "features", "identity", "payload", "seed", "drive", "eeprom", "save", "lose",
                    "flip", "add", "ignfault", "late", "silent", "refuse", "mute", "restart", "alarm", "cut", "power",
                    "wear", "interpolate", "need", "mapfault", "lambdadelay", "lambdalag", "lambdanoise", "lambdafault",
                    "wetting", "wettingtime", "enrichment", "coldstart", "throttlenoise", "speed", "echo", "stray"));
}

}  // namespace
}  // namespace korvane::ecu
