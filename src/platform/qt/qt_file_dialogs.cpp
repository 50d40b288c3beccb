#include "platform/qt/qt_file_dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QPointer>

#include "platform/qt/file_query.h"
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

// `modes` sets what tells one dialog from the other.
template <typename Modes>
std::optional<std::string> Ask(const FileQuery& query, Modes modes) {
    // The window below may go while the dialog stands, and takes the dialog with it.
    const QPointer<QFileDialog> dialog(new QFileDialog(QApplication::activeWindow()));
    modes(*dialog);
    Fill(*dialog, query);
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
    return Ask(query, [](QFileDialog& dialog) {
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::ExistingFile);
    });
}

std::optional<std::string> QtFileDialogs::PickForSaving(const FileQuery& query,
                                                        bool promptOverwrite) {
    return Ask(query, [promptOverwrite](QFileDialog& dialog) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setOption(QFileDialog::DontConfirmOverwrite, !promptOverwrite);
#ifndef Q_OS_WIN
        // Some desktops' own dialogs ask about overwriting whatever they are told.
        dialog.setOption(QFileDialog::DontUseNativeDialog, !promptOverwrite);
#endif
    });
}
