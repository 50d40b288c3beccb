#ifndef ORVIA_CONSOLE_FRM_CLIENT_LIST_H
#define ORVIA_CONSOLE_FRM_CLIENT_LIST_H

#include <QListWidget>
#include <functional>
#include <optional>
#include <string>

#include "console/client_list_view.h"

/// The list of client radios. Items are dragged within it, as their texts; the end of a drag is no
/// click.
class ClientListWidget final : public QListWidget, public ClientListView {
 public:
    /// What the list tells: a click (the selected item counts, wherever it fell), a press for the
    /// menu, and a drop.
    struct Events {
        std::function<void()> Clicked;
        std::function<void()> MenuAsked;
        std::function<void(const std::optional<std::string>& text, int y)> Dropped;
    };

    ClientListWidget(QWidget* parent, Events events);

    [[nodiscard]] int ItemCount() const override { return count(); }
    [[nodiscard]] std::string ItemText(int number) const override;
    void SetItemText(int number, const std::string& text) override;
    [[nodiscard]] int ItemTop(int number) const override;
    void SelectItem(int number) override;
    void RemoveItem(int number) override;

 protected:
    /// A click below the items leaves the highlight where it is: it is for that item.
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex& index, const QEvent* event) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

 private:
    Events events_;
    bool pressed_ = false;  ///< a button went down here, and no drag has begun since
};

#endif  // ORVIA_CONSOLE_FRM_CLIENT_LIST_H
