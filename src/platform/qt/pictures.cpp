#include "platform/qt/pictures.h"

#include <QDir>

QIcon Picture(const QString& name) {
    const QDir folder(QStringLiteral(":/icons/") + name);
    QIcon icon;
    for (const QString& file : folder.entryList(QDir::Files)) {
        icon.addFile(folder.filePath(file));
    }
    return icon;
}
