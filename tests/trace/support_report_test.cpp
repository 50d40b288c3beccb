#include "trace/support_report.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "link/frame_codec.h"
#include "support/virtual_host.h"

namespace {

using testing_support::VirtualHost;

class SupportReportTest : public ::testing::Test {
 protected:
    SupportReportTest() {
        settings_.PortName = "COM5";
        settings_.BaudRate = "38400";
        settings_.AddressBookPath = "/home/ann/clients/Mill Brewery.obk";
        settings_.LastFilePath = "/home/ann/Setups/";
        settings_.LastFile[0] = "C:\\Users\\ann\\deep well.set";
        Add("Hill", 0x1A, 0x44);
        Add("Hill Tanks", 0x1B, 0x45);
        recorder_.SetCommPort(5);
        recorder_.SetPortOpen(true);
    }

    void Add(const std::string& name, std::uint8_t channel, std::uint8_t last) {
        ClientRadio entry;
        entry.Name = name;
        entry.Channel = channel;
        entry.Mac = {0x00, 0xA0, 0x96, 0x00, 0x02, last};
        book_.Entries.Append(entry);
    }
    /// One exchange with the second logger, which is not answered.
    void Ask() {
        recorder_.OnTry({1, 1, 0x1B, {0x00, 0x02, 0x45}});
        recorder_.Output(comm::EncodeFrame(Bytes{0x0C}));
    }
    std::string Part(const std::string& name, bool names) const {
        const SupportSource source{"1.2.3",   "Some System", host_.Clock.Now(), settings_, book_,
                                   recorder_, log_};
        for (const ZipEntry& part : SupportReport(source, names)) {
            if (part.Name == name) {
                return part.Contents;
            }
        }
        ADD_FAILURE() << "no " << name;
        return {};
    }

    VirtualHost host_;
    LinkRecorder recorder_{host_.Port, host_.Clock};
    Settings settings_;
    AddressBook book_;
    std::string log_ = "Getting Sample of Hill Tanks...OK\nGetting Sample of Hill...FAIL\n";
};

bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST_F(SupportReportTest, BeginsWithTheVersions) {
    EXPECT_EQ(Part("versions.txt", true),
              "Orvia: 1.2.3\nSystem: Some System\nReport made: 2026-11-15 08:30:00.000\n"
              "Names: as they are\n");
}

TEST_F(SupportReportTest, PathsLoseTheirFolders) {
    EXPECT_EQ(ShortPath("/home/ann/site.obk", true), ".../site.obk");
    EXPECT_EQ(ShortPath("C:\\Users\\ann\\site.obk", true), "...\\site.obk");
    EXPECT_EQ(ShortPath("/home/ann/Setups/", true), ".../Setups");
    EXPECT_EQ(ShortPath("site.obk", true), "site.obk");
    EXPECT_EQ(ShortPath("", true), "");
    EXPECT_EQ(ShortPath("/", true), "");
    EXPECT_EQ(ShortPath("/home/ann/site.obk", false), ".../(name).obk");
    EXPECT_EQ(ShortPath("/home/ann.b/Setups", false), ".../(name)");
    const std::string text = Part("settings.txt", true);
    EXPECT_TRUE(Holds(text, "Port: COM5\n")) << text;
    EXPECT_TRUE(Holds(text, "Address book: .../Mill Brewery.obk\n")) << text;
    EXPECT_TRUE(Holds(text, "Folder of set-up files: .../Setups\n")) << text;
    EXPECT_TRUE(Holds(text, "Recent set-up file: ...\\deep well.set\n")) << text;
    EXPECT_FALSE(Holds(text, "ann"));
}

TEST_F(SupportReportTest, TheBookIsListed) {
    EXPECT_EQ(Part("book.txt", true),
              "2 loggers\nLogger 1: Hill, channel 1A, MAC 00:A0:96:00:02:44\n"
              "Logger 2: Hill Tanks, channel 1B, MAC 00:A0:96:00:02:45\n");
    EXPECT_EQ(Part("book.txt", false),
              "2 loggers\nLogger 1, channel 1A, MAC 00:A0:96:00:02:44\n"
              "Logger 2, channel 1B, MAC 00:A0:96:00:02:45\n");
}

TEST_F(SupportReportTest, TheTraceStandsInItsOrderWithItsBytes) {
    Ask();
    const std::string text = Part("trace.txt", true);
    EXPECT_EQ(text.rfind("The last 2 of 2 exchanges kept\n", 0), 0U) << text;
    EXPECT_LT(text.find("port: open COM5"), text.find("Hill Tanks (channel 1B")) << text;
    EXPECT_TRUE(Holds(text, "\n    sent: F8 03 0C 00 05 F9\n")) << text;
}

TEST_F(SupportReportTest, WithoutNamesNoTextTellsOne) {
    Ask();
    // What came may hold the name of a logger, byte by byte.
    host_.Port.Receive({0x55, 'H', 'i', 'l', 'l'});
    static_cast<void>(recorder_.Input(5));
    for (const char* part : {"versions.txt", "settings.txt", "book.txt", "trace.txt", "log.txt"}) {
        const std::string text = Part(part, false);
        for (const char* name : {"Hill", "Tanks", "Mill", "deep well", "Setups", "48 69 6C 6C"}) {
            EXPECT_FALSE(Holds(text, name)) << part << ":\n" << text;
        }
    }
    EXPECT_TRUE(Holds(Part("trace.txt", true), "48 69 6C 6C"));
    const std::string trace = Part("trace.txt", false);
    EXPECT_TRUE(Holds(trace, "Logger 2 (channel 1B, MAC 00-02-45)")) << trace;
    EXPECT_TRUE(Holds(trace, "5 bytes")) << trace;
    EXPECT_EQ(Part("log.txt", false),
              "Getting Sample of Logger 2...OK\nGetting Sample of Logger 1...FAIL\n");
}

TEST_F(SupportReportTest, ANameInsideAWordIsNone) {
    EXPECT_EQ(WithoutNames("Hillside, Hill, uphill, \xC3\xA4Hill, Hill2", book_),
              "Hillside, Logger 1, uphill, \xC3\xA4Hill, Hill2");
    EXPECT_EQ(WithoutNames("", book_), "");
    Add("", 0, 1);
    EXPECT_EQ(WithoutNames("some text", book_), "some text");
}

TEST_F(SupportReportTest, OfALongTraceTheNewestGoesIn) {
    for (int i = 0; i < 90'000; ++i) {
        Ask();
    }
    recorder_.SetPortOpen(false);
    const std::string text = Part("trace.txt", true);
    EXPECT_GE(text.size(), MostTraceText);
    EXPECT_LT(text.size(), MostTraceText + 1000);
    EXPECT_EQ(text.rfind("The last ", 0), 0U);
    EXPECT_TRUE(Holds(text, " of 90002 exchanges kept\n"));
    EXPECT_FALSE(Holds(text, "open COM5"));
    EXPECT_TRUE(Holds(text.substr(text.size() - 100), "close COM5"));
}

TEST_F(SupportReportTest, WithoutALogItSaysSo) {
    log_.clear();
    EXPECT_EQ(Part("log.txt", true), "No walk over all client windows has left a log.\n");
}

}  // namespace
