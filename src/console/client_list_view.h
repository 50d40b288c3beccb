#ifndef ORVIA_CONSOLE_CLIENT_LIST_VIEW_H
#define ORVIA_CONSOLE_CLIENT_LIST_VIEW_H

#include <string>

/// The client list on the screen, as those who change single items of it see it. Items count from
/// 1 and stand in book order.
class ClientListView {
 public:
    virtual ~ClientListView() = default;

    [[nodiscard]] virtual int ItemCount() const = 0;
    [[nodiscard]] virtual std::string ItemText(int item) const = 0;
    virtual void SetItemText(int item, const std::string& text) = 0;
    /// Top edge of an item, in the unit and from the origin of the positions that are dropped at.
    [[nodiscard]] virtual int ItemTop(int item) const = 0;
    virtual void SelectItem(int item) = 0;
    virtual void RemoveItem(int item) = 0;
};

#endif  // ORVIA_CONSOLE_CLIENT_LIST_VIEW_H
