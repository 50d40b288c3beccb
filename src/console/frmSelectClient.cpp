#include "console/frmSelectClient.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QPainter>
#include <QStyle>

#include "platform/qt/text_qt.h"
#include "platform/qt/twips.h"

namespace {

/// Stands below the list, which has no buttons.
QString Hint() {
    return QStringLiteral("Enter or a click chooses, Escape leaves");
}

}  // namespace

frmSelectClient::frmSelectClient(const std::vector<std::string>& names, QWidget* parent)
    : QDialog(parent), lstClients_(new QListWidget(this)) {
    constexpr int InsetTwips = 1000;
    constexpr int Characters = 40;
    setObjectName(QStringLiteral("frmSelectClient"));
    setWindowTitle(QStringLiteral("Select Client"));
    lstClients_->setObjectName(QStringLiteral("lstClients"));
    lstClients_->setAccessibleName(QStringLiteral("Client Radios"));
    lstClients_->setAccessibleDescription(Hint());
    lstClients_->setUniformItemSizes(true);
    lstClients_->setMinimumWidth(fontMetrics().averageCharWidth() * Characters);
    for (const std::string& name : names) {
        lstClients_->addItem(ToQt(name));
    }
    lstClients_->setCurrentRow(0);
    lstClients_->installEventFilter(this);
    connect(lstClients_, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { Choose(lstClients_->row(item)); });
    auto* column = new QVBoxLayout(this);
    column->addWidget(lstClients_);
    QMargins around = column->contentsMargins();
    around.setBottom(fontMetrics().height() * 2);
    column->setContentsMargins(around);
    if (parent != nullptr) {
        const int inset = PixelsOfTwips(InsetTwips);
        move(parent->window()->pos() + QPoint(inset, inset));
    }
}

void frmSelectClient::reject() {
    Tag.clear();
    hide();
}

void frmSelectClient::paintEvent(QPaintEvent* event) {
    QDialog::paintEvent(event);
    QPainter painter(this);
    const QRect list = lstClients_->geometry();
    const QRect below(list.left(), list.bottom(), list.width(), height() - list.bottom());
    style()->drawItemText(&painter, below, Qt::AlignLeft | Qt::AlignVCenter, palette(), true,
                          Hint(), QPalette::WindowText);
}

bool frmSelectClient::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<const QKeyEvent*>(event)->key();
        const QList<QListWidgetItem*> selected = lstClients_->selectedItems();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && !selected.isEmpty()) {
            Choose(lstClients_->row(selected.front()));
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmSelectClient::Choose(int row) {
    chosen_ = row + 1;
    Tag = "Okay";
    hide();
}
