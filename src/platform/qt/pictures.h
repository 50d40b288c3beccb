#ifndef ORVIA_PLATFORM_QT_PICTURES_H
#define ORVIA_PLATFORM_QT_PICTURES_H

#include <QIcon>
#include <QString>

/// The icon of that name in data/icons, in all sizes in which the build has drawn it.
[[nodiscard]] QIcon Picture(const QString& name);

#endif  // ORVIA_PLATFORM_QT_PICTURES_H
