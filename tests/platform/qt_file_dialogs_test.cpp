#include "platform/qt/qt_file_dialogs.h"

#include <gtest/gtest.h>

#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include "platform/qt/text_qt.h"
#include "support/qt/modal_answer.h"

namespace {

/// Dialogs over a folder with the files north.obk and plain.txt in it.
class FileDialogsTest : public ::testing::Test {
 protected:
    void SetUp() override {
        for (const char* name : {"north.obk", "plain.txt"}) {
            QFile file(QDir(folder.path()).filePath(QLatin1String(name)));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        }
    }

    [[nodiscard]] std::string At(const std::string& name) const {
        return FromQt(QDir::toNativeSeparators(folder.path() + QLatin1Char('/'))) + name;
    }

    [[nodiscard]] FileQuery Query(const std::string& initial) const {
        return {"Load Address Book", ".obk", "Address Book Files (*.obk)|*.obk", initial};
    }

    static QLineEdit& NameField(const QFileDialog& dialog) {
        return *dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    }

    /// Types the name and presses Open or Save.
    static void Enter(QFileDialog& dialog, const char* name) {
        NameField(dialog).setText(QLatin1String(name));
        PressDefault(dialog);
    }
    static void PressDefault(QFileDialog& dialog) {
        auto* box = dialog.findChild<QDialogButtonBox*>();
        auto* button =
            box->button(dialog.acceptMode() == QFileDialog::AcceptSave ? QDialogButtonBox::Save
                                                                       : QDialogButtonBox::Open);
        button->setEnabled(true);
        button->click();
    }

    template <typename Picking>
    std::optional<std::string> Pick(Picking pick, std::function<void(QFileDialog&)> act) {
        const ModalAnswer<QFileDialog> answer(std::move(act));
        auto picked = pick();
        EXPECT_TRUE(answer.Given());
        return picked;
    }
    std::optional<std::string> PickExisting(const FileQuery& query,
                                            std::function<void(QFileDialog&)> act) {
        return Pick([&] { return dialogs.PickExisting(query); }, std::move(act));
    }
    std::optional<std::string> PickForSaving(const FileQuery& query, bool prompt,
                                             std::function<void(QFileDialog&)> act) {
        return Pick([&] { return dialogs.PickForSaving(query, prompt); }, std::move(act));
    }

    QTemporaryDir folder;
    QtFileDialogs dialogs;
};

TEST_F(FileDialogsTest, OpensAsAsked) {
    PickExisting(Query(At("*.obk")), [this](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Load Address Book"));
        EXPECT_EQ(dialog.nameFilters(), QStringList(QStringLiteral("Address Book Files (*.obk)")));
        EXPECT_EQ(dialog.directory().canonicalPath(), QDir(folder.path()).canonicalPath());
        EXPECT_EQ(dialog.defaultSuffix(), QStringLiteral("obk"));
        EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
        EXPECT_TRUE(NameField(dialog).text().isEmpty());
        dialog.reject();
    });
}

TEST_F(FileDialogsTest, AnInitialPathMayHaveBackslashes) {
    std::string initial = At("north.obk");
    std::replace(initial.begin(), initial.end(), '/', '\\');
    PickForSaving(Query(initial), true, [this](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().canonicalPath(), QDir(folder.path()).canonicalPath());
        EXPECT_EQ(NameField(dialog).text(), QStringLiteral("north.obk"));
        dialog.reject();
    });
}

TEST_F(FileDialogsTest, CancelGivesNothing) {
    const auto cancel = [](QFileDialog& dialog) { dialog.reject(); };
    EXPECT_EQ(PickExisting(Query(At("*.obk")), cancel), std::nullopt);
    EXPECT_EQ(PickForSaving(Query(At("*.obk")), true, cancel), std::nullopt);
    EXPECT_EQ(PickForSaving(Query(At("*.obk")), false, cancel), std::nullopt);
}

TEST_F(FileDialogsTest, PicksAnExistingFile) {
    const auto enter = [](QFileDialog& dialog) { Enter(dialog, "north.obk"); };
    EXPECT_EQ(PickExisting(Query(At("*.obk")), enter), At("north.obk"));
}

TEST_F(FileDialogsTest, AddsTheExtensionToATypedName) {
    const auto enter = [](QFileDialog& dialog) { Enter(dialog, "north"); };
    EXPECT_EQ(PickExisting(Query(At("*.obk")), enter), At("north.obk"));
    const auto enterNew = [](QFileDialog& dialog) { Enter(dialog, "south"); };
    EXPECT_EQ(PickForSaving(Query(At("*.obk")), true, enterNew), At("south.obk"));
}

TEST_F(FileDialogsTest, KeepsAnExtensionThatWasTyped) {
    const auto enter = [](QFileDialog& dialog) { Enter(dialog, "south.txt"); };
    EXPECT_EQ(PickForSaving(Query(At("*.obk")), true, enter), At("south.txt"));
}

TEST_F(FileDialogsTest, AFileThatDoesNotExistIsNotPicked) {
    ModalAnswer<QMessageBox> warning([](QMessageBox& box) { box.close(); });
    const auto picked = PickExisting(Query(At("*.obk")), [](QFileDialog& dialog) {
        Enter(dialog, "missing.obk");
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    });
    EXPECT_EQ(picked, std::nullopt);
    EXPECT_TRUE(warning.Given());
}

TEST_F(FileDialogsTest, AsksAboutOverwritingWhenTold) {
    ModalAnswer<QMessageBox> question(
        [](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); });
    const auto enter = [](QFileDialog& dialog) { Enter(dialog, "north.obk"); };
    EXPECT_EQ(PickForSaving(Query(At("*.obk")), true, enter), At("north.obk"));
    EXPECT_TRUE(question.Given());
}

TEST_F(FileDialogsTest, DoesNotAskAboutOverwritingWhenNotTold) {
    ModalAnswer<QMessageBox> question([](QMessageBox& box) { box.close(); });
    const auto enter = [](QFileDialog& dialog) { Enter(dialog, "north.obk"); };
    EXPECT_EQ(PickForSaving(Query(At("*.obk")), false, enter), At("north.obk"));
    EXPECT_FALSE(question.Given());
}

TEST_F(FileDialogsTest, StandsOverTheActiveWindow) {
    QWidget window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    PickExisting(Query(""), [&window](QFileDialog& dialog) {
        EXPECT_EQ(dialog.parentWidget(), &window);
        dialog.reject();
    });
}

TEST_F(FileDialogsTest, ADialogWhoseWindowGoesIsCancelled) {
    auto window = std::make_unique<QWidget>();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    const auto close = [&window](QFileDialog&) { window.reset(); };
    EXPECT_EQ(PickForSaving(Query(At("*.obk")), true, close), std::nullopt);
}

}  // namespace
