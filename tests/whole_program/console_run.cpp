#include "whole_program/console_run.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QDropEvent>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace whole_program {

namespace {

template <typename Object>
Object& Find(QObject& parent, const QString& name) {
    auto* found = parent.findChild<Object*>(name);
    if (found == nullptr) {
        QStringList names;
        for (const Object* object : parent.findChildren<Object*>()) {
            names << object->objectName();
        }
        throw std::runtime_error("no " + name.toStdString() + " among " +
                                 names.join(QStringLiteral(", ")).toStdString());
    }
    return *found;
}

/// The host with another clock.
Host WithClock(const Host& host, SystemClock& clock, SharedArchive& shared) {
    return {.MSComm1 = host.MSComm1,
            .Events = host.Events,
            .Boxes = host.Boxes,
            .Dialogs = host.Dialogs,
            .Store = host.Store,
            .Clock = clock,
            .Help = host.Help,
            .LocalMachine = host.LocalMachine,
            .Inquiry = host.Inquiry,
            .Sound = host.Sound,
            .AppPath = host.AppPath,
            .TickMilliseconds = host.TickMilliseconds,
            .Archive = host.Archive,
            .SystemText = host.SystemText,
            .SaveFolder = host.SaveFolder,
            .UserFolder = host.UserFolder,
            .Shared = &shared};
}

[[noreturn]] void GiveUp(const char* what) {
    std::fprintf(stderr, "%s\n", what);
    std::_Exit(2);
}

/// Nothing can be thrown through the toolkit's loop.
void Act(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::exception& failure) {
        GiveUp(failure.what());
    }
}

void AcceptFile(QFileDialog& dialog, const QString& path) {
    dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(path);
    QMetaObject::invokeMethod(&dialog, "accept", Qt::QueuedConnection);
}

}  // namespace

void FirstSettings::Write(const QString& folder) const {
#ifdef _WIN32
    static_cast<void>(folder);
    QSettings settings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Orvia"),
                       QStringLiteral("Orvia"));
#else
    QDir().mkpath(folder + QStringLiteral("/Orvia/ports"));
    QSettings settings(folder + QStringLiteral("/Orvia/Orvia.conf"), QSettings::IniFormat);
#endif
    settings.setValue(QStringLiteral("Configuration/Port"), Port);
    settings.setValue(QStringLiteral("Configuration/Baud"), Baud);
    if (!Book.isEmpty()) {
        settings.setValue(QStringLiteral("Configuration/AddressBook"), Book);
    }
}

Home::Home(const QString& book) {
    for (const char* place : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "APPDATA"}) {
        qputenv(place, folder_.path().toLocal8Bit());
    }
    FirstSettings first;
    if (!book.isEmpty()) {
        QFile::copy(book, Book());
        QFile::setPermissions(Book(), QFile::ReadOwner | QFile::WriteOwner);
        first.Book = Book();
    }
    first.Write(folder_.path());
}

QString Home::PortLink() const {
#ifdef _WIN32
    return QStringLiteral("COM1");
#else
    return PathOf(QStringLiteral("Orvia/ports/COM1"));
#endif
}

QString Home::Book() const {
    return PathOf(QStringLiteral("site.obk"));
}

LocalTime ClockAhead::Now() const {
    const QDateTime now = QDateTime::currentDateTime().addSecs(ahead_);
    const QDate date = now.date();
    const QTime time = now.time();
    return {date.year(),   date.month(),  date.day(), time.hour(),
            time.minute(), time.second(), time.msec()};
}

ConsoleRun::ConsoleRun()
    : clock_(host_.Services().Clock),
      state_(std::make_unique<SharedState>(WithClock(host_.Services(), clock_, sharing_))),
      window_(std::make_unique<frmMain>(*state_)) {
    QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { Look(); });
    watch_.start(20);
}

ConsoleRun::~ConsoleRun() {
    watch_.stop();
    state_->LinkRecord.ShuttingDown = True;
}

void ConsoleRun::Start(const QString& button) {
    if (!button.isEmpty()) {
        OnForm(QStringLiteral("frmConnect"),
               [this, button](QWidget& form) { Click(button, &form); });
    }
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

void ConsoleRun::Drag(int number, int onto) {
    auto& list = Find<QListWidget>(*window_, QStringLiteral("lvwClients"));
    QMimeData dragged;
    dragged.setText(list.item(number - 1)->text());
    const QPoint place = list.visualItemRect(list.item(onto - 1)).center();
    QDragEnterEvent enter(place, Qt::MoveAction, &dragged, Qt::LeftButton, {});
    QApplication::sendEvent(list.viewport(), &enter);
    QDragMoveEvent over(place, Qt::MoveAction, &dragged, Qt::LeftButton, {});
    QApplication::sendEvent(list.viewport(), &over);
    QDropEvent drop(place, Qt::MoveAction, &dragged, Qt::LeftButton, {});
    QApplication::sendEvent(list.viewport(), &drop);
}

void ConsoleRun::Click(const QString& name, QWidget* parent) {
    auto& button = Find<QAbstractButton>(parent == nullptr ? *window_ : *parent, name);
    if (!RunUntil([&button] { return button.isEnabled(); }, 2000)) {
        throw std::runtime_error(name.toStdString() + " stays disabled");
    }
    // On the left, where a check box or an option has its mark.
    constexpr int Mark = 8;
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(Mark, button.height() / 2));
}

void ConsoleRun::Choose(const QString& name, QWidget* parent) {
    auto& row = Find<QAction>(parent == nullptr ? *window_ : *parent, name);
    if (!RunUntil([&row] { return row.isEnabled(); }, 2000)) {
        throw std::runtime_error(name.toStdString() + " stays disabled");
    }
    row.trigger();
}

void ConsoleRun::Type(QWidget& form, const QString& name, const QString& text) {
    auto& widget = Find<QWidget>(form, name);
    auto* list = qobject_cast<QComboBox*>(&widget);
    auto* field = list != nullptr ? list->lineEdit() : qobject_cast<QLineEdit*>(&widget);
    if (field == nullptr || !field->isEnabled()) {
        throw std::runtime_error(name.toStdString() + " takes no text");
    }
    // Without a window manager nobody activates the window behind a dialog that went.
    form.activateWindow();
    static_cast<void>(RunUntil([&form] { return form.isActiveWindow(); }, 2000));
    widget.setFocus();
    field->selectAll();
    QTest::keyClicks(&widget, text);
    // Some fields have moved on by themselves.
    if (widget.hasFocus()) {
        QTest::keyClick(&widget, Qt::Key_Tab);
    }
}

void ConsoleRun::Select(QWidget& form, const QString& name, const QString& beginning) {
    auto& list = Find<QComboBox>(form, name);
    const int item = list.findText(beginning, Qt::MatchStartsWith);
    if (item < 0) {
        throw std::runtime_error(name.toStdString() + " has no " + beginning.toStdString());
    }
    list.setFocus();
    list.setCurrentIndex(item);
    Q_EMIT list.activated(item);  // as a choice by hand does
}

QString ConsoleRun::TextOf(QWidget& parent, const QString& name) {
    auto& widget = Find<QWidget>(parent, name);
    if (const auto* log = qobject_cast<QPlainTextEdit*>(&widget)) {
        return log->toPlainText();
    }
    if (const auto* list = qobject_cast<QComboBox*>(&widget)) {
        return list->currentText();
    }
    return widget.property("text").toString();
}

void ConsoleRun::OnForm(const QString& name, FormAction action) {
    forms_[name].push_back(std::move(action));
}

void ConsoleRun::When(std::function<bool()> holds, std::function<void()> act) {
    awaited_.push_back({std::move(holds), std::move(act)});
    sinceLastAwaited_.start();
}

QWidget* ConsoleRun::Modal(const QString& name) {
    QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr && modal->objectName() == name ? modal : nullptr;
}

bool ConsoleRun::AllCameUp() const {
    return answers_.empty() && picks_.empty() && awaited_.empty() &&
           std::all_of(forms_.begin(), forms_.end(),
                       [](const auto& form) { return form.second.empty(); });
}

void ConsoleRun::RunFor(int milliseconds) {
    static_cast<void>(RunUntil([] { return false; }, milliseconds));
}

void ConsoleRun::LookAway(int milliseconds) {
    watch_.stop();
    QTimer::singleShot(milliseconds, &watch_, [this] { watch_.start(); });
}

void ConsoleRun::LeaveAlone(int milliseconds) {
    watch_.stop();
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
    watch_.start();
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

void ConsoleRun::Look() {
    ActWhenItHolds();
    QWidget* modal = QApplication::activeModalWidget();
    if (auto* box = qobject_cast<QMessageBox*>(modal)) {
        AnswerBox(*box);
    } else if (auto* dialog = qobject_cast<QFileDialog*>(modal)) {
        if (!picks_.empty()) {
            AcceptFile(*dialog, picks_.front());
            picks_.pop_front();
        }
    } else if (modal != nullptr) {
        AnswerForm(*modal);
    }
}

void ConsoleRun::AnswerBox(QMessageBox& box) {
    const QString details = box.informativeText();
    boxes_ << box.windowTitle() + QStringLiteral(": ") + box.text() +
                  (details.isEmpty() ? QString() : QLatin1Char('\n') + details);
    QAbstractButton* button = box.defaultButton();
    if (!answers_.empty() && box.button(answers_.front()) != nullptr) {
        button = box.button(answers_.front());
        answers_.pop_front();
    }
    button->click();
}

void ConsoleRun::AnswerForm(QWidget& form) {
    const QString name = form.objectName();
    const auto told = forms_.find(name);
    if (told == forms_.end() || told->second.empty() || !acted_.insert(name).second) {
        return;
    }
    const FormAction action = std::move(told->second.front());
    told->second.pop_front();
    const auto act = [this, action, name, &form] {
        Act([&] { action(form); });
        acted_.erase(name);
    };
    // Queued: what the action brings up is answered by this very timer.
    QMetaObject::invokeMethod(&watch_, act, Qt::QueuedConnection);
}

void ConsoleRun::ActWhenItHolds() {
    constexpr qint64 Patience = 300000;  // milliseconds
    if (awaited_.empty()) {
        return;
    }
    if (awaited_.front().Holds()) {
        const std::function<void()> act = std::move(awaited_.front().Act);
        awaited_.pop_front();
        sinceLastAwaited_.start();
        Act(act);
    } else if (sinceLastAwaited_.hasExpired(Patience)) {
        GiveUp("what was waited for does not come");
    }
}

}  // namespace whole_program
