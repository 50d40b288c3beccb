#include "common/file_path.h"

#include <gtest/gtest.h>

#include <fstream>

#include "common/file_rewrite.h"
#include "common/line_reader.h"
#include "common/path_text.h"
#include "support/virtual_host.h"

namespace {

using ::testing_support::FreshFolder;

// A folder as people name theirs: letters of two scripts beyond ASCII.
const std::string Green = "Gr\xC3\xBCn \xE6\x9D\xB1";

TEST(FilePath, TakesTextAsUtf8) {
    const std::u8string wanted = u8"Gr\u00FCn \u6771";
    EXPECT_TRUE(FilePath(Green).u8string() == wanted);
}

TEST(FilePath, ABookInAFolderBeyondAsciiIsWrittenFoundAndRead) {
    const std::string folder = JoinPath(FreshFolder("beyond_ascii"), Green);
    std::filesystem::create_directory(FilePath(folder));
    const std::string book = JoinPath(folder, Green + ".obk");
    EXPECT_FALSE(FileExists(book));
    ASSERT_TRUE(RewriteFile(book, "a line\r\n"));
    EXPECT_TRUE(FileExists(book));
    EXPECT_TRUE(IsRegularFile(book));
    TextFile file;
    ASSERT_TRUE(OpenTextFile(book, 100, file));
    std::string line;
    std::getline(file.Stream, line);
    EXPECT_EQ(line, "a line\r");
    // It has the name that the system shows, not one of other characters.
    const std::filesystem::path found =
        std::filesystem::directory_iterator(FilePath(folder))->path();
    EXPECT_TRUE(found.filename().u8string() == u8"Gr\u00FCn \u6771.obk");
}

TEST(Devices, AreKnownInAnyFolderCaseAndWithAnyExtension) {
    for (const char* path :
         {"NUL", "nul", "CON", "PRN", "aux", "COM1", "com9", "LPT3", "CONIN$", "conout$", "NUL.txt",
          "C:\\Books\\NUL", "C:/Books/com1.obk", "Nul .obk", "COM1:", "COM\xC2\xB9", "\\\\.\\COM12",
          "//./COM12", "\\\\.\\PhysicalDrive0"}) {
        EXPECT_TRUE(NamesDevice(path)) << path;
    }
}

TEST(Devices, AreNotWhatOnlyBeginsLikeThem) {
    for (const char* path :
         {"", "NULL", "CONSOLE.obk", "COM", "COM10", "COMA", "LPT", "site.nul", "C:\\NUL\\site.obk",
          "my COM1", "AUXILIARY", ".", ".obk", "\\\\server\\share\\site.obk"}) {
        EXPECT_FALSE(NamesDevice(path)) << path;
    }
}

TEST(Devices, AreNoFilesWhereTheSystemHasThem) {
    const std::string folder = FreshFolder("devices");
    for (const char* name : {"NUL", "COM1", "CON", "aux.obk"}) {
        const std::string path = JoinPath(folder, name);
#ifdef _WIN32
        EXPECT_FALSE(FileExists(path)) << path;
        EXPECT_FALSE(IsRegularFile(path)) << path;
        EXPECT_FALSE(CanRewrite(path)) << path;
        EXPECT_FALSE(RewriteFile(path, "text")) << path;
#else
        EXPECT_TRUE(RewriteFile(path, "text")) << path;
        EXPECT_TRUE(FileExists(path)) << path;
#endif
    }
}

}  // namespace
