#include "whole_program/console_run.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <stdexcept>

#include "link/frmConnect.h"

namespace whole_program {

namespace {

template <typename Widget>
Widget& Find(QWidget& parent, const QString& name) {
    auto* found = parent.findChild<Widget*>(name);
    if (found == nullptr) {
        QStringList names;
        for (const Widget* widget : parent.findChildren<Widget*>()) {
            names << widget->objectName();
        }
        throw std::runtime_error("no " + name.toStdString() + " among " +
                                 names.join(QStringLiteral(", ")).toStdString());
    }
    return *found;
}

}  // namespace

Home::Home(const QString& book) {
    qputenv("XDG_CONFIG_HOME", folder_.path().toLocal8Bit());
    QDir().mkpath(QFileInfo(PortLink()).path());
    QSettings settings(SettingsFile(), QSettings::IniFormat);
    settings.setValue(QStringLiteral("Configuration/Port"), QStringLiteral("COM1"));
    settings.setValue(QStringLiteral("Configuration/Baud"), QStringLiteral("38400"));
    settings.setValue(QStringLiteral("Configuration/AddressBook"), book);
}

QString Home::PortLink() const {
    return folder_.filePath(QStringLiteral("Orvia/ports/COM1"));
}

QString Home::SettingsFile() const {
    return folder_.filePath(QStringLiteral("Orvia/Orvia.conf"));
}

ConsoleRun::ConsoleRun()
    : state_(std::make_unique<SharedState>(host_.Services())),
      window_(std::make_unique<frmMain>(*state_)) {
    QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { AnswerBoxes(); });
    watch_.start(20);
}

ConsoleRun::~ConsoleRun() {
    watch_.stop();
    state_->LinkRecord.ShuttingDown = True;
}

void ConsoleRun::Start(const QString& button) {
    connectButton_ = button;
    window_->Load();
}

std::shared_ptr<frmClient> ConsoleRun::OpenClient(int number) {
    auto& list = Find<QListWidget>(*window_, QStringLiteral("lvwClients"));
    QListWidgetItem* item = list.item(number - 1);
    list.scrollToItem(item);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(item).center());
    QApplication::processEvents();
    return std::dynamic_pointer_cast<frmClient>(
        state_->Windows.At(state_->Book.Entries[number].WindowIndex));
}

void ConsoleRun::Click(const QString& name, QWidget* parent) {
    auto& button = Find<QAbstractButton>(parent == nullptr ? *window_ : *parent, name);
    if (!RunUntil([&button] { return button.isEnabled(); }, 2000)) {
        throw std::runtime_error(name.toStdString() + " stays disabled");
    }
    QTest::mouseClick(&button, Qt::LeftButton);
}

void ConsoleRun::RunFor(int milliseconds) {
    static_cast<void>(RunUntil([] { return false; }, milliseconds));
}

bool ConsoleRun::RunUntil(const std::function<bool()>& done, int limit) {
    QElapsedTimer elapsed;
    elapsed.start();
    QTimer wake;
    wake.start(10);
    while (!done()) {
        if (elapsed.hasExpired(limit)) {
            return false;
        }
        QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

bool ConsoleRun::Close() {
    return window_->close();
}

void ConsoleRun::AnswerBoxes() {
    QWidget* modal = QApplication::activeModalWidget();
    if (auto* box = qobject_cast<QMessageBox*>(modal)) {
        boxes_ << box->windowTitle() + QStringLiteral(": ") + box->text();
        box->defaultButton()->click();
    } else if (auto* connect = dynamic_cast<frmConnect*>(modal)) {
        if (!connectButton_.isEmpty()) {
            const QString name = std::exchange(connectButton_, QString());
            // Queued: a box that the click brings up is answered by this very timer.
            auto& button = Find<QAbstractButton>(*connect, name);
            QMetaObject::invokeMethod(&button, &QAbstractButton::click, Qt::QueuedConnection);
        }
    }
}

}  // namespace whole_program
