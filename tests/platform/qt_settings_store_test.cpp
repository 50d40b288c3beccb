#include "platform/qt/qt_settings_store.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <memory>

#include "platform/qt/text_qt.h"

namespace {

const std::string Section = "Configuration";

class SettingsStoreTest : public ::testing::Test {
 protected:
    void Fill(const QByteArray& content) const {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(content);
    }

    /// What a later run of the program finds.
    [[nodiscard]] std::optional<std::string> ReadAgain(const std::string& key) const {
        return QtSettingsStore(file).Read(Section, key);
    }

    void WriteOnce(const std::string& key, const std::string& value) const {
        QtSettingsStore(file).Write(Section, key, value);
    }

    QTemporaryDir folder;
    QString file = QDir(folder.path()).filePath(QStringLiteral("settings.ini"));
};

TEST_F(SettingsStoreTest, AnAbsentKeyGivesNothing) {
    EXPECT_EQ(ReadAgain("Port"), std::nullopt);
}

TEST_F(SettingsStoreTest, AValueIsThereAtOnceAndLater) {
    QtSettingsStore store(file);
    store.Write(Section, "Port", "COM7");
    EXPECT_EQ(store.Read(Section, "Port"), "COM7");
    store.Write(Section, "Port", "COM8");
    EXPECT_EQ(store.Read(Section, "Port"), "COM8");
}

TEST_F(SettingsStoreTest, ValuesAreWrittenWhenTheStoreGoes) {
    WriteOnce("Port", "COM7");
    EXPECT_EQ(ReadAgain("Port"), "COM7");
    EXPECT_EQ(QtSettingsStore(file).Read("Other", "Port"), std::nullopt);
}

TEST_F(SettingsStoreTest, TheFileHoldsASectionWithTheKeysAsTheyAreNamed) {
    QtSettingsStore(file).Write(Section, "Port", "COM7");
    QFile in(file);
    ASSERT_TRUE(in.open(QIODevice::ReadOnly | QIODevice::Text));
    EXPECT_EQ(in.readAll(), QByteArray("[Configuration]\nPort=COM7\n"));
}

TEST_F(SettingsStoreTest, AnEmptyValueIsAValue) {
    WriteOnce("AddressBook", "");
    EXPECT_EQ(ReadAgain("AddressBook"), "");
}

TEST_F(SettingsStoreTest, ValuesOfAnyCharactersComeBack) {
    for (const char* value : {"a,b,c",
                              ",",
                              "C:\\Books\\north.obk",
                              "\\\\server\\share\\x",
                              "\\x41\\n\\0",
                              "100 %",
                              "%20%C3",
                              "\"quoted\"",
                              "'",
                              ";not a comment",
                              "#nor this",
                              "[no section]",
                              "a=b=c",
                              "@Invalid()",
                              "@Variant(x)",
                              "@@",
                              "@",
                              "  blanks around  ",
                              "\ttab\r\nlines\n",
                              "true",
                              "0",
                              "Caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x93\xA1",
                              "/home/x y/\xE6\x9C\xAC.obk"}) {
        WriteOnce("LastFile0", value);
        EXPECT_EQ(ReadAgain("LastFile0"), value);
    }
    const std::string zero("a\0b", 3);
    WriteOnce("LastFile0", zero);
    EXPECT_EQ(ReadAgain("LastFile0"), zero);
}

TEST_F(SettingsStoreTest, APathThatIsNoUtf8ComesBackByteByByte) {
    std::string everyByte;
    for (int byte = 0; byte < 256; ++byte) {
        everyByte += static_cast<char>(byte);
    }
    for (const std::string& value : {std::string("/books/gr\xFC\xDF.obk"), everyByte}) {
        WriteOnce("AddressBook", value);
        EXPECT_EQ(ReadAgain("AddressBook"), value);
    }
}

TEST_F(SettingsStoreTest, NonsenseFilesNeitherFaultNorBarWriting) {
    const QByteArray contents[] = {
        "",
        "\n\n\n",
        "no section at all",
        "[Configuration",
        "[Configuration]\nPort",
        "[Configuration]\n=COM3\nPort=@Variant(\\0\\0\\0\\xff\\xff\\xff\\xff\\xff)",
        "[Configuration]\nPort=@Invalid()\n",
        "[Configuration]\nPort=@ByteArray(abc)\n",
        "[Configuration]\nPort=\"unfinished\n",
        QByteArray(5000, '\xFF'),
        QByteArray(5000, '\0'),
        QByteArray("[Configuration]\nPort=") + QByteArray(100'000, 'x')};
    for (const QByteArray& content : contents) {
        Fill(content);
        EXPECT_NO_THROW(static_cast<void>(ReadAgain("Port"))) << content.left(60).toStdString();
        WriteOnce("Port", "COM4");
        EXPECT_EQ(ReadAgain("Port"), "COM4") << content.left(60).toStdString();
    }
}

TEST_F(SettingsStoreTest, ACommaTypedByHandStays) {
    Fill("[Configuration]\nAddressBook=/books/north,south.obk\nPort=COM3\n");
    EXPECT_EQ(ReadAgain("AddressBook"), "/books/north,south.obk");
    EXPECT_EQ(ReadAgain("Port"), "COM3");
}

TEST_F(SettingsStoreTest, AFolderInPlaceOfTheFileIsNoFault) {
    ASSERT_TRUE(QDir().mkpath(file));
    EXPECT_EQ(ReadAgain("Port"), std::nullopt);
    EXPECT_NO_THROW(WriteOnce("Port", "COM4"));
}

TEST_F(SettingsStoreTest, ItsFolderIsTheOneOfItsFile) {
    EXPECT_EQ(QtSettingsStore(file).Folder(), folder.path());
}

TEST_F(SettingsStoreTest, TheUsersOwnStoreLiesInTheConfigurationFolder) {
    const QString own = QtSettingsStore().Folder();
    EXPECT_TRUE(own.endsWith(QStringLiteral("/Orvia"))) << FromQt(own);
    EXPECT_TRUE(QDir::isAbsolutePath(own));
}

}  // namespace
