#include "platform/qt/file_query.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "platform/qt/text_qt.h"

namespace {

TEST(FileQueryTest, FilterNamesItsPatternOnce) {
    EXPECT_EQ(NameFilters("Setup Files (*.set)|*.set"), QStringLiteral("Setup Files (*.set)"));
    EXPECT_EQ(NameFilters("Setup Files|*.set"), QStringLiteral("Setup Files (*.set)"));
}

TEST(FileQueryTest, SeveralFiltersAndPatterns) {
    EXPECT_EQ(NameFilters("Tables (*.tbl;*.txt)|*.tbl;*.txt|All Files|*.*"),
              QStringLiteral("Tables (*.tbl *.txt);;All Files (*.*)"));
}

TEST(FileQueryTest, AFilterWithoutAPatternIsNone) {
    EXPECT_TRUE(NameFilters("").isEmpty());
    EXPECT_TRUE(NameFilters("Setup Files").isEmpty());
}

TEST(FileQueryTest, APatternGivesOnlyItsFolder) {
    const QTemporaryDir folder;
    const StartingPoint start = StartOf(FromQt(folder.path()) + "\\*.obk");
    EXPECT_EQ(QDir(start.Folder), QDir(folder.path()));
    EXPECT_TRUE(start.Name.isEmpty());
}

TEST(FileQueryTest, ANameKeepsItsFolder) {
    const QTemporaryDir folder;
    const StartingPoint start = StartOf(FromQt(folder.path()) + "/north.obk");
    EXPECT_EQ(start.Folder, folder.path() + QLatin1Char('/'));
    EXPECT_EQ(start.Name, QStringLiteral("north.obk"));
}

TEST(FileQueryTest, ANameAloneHasNoFolder) {
    EXPECT_TRUE(StartOf("history.csv").Folder.isEmpty());
    EXPECT_EQ(StartOf("history.csv").Name, QStringLiteral("history.csv"));
    EXPECT_TRUE(StartOf("").Folder.isEmpty());
    EXPECT_TRUE(StartOf("").Name.isEmpty());
}

TEST(FileQueryTest, AFolderThatIsGoneIsLeftOut) {
    EXPECT_TRUE(StartOf("/no/such/folder/x.set").Folder.isEmpty());
    EXPECT_EQ(StartOf("/no/such/folder/x.set").Name, QStringLiteral("x.set"));
}

}  // namespace
