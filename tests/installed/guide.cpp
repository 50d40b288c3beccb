#include "installed/guide.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPixmap>

namespace installed {

namespace {

constexpr int Patience = 60000;   // milliseconds
constexpr unsigned Between = 20;  // two looks

template <typename Control>
Control* ControlOf(const QString& form, const QString& name) {
    QWidget* shown = Guide::Form(form);
    return shown == nullptr ? nullptr : shown->findChild<Control*>(name);
}

QMessageBox* ShownBox() {
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

QString WordsOf(const QMessageBox& box) {
    return box.windowTitle() + QStringLiteral(": ") + box.text() + QLatin1Char('\n') +
           box.informativeText();
}

void Click(QWidget& on, const QPoint& at) {
    const QPointF place(at);
    const QPointF global(on.mapToGlobal(at));
    for (const auto kind : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const bool down = kind == QEvent::MouseButtonPress;
        QCoreApplication::postEvent(
            &on, new QMouseEvent(kind, place, global, Qt::LeftButton,
                                 down ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier));
    }
}

QImage PictureOf(QWidget& widget) {
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

}  // namespace

QWidget* Guide::Form(const QString& name) {
    QWidget* found = nullptr;
    for (QWidget* widget : QApplication::allWidgets()) {
        if (widget->objectName() != name || !widget->isVisible()) {
            continue;
        }
        const auto* inside = qobject_cast<QMdiSubWindow*>(widget);
        if (inside == nullptr || found == nullptr ||
            inside->mdiArea()->activeSubWindow() == inside) {
            found = widget;
        }
    }
    return found;
}

void Guide::AwaitUnder(bool boxes, const QString& what, const std::function<bool()>& holds) {
    QElapsedTimer waited;
    waited.start();
    while (!There(holds)) {
        const QString box = boxes ? QString() : There([] {
            const QMessageBox* shown = ShownBox();
            return shown == nullptr ? QString() : WordsOf(*shown);
        });
        if (!box.isEmpty()) {
            throw Wrong(what + QStringLiteral(" is awaited, and a box comes up: ") + box);
        }
        if (waited.elapsed() > Patience) {
            throw Wrong(what + QStringLiteral(" does not come"));
        }
        QThread::msleep(Between);
    }
}

void Guide::Await(const QString& what, const std::function<bool()>& holds) {
    AwaitUnder(false, what, holds);
}

QString Guide::AwaitBox() {
    AwaitUnder(true, QStringLiteral("a message box"), [] { return ShownBox() != nullptr; });
    QString words = There([] { return WordsOf(*ShownBox()); });
    There([] {
        QMetaObject::invokeMethod(ShownBox(), "accept", Qt::QueuedConnection);
        return 0;
    });
    AwaitUnder(true, QStringLiteral("the end of the box"), [] { return ShownBox() == nullptr; });
    return words;
}

void Guide::Press(const QString& form, const QString& button) {
    Await(form + QLatin1Char('.') + button, [&] {
        auto* found = ControlOf<QAbstractButton>(form, button);
        const bool ready = found != nullptr && found->isVisible() && found->isEnabled();
        if (ready) {
            // What it begins may run for long, with windows of its own.
            QMetaObject::invokeMethod(found, "click", Qt::QueuedConnection);
        }
        return ready;
    });
}

void Guide::Choose(const QString& row) {
    Await(row, [&] {
        auto* found = ControlOf<QAction>(QStringLiteral("frmMain"), row);
        const bool ready = found != nullptr && found->isEnabled();
        if (ready) {
            QMetaObject::invokeMethod(found, "trigger", Qt::QueuedConnection);
        }
        return ready;
    });
}

void Guide::Select(const QString& form, const QString& list, const QString& beginning) {
    Await(list + QLatin1Char(' ') + beginning, [&] {
        auto* found = ControlOf<QComboBox>(form, list);
        const int row = found == nullptr ? -1 : found->findText(beginning, Qt::MatchStartsWith);
        if (row >= 0) {
            found->setCurrentIndex(row);
        }
        return row >= 0;
    });
}

void Guide::OpenClient(const QString& site) {
    Await(site + QStringLiteral(" in the list"), [&] {
        auto* list =
            ControlOf<QListWidget>(QStringLiteral("frmMain"), QStringLiteral("lvwClients"));
        const auto rows = list->findItems(site, Qt::MatchExactly);
        if (!rows.isEmpty() && list->isEnabled()) {
            Click(*list->viewport(), list->visualItemRect(rows.first()).center());
        }
        return !rows.isEmpty();
    });
    Await(QStringLiteral("the window of ") + site, [&] {
        const QWidget* window = Form(QStringLiteral("frmClient"));
        return window != nullptr && window->windowTitle().contains(site);
    });
}

QStringList Guide::ItemsOf(const QString& form, const QString& list) {
    return There([&] {
        QStringList items;
        const auto* found = ControlOf<QComboBox>(form, list);
        for (int row = 0; found != nullptr && row < found->count(); ++row) {
            items << found->itemText(row);
        }
        return items;
    });
}

int Guide::InkOf(const QString& form, const QString& button) {
    return There([&] {
        auto* found = ControlOf<QAbstractButton>(form, button);
        if (found == nullptr) {
            return 0;
        }
        const QIcon icon = found->icon();
        const QImage with = PictureOf(*found);
        found->setIcon(QIcon());
        const QImage without = PictureOf(*found);
        found->setIcon(icon);
        int ink = 0;
        for (int y = 0; y < with.height(); ++y) {
            for (int x = 0; x < with.width(); ++x) {
                ink += with.pixel(x, y) != without.pixel(x, y) ? 1 : 0;
            }
        }
        return ink;
    });
}

void Guide::Keep(const QString& folder, const QString& form, const QString& name) {
    if (folder.isEmpty()) {
        return;
    }
    const QString file = QDir(folder).filePath(name + QStringLiteral(".png"));
    const bool kept = There([&] {
        QWidget* shown = Form(form);
        return shown != nullptr && shown->grab().save(file);
    });
    if (!kept) {
        throw Wrong(QStringLiteral("no picture of ") + form + QStringLiteral(" in ") + file);
    }
}

void Guide::KeepAll(const QString& folder) {
    There([&] {
        int number = 0;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (!folder.isEmpty() && window->isVisible()) {
                const QString name = QStringLiteral("wrong-%1.png").arg(++number);
                window->grab().save(QDir(folder).filePath(name));
            }
        }
        return number;
    });
}

}  // namespace installed
