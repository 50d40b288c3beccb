#include "platform/qt/qt_message_boxes.h"

#include <QApplication>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <memory>

#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

namespace {

QMessageBox::Icon IconOf(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::Stop:
            return QMessageBox::Critical;
        case BoxIcon::Exclamation:
            return QMessageBox::Warning;
        case BoxIcon::Information:
            return QMessageBox::Information;
        case BoxIcon::Question:
            return QMessageBox::Question;
        case BoxIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

/// The buttons of a box, the one that Enter presses and the one that closing presses.
struct ButtonSet {
    QMessageBox::StandardButtons All;
    QMessageBox::StandardButton Default = QMessageBox::Ok;
    QMessageBox::StandardButton Closing = QMessageBox::Ok;
};

ButtonSet ButtonsOf(BoxButtons buttons) {
    switch (buttons) {
        case BoxButtons::OkCancel:
            return {QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok, QMessageBox::Cancel};
        case BoxButtons::YesNo:
            return {QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes, QMessageBox::No};
        case BoxButtons::YesNoCancel:
            return {QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes,
                    QMessageBox::Cancel};
        case BoxButtons::Ok:
            break;
    }
    return {QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok};
}

BoxAnswer AnswerOf(QMessageBox::StandardButton button) {
    switch (button) {
        case QMessageBox::Cancel:
            return BoxAnswer::Cancel;
        case QMessageBox::Yes:
            return BoxAnswer::Yes;
        case QMessageBox::No:
            return BoxAnswer::No;
        default:
            return BoxAnswer::Ok;
    }
}

/// A box as wide as the longest line of its text, whose own line breaks are the only ones: the
/// toolkit's box wraps what takes more than half of a screen. Only what no screen holds is wrapped,
/// and a single word that none holds ends at the edge of the box.
class LineBox final : public QMessageBox {
 public:
    using QMessageBox::QMessageBox;

 protected:
    bool event(QEvent* event) override {
        const bool done = QMessageBox::event(event);
        // The toolkit's box has chosen its size.
        if (event->type() == QEvent::LayoutRequest && isVisible()) {
            FitText();
        }
        return done;
    }

    void showEvent(QShowEvent* event) override {
        QMessageBox::showEvent(event);
        const QSize before = size();
        FitText();
        const QSize more = size() - before;
        if (more.isNull()) {
            return;
        }
        // It stands in the middle, by the size that it had.
        const QPoint place = pos() - QPoint(more.width() / 2, more.height() / 2);
        const QRect there = screen()->availableGeometry();
        move(std::max(place.x(), there.left()), std::max(place.y(), there.top()));
    }

 private:
    /// They are wrapped where a line is easy to read; what is copied from them is a line of its
    /// own.
    void FitDetails(int most) {
        constexpr int Characters = 76;
        if (auto* details = findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"))) {
            details->setTextFormat(Qt::PlainText);
            details->setTextInteractionFlags(Qt::TextSelectableByMouse |
                                             Qt::TextSelectableByKeyboard);
            details->setWordWrap(true);
            const int wide = Characters * details->fontMetrics().averageCharWidth();
            details->setMinimumWidth(std::min(wide, most / 2));
        }
    }

    void FitText() {
        auto* label = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        const int most = screen()->availableGeometry().width();
        if (label == nullptr) {
            return;
        }
        label->setWordWrap(false);
        FitDetails(most);
        layout()->activate();
        const int needed = layout()->totalMinimumSize().width();
        label->setWordWrap(needed > most);
        layout()->activate();
        // A long title has made it wider than its text.
        const int width = std::min(std::max(size().width(), needed), most);
        setFixedSize(width, layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width)
                                                          : layout()->totalMinimumSize().height());
        layout()->activate();
        QCoreApplication::removePostedEvents(this, QEvent::LayoutRequest);
    }
};

void SetTitle(QMessageBox& shown, const std::string& title) {
    shown.setWindowTitle(EscapedTitle(title));
    if (title.empty()) {
        // A window without a title would be given the program's name; a blank is a title.
        shown.winId();
        shown.windowHandle()->setTitle(QStringLiteral(" "));
    }
}

void Fill(QMessageBox& shown, const BoxContent& box, const ButtonSet& buttons) {
    shown.setTextFormat(Qt::PlainText);
    shown.setText(ToQt(box.Text));
    shown.setInformativeText(ToQt(box.Details));
    shown.setIcon(IconOf(box.Icon));
    shown.setStandardButtons(buttons.All);
    shown.setDefaultButton(buttons.Default);
    shown.setEscapeButton(buttons.Closing);
    TakeIconsOffButtons(shown);
    SetTitle(shown, box.Title);
}

}  // namespace

BoxAnswer QtMessageBoxes::Show(const BoxContent& box) {
    const ButtonSet buttons = ButtonsOf(box.Buttons);
    // The window below may go while the box stands, and takes the box with it.
    const QPointer<QMessageBox> shown(new LineBox(QApplication::activeWindow()));
    Fill(*shown, box, buttons);
    shown->exec();
    if (shown.isNull()) {
        return AnswerOf(buttons.Closing);
    }
    const QMessageBox::StandardButton pressed = shown->standardButton(shown->clickedButton());
    delete shown.data();
    return AnswerOf(pressed == QMessageBox::NoButton ? buttons.Closing : pressed);
}
