#include "platform/qt/named_controls.h"

#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

namespace {

/// Has Enter press the button that it belongs to.
class EnterPresses final : public QObject {
 public:
    explicit EnterPresses(QPushButton* button) : QObject(button), button_(button) {
        button->installEventFilter(this);
    }

 protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) {
            return false;
        }
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter) {
            return false;
        }
        if (!key->isAutoRepeat()) {
            button_->click();
        }
        return true;
    }

 private:
    QPushButton* button_;
};

}  // namespace

QLabel* CaptionFor(QWidget* buddy, const QString& name, const QString& text) {
    auto* label = new QLabel(text, buddy->parentWidget());
    label->setObjectName(name);
    label->setBuddy(buddy);
    return label;
}

QLabel* ValueLabel(QWidget* parent, const QString& name, const QString& meaning) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setAccessibleDescription(meaning);
    return label;
}

QPushButton* NamedButton(QWidget* parent, const QString& name, const QString& text) {
    auto* button = new QPushButton(text, parent);
    button->setObjectName(name);
    new EnterPresses(button);
    return button;
}

void TakeIconsOffButtons(const QDialog& dialog) {
    for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
        button->setIcon({});
    }
}
