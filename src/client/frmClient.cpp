#include "client/frmClient.h"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QIcon>
#include <QMdiArea>
#include <QMouseEvent>
#include <QPushButton>
#include <algorithm>
#include <cmath>

#include "client/layout.h"
#include "platform/qt/frame_press.h"
#include "platform/qt/pictures.h"
#include "platform/qt/text_qt.h"
#include "records/address_book.h"

// The pictures lie in a static library, which keeps them only for who asks.
static void KeepPictures() {
    Q_INIT_RESOURCE(client);
    Q_INIT_RESOURCE(icons);
}

std::shared_ptr<frmClient> frmClient::Make(ClientContext& context) {
    auto* const made = new frmClient(context);
    // A main window that goes first takes the window with it. Otherwise it goes with its last
    // holder, but not before the event is over in which that one lets go.
    return {made, [life = std::weak_ptr<const bool>(made->life_)](frmClient* window) {
                if (!life.expired()) {
                    window->deleteLater();
                }
            }};
}

frmClient::frmClient(ClientContext& context)
    : content_(new QWidget), controls_(*content_), model_(context, *this) {
    PrepareWindow();
    ConnectButtons();
    WatchPresses();
    PrepareTimer(context.Outside.TickMilliseconds);
    model_.Load();
    controls_.FixBars(model_.Record, model_.Panel());
}

void frmClient::PrepareWindow() {
    KeepPictures();
    setObjectName(QStringLiteral("frmClient"));
    setAttribute(Qt::WA_DeleteOnClose, false);
    // The display modes set the size: there is nothing to maximize.
    setWindowFlags(Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                   Qt::WindowCloseButtonHint);
    content_->setObjectName(QStringLiteral("content"));
    content_->setAutoFillBackground(true);
    setWidget(content_);
    SetCaption("Client");
    ShowIcon(IconWindowOpen);
}

void frmClient::ConnectButtons() {
    for (std::int16_t mode = DisplaySmall; mode <= DisplayFlow; ++mode) {
        connect(controls_.Button(mode), &QPushButton::clicked, this, [this, mode] {
            const auto hold = weak_from_this().lock();
            model_.ChooseDisplay(mode);
        });
    }
}

void frmClient::PrepareTimer(int milliseconds) {
    Timer1_.setObjectName(QStringLiteral("Timer1"));
    Timer1_.setInterval(milliseconds);
    connect(&Timer1_, &QTimer::timeout, this, &frmClient::OnTimer1);
}

/// Ticks draw bars. They run from a change of what is shown until one of them finds nothing to
/// draw: a window at rest wakes nobody.
void frmClient::WatchBars() {
    if (!unloaded_ && !Timer1_.isActive()) {
        Timer1_.start();
    }
}

void frmClient::WatchPresses() {
    content_->installEventFilter(this);
    for (QWidget* control : content_->findChildren<QWidget*>()) {
        control->installEventFilter(this);
    }
}

void frmClient::SetCaption(const std::string& caption) {
    caption_ = caption;
    setWindowTitle(EscapedTitle(caption));
}

std::string frmClient::LoggerTimeCaption() const {
    return model_.Panel().lblLoggerTime.Text;
}

void frmClient::ShowIcon(std::uint8_t icon) {
    setWindowIcon(Picture(icon == IconAddressed ? QStringLiteral("client-active")
                                                : QStringLiteral("client-open")));
}

bool frmClient::GetStatus() {
    const auto hold = weak_from_this().lock();
    return model_.GetStatus();
}

bool frmClient::GetTime() {
    const auto hold = weak_from_this().lock();
    return model_.GetTime();
}

bool frmClient::ResetPulseAccs() {
    const auto hold = weak_from_this().lock();
    return model_.ResetPulseAccs();
}

bool frmClient::GetSettings() {
    const auto hold = weak_from_this().lock();
    return model_.GetSettings();
}

double frmClient::CalculateFlow(double level, double& velocity) const {
    return model_.CalculateFlow(level, velocity);
}

void frmClient::Unload() {
    if (unloaded_) {
        return;
    }
    const auto hold = weak_from_this().lock();
    unloaded_ = true;
    Timer1_.stop();
    model_.Unload();
    hide();
    if (QMdiArea* area = mdiArea()) {
        area->removeSubWindow(this);
    }
}

void frmClient::closeEvent(QCloseEvent* event) {
    Unload();
    event->accept();
}

void frmClient::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        QMouseEvent move = MoveAheadOf(*event);
        QMdiSubWindow::mouseMoveEvent(&move);
    }
    QMdiSubWindow::mousePressEvent(event);
}

void frmClient::ShowPanel(const ClientPanel& panel) {
    controls_.Show(panel);
    FitWindow();
    WatchBars();
}

// The told size is that of the whole window; a border that leaves the controls too little makes
// it larger.
void frmClient::FitWindow() {
    if (isMinimized() || isMaximized() || !IsDisplayMode(model_.Panel().DisplayMode)) {
        return;
    }
    const ModeSize& told = SizeOfMode(model_.Panel().DisplayMode);
    const auto pixels = [this](std::int32_t twips) {
        return static_cast<int>(std::ceil(twips * controls_.PixelsPerTwip()));
    };
    const QMargins border = contentsMargins();
    resize(
        std::max(pixels(told.Width), pixels(told.ContentWidth) + border.left() + border.right()),
        std::max(pixels(told.Height), pixels(told.ContentHeight) + border.top() + border.bottom()));
}

void frmClient::TakeFocus() {
    if (QMdiArea* area = mdiArea()) {
        area->setActiveSubWindow(this);
    }
    // Whoever works with the keys stays at the button that has it.
    if (!isAncestorOf(QApplication::focusWidget())) {
        setFocus();
    }
}

// A main window that lies behind another keeps its active child.
bool frmClient::IsActiveChild() const {
    const QMdiArea* area = mdiArea();
    return !unloaded_ && area != nullptr && area->currentSubWindow() == this;
}

void frmClient::OnTimer1() {
    const std::vector<BarFill> fills = model_.Tick();
    if (fills.empty()) {
        Timer1_.stop();
    } else {
        controls_.DrawBars(fills);
    }
}

void frmClient::OnPaint() {
    model_.Paint();
    WatchBars();
    // Without settings no tick draws the bars again.
    if (model_.Record.SettingsValid == False) {
        controls_.ClearBars();
    }
}

void frmClient::ShowClientPopup() {
    const auto hold = weak_from_this().lock();
    model_.ShowClientPopup();
}

bool frmClient::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Paint:
            if (watched == content_) {
                OnPaint();
            }
            break;
        case QEvent::MouseButtonPress:
            if (static_cast<QMouseEvent*>(event)->button() == Qt::RightButton &&
                (watched == content_ || controls_.ShowsPopup(watched))) {
                ShowClientPopup();
                return true;
            }
            break;
        case QEvent::ContextMenu:
            // The menu key: who works without a mouse reaches the menu from any control.
            if (static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard) {
                ShowClientPopup();
                return true;
            }
            break;
        default:
            break;
    }
    return QMdiSubWindow::eventFilter(watched, event);
}

void frmClient::resizeEvent(QResizeEvent* event) {
    QMdiSubWindow::resizeEvent(event);
    if (!isMinimized()) {
        model_.Resize();
    }
}

void frmClient::showEvent(QShowEvent* event) {
    QMdiSubWindow::showEvent(event);
    FitWindow();
}

void frmClient::changeEvent(QEvent* event) {
    QMdiSubWindow::changeEvent(event);
    const QEvent::Type type = event->type();
    if (type == QEvent::FontChange || type == QEvent::StyleChange ||
        type == QEvent::PaletteChange) {
        controls_.Restyle();
        controls_.FixBars(model_.Record, model_.Panel());
        FitWindow();
    }
}
