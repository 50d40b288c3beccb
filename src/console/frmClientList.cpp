#include "console/frmClientList.h"

#include <QDrag>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <utility>

#include "console/list_drop.h"
#include "platform/qt/text_qt.h"

ClientListWidget::ClientListWidget(QWidget* parent, Events events)
    : QListWidget(parent), events_(std::move(events)) {
    setObjectName(QStringLiteral("lvwClients"));
    setAccessibleName(QStringLiteral("Client Radios"));
    setUniformItemSizes(true);
    setDragDropMode(QAbstractItemView::DragDrop);
    setDropIndicatorShown(false);
    setDefaultDropAction(Qt::MoveAction);
}

std::string ClientListWidget::ItemText(int number) const {
    return FromQt(item(number - 1)->text());
}

void ClientListWidget::SetItemText(int number, const std::string& text) {
    if (QListWidgetItem* shown = item(number - 1)) {
        shown->setText(ToQt(text));
    }
}

int ClientListWidget::ItemTop(int number) const {
    return visualItemRect(item(number - 1)).top();
}

void ClientListWidget::SelectItem(int number) {
    setCurrentRow(number - 1);
}

void ClientListWidget::RemoveItem(int number) {
    delete takeItem(number - 1);
}

QItemSelectionModel::SelectionFlags ClientListWidget::selectionCommand(const QModelIndex& index,
                                                                       const QEvent* event) const {
    const bool clicked = event != nullptr && (event->type() == QEvent::MouseButtonPress ||
                                              event->type() == QEvent::MouseButtonRelease);
    return clicked && !index.isValid() ? QItemSelectionModel::NoUpdate
                                       : QListWidget::selectionCommand(index, event);
}

void ClientListWidget::mousePressEvent(QMouseEvent* event) {
    pressed_ = true;
    QListWidget::mousePressEvent(event);
}

void ClientListWidget::mouseReleaseEvent(QMouseEvent* event) {
    QListWidget::mouseReleaseEvent(event);
    // A drag takes the release for itself on most systems, not on all.
    if (!std::exchange(pressed_, false)) {
        return;
    }
    event->button() == Qt::RightButton ? events_.MenuAsked() : events_.Clicked();
}

void ClientListWidget::startDrag(Qt::DropActions /*actions*/) {
    const QListWidgetItem* dragged = currentItem();
    if (dragged == nullptr) {
        return;
    }
    pressed_ = false;
    auto* drag = new QDrag(this);
    auto* text = new QMimeData;
    text->setText(dragged->text());
    drag->setMimeData(text);
    drag->exec(Qt::MoveAction | Qt::CopyAction, Qt::MoveAction);
    setState(NoState);
}

void ClientListWidget::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasText()) {
        event->acceptProposedAction();
    }
}

void ClientListWidget::dragMoveEvent(QDragMoveEvent* event) {
    // Scrolls near the edges.
    QListWidget::dragMoveEvent(event);
    if (event->mimeData()->hasText()) {
        DragOverList(*this, event->position().toPoint().y());
        event->acceptProposedAction();
    }
}

void ClientListWidget::dropEvent(QDropEvent* event) {
    stopAutoScroll();
    const QMimeData& dragged = *event->mimeData();
    const int y = event->position().toPoint().y();
    event->acceptProposedAction();
    events_.Dropped(dragged.hasText() ? std::optional(FromQt(dragged.text())) : std::nullopt, y);
}
