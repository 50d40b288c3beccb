#include "platform/qt/qt_file_dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>

#include "common/file_rewrite.h"
#include "platform/qt/file_query.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

namespace {

void Fill(QFileDialog& dialog, const FileQuery& query) {
    const StartingPoint start = StartOf(query.InitialName);
    dialog.setWindowTitle(ToQt(query.Title));
    dialog.setNameFilter(NameFilters(query.Filter));
    dialog.setDefaultSuffix(ToQt(query.DefaultExtension));
    if (!start.Folder.isEmpty()) {
        dialog.setDirectory(start.Folder);
    }
    if (!start.Name.isEmpty()) {
        dialog.selectFile(start.Name);
    }
}

/// Stays when the file chosen could not be saved, and tells why.
class SavingDialog final : public QFileDialog {
 public:
    using QFileDialog::QFileDialog;

    void accept() override {
        // A dialog of the system itself stands in place of this one, and is closed by now; it has
        // looked at the path.
        if (testAttribute(Qt::WA_DontShowOnScreen)) {
            return QFileDialog::accept();
        }
        const QStringList files = selectedFiles();
        const QString reason = files.isEmpty() ? QString() : ReasonAgainst(files.front());
        if (reason.isEmpty()) {
            return QFileDialog::accept();
        }
        // A window that goes takes dialog and box with it, so neither is touched behind it.
        const QPointer<QMessageBox> box(
            new QMessageBox(QMessageBox::Warning, windowTitle(), reason, QMessageBox::Ok, this));
        TakeIconsOffButtons(*box);
        box->exec();
        delete box.data();
    }

 private:
    /// In the words that the dialog has for a file to open that is not there.
    static QString ReasonAgainst(const QString& path) {
        const QFileInfo file(path);
        const QString folder = file.absolutePath();
        if (!QFileInfo(folder).isDir()) {
            return tr("%1\nDirectory not found.\nPlease verify the correct directory name was "
                      "given.")
                .arg(QDir::toNativeSeparators(folder));
        }
        // A folder is entered.
        if (!file.isDir() && !CanRewrite(FromQt(path))) {
            return tr("%1\nFile cannot be written.\nPlease verify the correct file name was given.")
                .arg(QDir::toNativeSeparators(path));
        }
        return {};
    }
};

// `modes` sets what tells one dialog from the other.
template <typename Dialog, typename Modes>
std::optional<std::string> Ask(const FileQuery& query, Modes modes) {
    // The window below may go while the dialog stands, and takes the dialog with it.
    const QPointer<Dialog> dialog(new Dialog(QApplication::activeWindow()));
    modes(*dialog);
    Fill(*dialog, query);
    TakeIconsOffButtons(*dialog);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (dialog.isNull()) {
        return std::nullopt;
    }
    const QStringList files = dialog->selectedFiles();
    delete dialog.data();
    if (!accepted || files.isEmpty()) {
        return std::nullopt;
    }
    return FromQt(QDir::toNativeSeparators(files.front()));
}

}  // namespace

std::optional<std::string> QtFileDialogs::PickExisting(const FileQuery& query) {
    return Ask<QFileDialog>(query, [](QFileDialog& dialog) {
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::ExistingFile);
    });
}

std::optional<std::string> QtFileDialogs::PickForSaving(const FileQuery& query,
                                                        bool promptOverwrite) {
    return Ask<SavingDialog>(query, [promptOverwrite](QFileDialog& dialog) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setOption(QFileDialog::DontConfirmOverwrite, !promptOverwrite);
#ifndef Q_OS_WIN
        // Some desktops' own dialogs ask about overwriting whatever they are told, and are closed
        // before the path can be refused.
        dialog.setOption(QFileDialog::DontUseNativeDialog);
#endif
    });
}
