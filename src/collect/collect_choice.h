#ifndef ORVIA_COLLECT_COLLECT_CHOICE_H
#define ORVIA_COLLECT_COLLECT_CHOICE_H

/// Which loggers are collected from.
enum class CollectScope {
    Windows,   ///< those whose window is open
    WholeBook  ///< all of the address book; windows that are not open are opened for it
};

/// What a collection does.
struct CollectChoice {
    CollectScope Scope = CollectScope::Windows;
    bool SyncTime = false;  ///< sets the clocks too
    bool operator==(const CollectChoice&) const = default;
};

#endif  // ORVIA_COLLECT_COLLECT_CHOICE_H
