#ifndef ORVIA_PLATFORM_QT_QT_SHARING_STORES_H
#define ORVIA_PLATFORM_QT_QT_SHARING_STORES_H

#include <QString>

#include "platform/sharing_stores.h"

/// Stores for the hand-over from the archive in that file to a server of PostgreSQL.
[[nodiscard]] SharingStores SharingStoresFor(const QString& file);

#endif  // ORVIA_PLATFORM_QT_QT_SHARING_STORES_H
