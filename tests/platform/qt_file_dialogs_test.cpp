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
#include <QTimer>

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
        return FromQt(QDir::toNativeSeparators(QDir(folder.path()).filePath(ToQt(name))));
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

// ----- what cannot be saved is refused

/// Enters one name after the other in a dialog for saving, until one is taken; keeps the boxes that
/// stood over it.
class RefusalTest : public FileDialogsTest {
 protected:
    std::optional<std::string> Try(std::vector<std::string> names, bool prompt = false) {
        QObject context;
        // Each look asks for the next one first: a box stands inside the press that brought it up.
        const std::function<void()> look = [&] {
            QTimer::singleShot(0, &context, look);
            QWidget* window = QApplication::activeModalWidget();
            if (auto* box = qobject_cast<QMessageBox*>(window)) {
                TakeBox(*box);
            } else if (auto* dialog = qobject_cast<QFileDialog*>(window)) {
                names.empty() ? dialog->reject() : Enter(*dialog, TakeFirst(names).c_str());
            }
        };
        look();
        return dialogs.PickForSaving(Query(At("*.obk")), prompt);
    }

    std::vector<std::string> texts;

 private:
    static std::string TakeFirst(std::vector<std::string>& names) {
        std::string first = names.front();
        names.erase(names.begin());
        return first;
    }

    void TakeBox(QMessageBox& box) {
        texts.push_back(FromQt(box.text()));
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Load Address Book"));
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_NE(box.parentWidget(), nullptr);
        auto* yes = box.button(QMessageBox::Yes);
        (yes != nullptr ? yes : box.button(QMessageBox::Ok))->click();
    }
};

TEST_F(RefusalTest, AFolderThatIsMissing) {
    EXPECT_EQ(Try({At("gone/south.obk"), "south.obk"}), At("south.obk")) << "the dialog stayed";
    EXPECT_EQ(texts, std::vector<std::string>{
                         At("gone") + "\nDirectory not found.\n"
                                      "Please verify the correct directory name was given."});
    EXPECT_FALSE(QDir(folder.path()).exists(QStringLiteral("gone")));
}

TEST_F(RefusalTest, AFolderThatIsMissingIsToldWithThePromptToo) {
    EXPECT_EQ(Try({At("gone/south.obk")}, true), std::nullopt);
    EXPECT_EQ(texts.size(), 1U);
}

TEST_F(RefusalTest, AFileInPlaceOfAFolder) {
    EXPECT_EQ(Try({At("north.obk/south.obk")}), std::nullopt);
    EXPECT_EQ(texts.size(), 1U);
}

#ifdef Q_OS_LINUX
TEST_F(RefusalTest, AFolderThatTakesNoFile) {
    // Nobody makes a file there, not even the superuser.
    EXPECT_EQ(Try({"/proc/south.obk", "south.obk"}), At("south.obk"));
    EXPECT_EQ(texts, std::vector<std::string>{"/proc/south.obk\nFile cannot be written.\n"
                                              "Please verify the correct file name was given."});
}

TEST_F(RefusalTest, AFileThatIsNotWritten) {
    // A file that runs is written by nobody.
    EXPECT_EQ(Try({"/proc/self/exe"}), std::nullopt);
    EXPECT_EQ(texts.size(), 1U);
}

TEST_F(RefusalTest, AFolderWithoutPermission) {
    const QString closed = QDir(folder.path()).filePath(QStringLiteral("closed"));
    ASSERT_TRUE(QDir().mkdir(closed));
    QFile::setPermissions(closed, QFile::ReadOwner | QFile::ExeOwner);
    // The superuser makes files there all the same.
    const bool open = QFile(closed + QStringLiteral("/probe")).open(QIODevice::WriteOnly);
    const auto picked = Try({At("closed/south.obk")});
    EXPECT_EQ(picked.has_value(), open);
    EXPECT_EQ(texts.size(), open ? 0U : 1U);
    QFile::setPermissions(closed, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(RefusalTest, NoDevice) {
    const QDir here(folder.path());
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/null"), here.filePath(QStringLiteral("a.obk"))));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), here.filePath(QStringLiteral("b.obk"))));
    EXPECT_EQ(Try({"a.obk"}), At("a.obk"));
    EXPECT_EQ(Try({"b.obk"}), At("b.obk"));
    EXPECT_TRUE(texts.empty());
    EXPECT_EQ(Try({"b.obk"}, true), At("b.obk"));
    EXPECT_EQ(texts.size(), 1U) << "it exists, so the prompt comes";
}
#endif

TEST_F(RefusalTest, NoFileThatIsThereOrCanBeMade) {
    EXPECT_EQ(Try({"north.obk"}), At("north.obk"));
    EXPECT_EQ(Try({"south"}), At("south.obk"));
    EXPECT_TRUE(texts.empty());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files),
              (QStringList{QStringLiteral("north.obk"), QStringLiteral("plain.txt")}));
}

TEST_F(RefusalTest, AFolderIsEnteredInstead) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("inner.obk")));
    EXPECT_EQ(Try({"inner.obk", "south.obk"}), At("inner.obk/south.obk"));
    EXPECT_TRUE(texts.empty());
}

TEST_F(RefusalTest, AWindowThatGoesBehindTheBoxTakesTheDialogWithIt) {
    auto window = std::make_unique<QWidget>();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    ModalAnswer<QMessageBox> refusal([&window](QMessageBox&) { window.reset(); });
    const std::string gone = At("gone/south.obk");
    const auto enter = [&gone](QFileDialog& dialog) { Enter(dialog, gone.c_str()); };
    EXPECT_EQ(PickForSaving(Query(At("*.obk")), true, enter), std::nullopt);
    EXPECT_TRUE(refusal.Given());
}

// ----- windows

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
