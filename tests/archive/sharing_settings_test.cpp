#include "archive/sharing_settings.h"

#include <gtest/gtest.h>

#include "support/virtual_host.h"

namespace testing_support {
namespace {

TEST(SharingSettings, NothingStandsInTheStoreUntilSomethingIsChosen) {
    MemoryStore store;
    const SharingChoice choice = ReadSharing(store);
    EXPECT_FALSE(choice.On);
    EXPECT_EQ(choice.Place.Port, 5432);
    EXPECT_TRUE(choice.Keyring);
    EXPECT_TRUE(store.Values.empty());
}

TEST(SharingSettings, ComeBackAsTheyWereKept) {
    MemoryStore store;
    for (const ServerTls tls : {ServerTls::Offered, ServerTls::Demanded, ServerTls::Checked}) {
        const SharingChoice choice{.On = true,
                                   .Place = {.Server = "db.example.org",
                                             .Port = 6000,
                                             .Database = "crew \"one\"",
                                             .User = "Jöran",
                                             .Tls = tls},
                                   .Keyring = false};
        KeepSharing(choice, store);
        EXPECT_EQ(ReadSharing(store), choice);
    }
}

TEST(SharingSettings, WhatCannotBeReadIsTheUsual) {
    MemoryStore store;
    for (const char* port : {"", "0", "65536", "-1", "54x2", "1e3", " 54"}) {
        store.Values["Shared Archive/Port"] = port;
        store.Values["Shared Archive/Encryption"] = "None";
        EXPECT_EQ(ReadSharing(store).Place.Port, 5432) << port;
        EXPECT_EQ(ReadSharing(store).Place.Tls, ServerTls::Offered);
    }
}

struct FlawCase {
    const char* Name;
    TypedPlace Typed;
    std::optional<PlaceField> Wrong;
};

class PlaceFlaws : public testing::TestWithParam<FlawCase> {};

TEST_P(PlaceFlaws, AreToldOfTheFirstFieldThatHasOne) {
    ServerPlace place{.Server = "before"};
    const auto flaw = TakePlace(GetParam().Typed, place);
    ASSERT_EQ(flaw.has_value(), GetParam().Wrong.has_value());
    if (flaw) {
        EXPECT_EQ(flaw->Field, *GetParam().Wrong);
        EXPECT_FALSE(flaw->Words.empty());
        EXPECT_EQ(place.Server, "before");
    }
}

TypedPlace Typed(const std::string& server, const std::string& port = "5432",
                 const std::string& database = "orvia", const std::string& user = "crew") {
    return {.Server = server, .Port = port, .Database = database, .User = user};
}

INSTANTIATE_TEST_SUITE_P(
    All, PlaceFlaws,
    testing::Values(
        FlawCase{"Good", Typed("db.example.org"), {}},
        FlawCase{"Folder", Typed("/var/run/my folder"), {}}, FlawCase{"Address", Typed("::1"), {}},
        FlawCase{"NoServer", Typed(""), PlaceField::Server},
        FlawCase{"BlankServer", Typed("   "), PlaceField::Server},
        FlawCase{"BlankInServer", Typed("my server"), PlaceField::Server},
        FlawCase{"TwoServers", Typed("one,two"), PlaceField::Server},
        FlawCase{"Address2", Typed("postgres://one"), PlaceField::Server},
        FlawCase{"ControlInServer", Typed("one\ttwo"), PlaceField::Server},
        FlawCase{"LongServer", Typed(std::string(256, 'a')), PlaceField::Server},
        FlawCase{"NoPort", Typed("one", ""), PlaceField::Port},
        FlawCase{"PortOfWords", Typed("one", "http"), PlaceField::Port},
        FlawCase{"PortZero", Typed("one", "0"), PlaceField::Port},
        FlawCase{"PortTooLarge", Typed("one", "65536"), PlaceField::Port},
        FlawCase{"PortNegative", Typed("one", "-5"), PlaceField::Port},
        FlawCase{"PortWithFraction", Typed("one", "54.3"), PlaceField::Port},
        FlawCase{"PortFarTooLarge", Typed("one", "99999999999999999999"), PlaceField::Port},
        FlawCase{"NoDatabase", Typed("one", "1", " "), PlaceField::Database},
        FlawCase{"LongDatabase", Typed("one", "1", std::string(64, 'd')), PlaceField::Database},
        FlawCase{"NoUser", Typed("one", "65535", "db", ""), PlaceField::User},
        FlawCase{"ControlInUser", Typed("one", "1", "db", "a\nb"), PlaceField::User}),
    [](const auto& one) { return one.param.Name; });

TEST(SharingSettings, BlanksAroundAFieldAreNoPartOfIt) {
    ServerPlace place;
    ASSERT_FALSE(TakePlace(Typed(" one ", " 99 ", " my base ", " me "), place));
    EXPECT_EQ(place,
              (ServerPlace{.Server = "one", .Port = 99, .Database = "my base", .User = "me"}));
}

TEST(SharingSettings, EachPlaceHasAPasswordOfItsOwn) {
    const ServerPlace place{.Server = "one", .Port = 99, .Database = "base", .User = "me"};
    EXPECT_EQ(PasswordName(place), "me@one:99/base");
}

}  // namespace
}  // namespace testing_support
