#include "platform/qt/qt_session_start.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

#ifndef _WIN32

class SessionStartTest : public ::testing::Test {
 protected:
    QTemporaryDir home_;
    QString folder_ = home_.filePath(QStringLiteral("config/autostart"));
    QtSessionStart start_{QStringLiteral("/opt/my loggers/orvia"), folder_};
    QString entry_ = QDir(folder_).filePath(QStringLiteral("orvia.desktop"));
};

TEST_F(SessionStartTest, IsOffUntilItIsSwitchedOn) {
    EXPECT_FALSE(start_.IsOn());
    EXPECT_TRUE(start_.Switch(false));
    EXPECT_FALSE(QDir(folder_).exists());
}

TEST_F(SessionStartTest, SwitchedOnAnEntryStartsTheProgram) {
    ASSERT_TRUE(start_.Switch(true));
    EXPECT_TRUE(start_.IsOn());
    QFile entry(entry_);
    ASSERT_TRUE(entry.open(QIODevice::ReadOnly));
    EXPECT_TRUE(entry.readAll().contains("\nExec=\"/opt/my loggers/orvia\" --at-start\n"));
    EXPECT_TRUE(start_.Switch(false));
    EXPECT_FALSE(QFile::exists(entry_));
    EXPECT_FALSE(start_.IsOn());
}

TEST_F(SessionStartTest, AnEntryThatTheDesktopSwitchedOffIsOff) {
    ASSERT_TRUE(start_.Switch(true));
    QFile entry(entry_);
    ASSERT_TRUE(entry.open(QIODevice::Append));
    entry.write("Hidden=true\n");
    entry.close();
    EXPECT_FALSE(start_.IsOn());
    ASSERT_TRUE(start_.Switch(true));
    EXPECT_TRUE(start_.IsOn());
}

TEST_F(SessionStartTest, AFolderThatCannotBeMadeIsTold) {
    QFile file(home_.filePath(QStringLiteral("config")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_FALSE(start_.Switch(true));
    EXPECT_FALSE(start_.IsOn());
}

#endif

}  // namespace
