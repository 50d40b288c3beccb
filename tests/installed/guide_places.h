#ifndef ORVIA_TESTS_INSTALLED_GUIDE_PLACES_H
#define ORVIA_TESTS_INSTALLED_GUIDE_PLACES_H

#include <QSettings>
#include <QString>
#include <memory>

namespace installed {

/// Where an installed console, and the site that it practises on, have what the walk needs.
struct Places {
    QString Simulator;  ///< its program, or the folder in which one asks for it
    QString Network;
    QString Link;     ///< the port that the simulator answers on, as the simulator is told
    QString Shipped;  ///< the address book of the site
    QString Book;     ///< the operator's copy
    QString Archive;
};

[[nodiscard]] Places FindPlaces();

/// The console's settings, which must be those of a first start; null if they are not.
[[nodiscard]] std::unique_ptr<QSettings> FirstSettings();

}  // namespace installed

#endif  // ORVIA_TESTS_INSTALLED_GUIDE_PLACES_H
