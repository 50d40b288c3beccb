#include "platform/qt/qt_host.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QUrl>

#include "common/help_file.h"
#include "platform/qt/text_qt.h"

namespace {

TEST(HostTest, FoldersHaveNoSeparatorAtTheirEnd) {
    EXPECT_EQ(FolderWithoutSeparator(QStringLiteral("/")), "");
    EXPECT_EQ(FolderWithoutSeparator(QString()), "");
#ifndef _WIN32
    EXPECT_EQ(FolderWithoutSeparator(QStringLiteral("/opt/orvia/")), "/opt/orvia");
    EXPECT_EQ(FolderWithoutSeparator(QStringLiteral("/opt/orvia")), "/opt/orvia");
#endif
}

TEST(HostTest, GivesEveryService) {
    QtHost owner;
    Host& host = owner.Services();
    EXPECT_EQ(host.AppPath, FolderWithoutSeparator(QCoreApplication::applicationDirPath()));
    EXPECT_EQ(host.TickMilliseconds, 100);
    EXPECT_FALSE(host.MSComm1.PortOpen());
    host.Events.RunPendingEvents();
    EXPECT_GE(host.Clock.Now().Year, 2024);
    EXPECT_EQ(host.Store.Read("No such section", "No such key"), std::nullopt);
}

TEST(HostTest, FilesGoBesideAProgramWhoseFolderTakesThem) {
    const QTemporaryDir folder;
    EXPECT_EQ(SaveFolderFor(folder.path()), "");
    EXPECT_TRUE(QDir(folder.path()).isEmpty()) << "nothing is left of the try";
}

TEST(HostTest, FilesGoToTheDocumentsWhereTheProgramsFolderTakesNone) {
    const QTemporaryDir home;
    const QByteArray before = qgetenv("HOME");
    const QByteArray configured = qgetenv("XDG_CONFIG_HOME");
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    const QString missing = home.filePath(QStringLiteral("missing"));
    EXPECT_EQ(SaveFolderFor(missing), FromQt(home.path())) << "without a folder for documents";
    QDir(home.path()).mkdir(QStringLiteral("Documents"));
    EXPECT_EQ(SaveFolderFor(missing), FromQt(home.filePath(QStringLiteral("Documents"))));
    before.isNull() ? qunsetenv("HOME") : qputenv("HOME", before);
    configured.isNull() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", configured);
}

TEST(HostTest, TheArchiveLiesInTheUsersDataFolderAndIsNotMadeBeforeItIsNeeded) {
    const QTemporaryDir folder;
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", folder.path().toLocal8Bit());
    QtHost owner;
    ASSERT_NE(owner.Services().Archive, nullptr);
    EXPECT_EQ(owner.Services().UserFolder, FromQt(folder.path()) + "/Orvia");
    EXPECT_EQ(owner.Services().Archive->Place(), FromQt(folder.path()) + "/Orvia/archive.sqlite");
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
    owner.Services().Archive->Open();
    EXPECT_TRUE(QFile::exists(folder.path() + QStringLiteral("/Orvia/archive.sqlite")));
    before.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", before);
}

TEST(HostTest, HelpOpensAsALocalFile) {
    const QTemporaryDir folder;
    QFile help(QDir(folder.path()).filePath(QStringLiteral("Orvia help & more.chm")));
    ASSERT_TRUE(help.open(QIODevice::WriteOnly));
    help.write("Contents");
    help.close();
    QTextBrowser viewer;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &viewer, "setSource");
    QtHelpViewer().Open(FromQt(help.fileName()));
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    EXPECT_EQ(viewer.source().toLocalFile(), help.fileName());
}

#ifndef _WIN32
TEST(HostTest, APageOfACompiledHelpFileOpensTheFile) {
    const QTemporaryDir folder;
    QFile help(QDir(folder.path()).filePath(QStringLiteral("Orvia.chm")));
    ASSERT_TRUE(help.open(QIODevice::WriteOnly));
    help.write("Contents");
    help.close();
    QTextBrowser viewer;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &viewer, "setSource");
    QtHelpViewer().Open(HelpTopic(FromQt(help.fileName()), "setup.html"));
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    EXPECT_EQ(viewer.source().toLocalFile(), help.fileName());
}
#endif

}  // namespace
