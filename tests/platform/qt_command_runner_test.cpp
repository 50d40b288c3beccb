#include "platform/qt/qt_command_runner.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/qt/text_qt.h"
#include "support/qt/run_events.h"

namespace {

#ifndef _WIN32

class CommandRunnerTest : public ::testing::Test {
 protected:
    /// What a file holds once it holds something.
    [[nodiscard]] QByteArray Await(const QString& path) {
        QByteArray contents;
        EXPECT_TRUE(RunEventsUntil([&] {
            QFile file(path);
            contents = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
            return !contents.isEmpty();
        }));
        return contents;
    }

    QTemporaryDir folder_;
    QtCommandRunner runner_;
};

TEST_F(CommandRunnerTest, TheProgramReadsTheInput) {
    const QString out = folder_.filePath(QStringLiteral("out"));
    ASSERT_TRUE(runner_.Start("tee", {FromQt(out)}, "one\ntwo $(three)\n"));
    EXPECT_EQ(Await(out), "one\ntwo $(three)\n");
}

TEST_F(CommandRunnerTest, NoShellLooksAtTheArguments) {
    const std::string name = "a b;touch c$(touch d)`touch e`>f";
    ASSERT_TRUE(runner_.Start("tee", {FromQt(folder_.path()) + "/" + name}, "x"));
    EXPECT_EQ(Await(folder_.filePath(ToQt(name))), "x");
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files).size(), 1);
}

TEST_F(CommandRunnerTest, AProgramThatIsNotThereIsTold) {
    EXPECT_FALSE(runner_.Start(FromQt(folder_.path()) + "/none", {}, "x"));
}

#endif

}  // namespace
