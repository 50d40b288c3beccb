#include "collect/digest_settings.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/virtual_host.h"

namespace testing_support {
namespace {

class NotedCommands final : public CommandRunner {
 public:
    bool Start(const std::string& program, const std::vector<std::string>& arguments,
               const std::string& input) override {
        Program = program;
        Arguments = arguments;
        Input = input;
        ++Started;
        return !Refuses;
    }

    std::string Program;
    std::vector<std::string> Arguments;
    std::string Input;
    int Started = 0;
    bool Refuses = false;
};

class DeliveryTest : public testing::Test {
 protected:
    DeliveryTest() : host(outside.AsHost("/nowhere")) {
        host.UserFolder = folder + "/data";
        host.Commands = &commands;
    }
    ~DeliveryTest() override { std::filesystem::remove_all(folder); }
    [[nodiscard]] std::string File() const { return FileContents(folder + "/data/digest.txt"); }

    std::string folder = FreshFolder("digest");
    VirtualHost outside;
    NotedCommands commands;
    Host host;
};

TEST_F(DeliveryTest, TheDigestIsWrittenAndNoCommandIsRunByDefault) {
    EXPECT_EQ(Deliver("Site 1: no answer\n", "2026-11-15 08:30:00", host), "");
    EXPECT_EQ(File(), "Round of 2026-11-15 08:30:00\n\nSite 1: no answer\n");
    EXPECT_EQ(commands.Started, 0);
    KeepDelivery({.RunsCommand = false, .Command = "mail me"}, outside.Store);
    EXPECT_EQ(Deliver("", "2026-11-16 08:30:00", host), "");
    EXPECT_EQ(File(), "Round of 2026-11-16 08:30:00\n\nNothing needs a person.\n");
    EXPECT_EQ(commands.Started, 0);
}

TEST_F(DeliveryTest, TheCommandReadsTheDigestAndIsGivenWhatTheUserTypedAlone) {
    KeepDelivery({.RunsCommand = true, .Command = "/usr/bin/mail -s \"My loggers\" me@here"},
                 outside.Store);
    EXPECT_EQ(Deliver("Site $(reboot) \"; rm\": no answer\n", "then", host), "");
    EXPECT_EQ(commands.Program, "/usr/bin/mail");
    EXPECT_EQ(commands.Arguments, (std::vector<std::string>{"-s", "My loggers", "me@here"}));
    EXPECT_EQ(commands.Input, "Round of then\n\nSite $(reboot) \"; rm\": no answer\n");
}

TEST_F(DeliveryTest, NothingToTellRunsNoCommand) {
    KeepDelivery({.RunsCommand = true, .Command = "mail"}, outside.Store);
    EXPECT_EQ(Deliver("", "then", host), "");
    EXPECT_EQ(commands.Started, 0);
}

TEST_F(DeliveryTest, WhatGoesWrongIsTold) {
    KeepDelivery({.RunsCommand = true, .Command = "mail"}, outside.Store);
    commands.Refuses = true;
    EXPECT_EQ(Deliver("a\n", "then", host), "the command of the digest could not be started");
    KeepDelivery({.RunsCommand = true, .Command = "\"mail"}, outside.Store);
    commands.Refuses = false;
    EXPECT_EQ(Deliver("a\n", "then", host), "the command of the digest could not be started");
    KeepDelivery({}, outside.Store);
    WriteFile(folder + "/data2", "a file");
    host.UserFolder = folder + "/data2";
    EXPECT_TRUE(Deliver("a\n", "then", host).starts_with("The digest could not be written to "));
}

TEST(WordsOfCommand, BlanksPartAndQuotationMarksHoldTogether) {
    EXPECT_EQ(WordsOfCommand(""), (std::vector<std::string>{}));
    EXPECT_EQ(WordsOfCommand("  a   b "), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(WordsOfCommand("\"a b\"c \"\" d"), (std::vector<std::string>{"a bc", "", "d"}));
    EXPECT_EQ(WordsOfCommand("a $B `c` 'd e' \\f"),
              (std::vector<std::string>{"a", "$B", "`c`", "'d", "e'", "\\f"}));
    EXPECT_EQ(WordsOfCommand("a \"b"), (std::vector<std::string>{}));
}

TEST(Limits, ComeBackAsTheyWereKept) {
    MemoryStore store;
    EXPECT_EQ(ReadLimits(store).MemoryRecords, 200'000);
    EXPECT_TRUE(ReadLimits(store).LowestValues.empty());
    DigestLimits limits{.MemoryRecords = 32'000};
    limits.LowestValues[{{0, 0x13, 0xA2, 0x40, 0x5F, 1}, 8}] = 11.5;
    limits.LowestValues[{{0, 0x13, 0xA2, 0x40, 0x5F, 2}, 10}] = -1;
    KeepLimits(limits, store);
    EXPECT_EQ(store.Values["Collect/LowestValues"],
              "00:13:A2:40:5F:01/8=11.5;00:13:A2:40:5F:02/10=-1");
    EXPECT_EQ(ReadLimits(store).LowestValues, limits.LowestValues);
    EXPECT_EQ(ReadLimits(store).MemoryRecords, 32'000);
}

TEST(Limits, WhatIsNoneIsPassedOver) {
    MemoryStore store;
    store.Values["Collect/MemoryRecords"] = "many";
    store.Values["Collect/LowestValues"] =
        "00:13:A2:40:5F:01/11=1;;00:13:A2:40:5F/1=1;00:13:A2:40:5F:0G/1=1;00:13:A2:40:5F:01/2=x;"
        "=/;00:13:A2:40:5F:01/3=7";
    EXPECT_EQ(ReadLimits(store).MemoryRecords, 200'000);
    ASSERT_EQ(ReadLimits(store).LowestValues.size(), 1U);
    EXPECT_EQ(ReadLimits(store).LowestValues.begin()->second, 7);
}

}  // namespace
}  // namespace testing_support
