#ifndef ORVIA_CONSOLE_CLIENT_LIST_VIEW_H
#define ORVIA_CONSOLE_CLIENT_LIST_VIEW_H

#include <string>

/// The client list on the screen, as those who change single items of it see it. Items count from
/// 1 and stand in book order.
class ClientListView {
 public:
    virtual ~ClientListView() = default;

    [[nodiscard]] virtual int ItemCount() const = 0;
    /// Text of an item, which must exist.
    [[nodiscard]] virtual std::string ItemText(int item) const = 0;
    /// Changes an item's text; without such an item, nothing.
    virtual void SetItemText(int item, const std::string& text) = 0;
    /// Top edge of an item, in the unit and from the origin of the positions that are dropped at.
    [[nodiscard]] virtual int ItemTop(int item) const = 0;
    /// Makes an item the selected one, the only one.
    virtual void SelectItem(int item) = 0;
    /// Takes an item out; those behind it move up by one.
    virtual void RemoveItem(int item) = 0;
};

#endif  // ORVIA_CONSOLE_CLIENT_LIST_VIEW_H
