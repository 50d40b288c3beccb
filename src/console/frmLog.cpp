#include "console/frmLog.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QIcon>
#include <QMdiArea>
#include <QPlainTextEdit>
#include <QPushButton>
#include <algorithm>

#include "platform/qt/frame_press.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/pictures.h"
#include "platform/qt/status_line.h"
#include "platform/qt/text_qt.h"

frmLog::frmLog() {
    constexpr int Characters = 66;
    constexpr int Lines = 17;
    setObjectName(QStringLiteral("frmLog"));
    setWindowTitle(QStringLiteral("Multiple Client Operation Log"));
    setWindowIcon(Picture(QStringLiteral("orvia")));
    setAttribute(Qt::WA_DeleteOnClose, false);
    auto* content = new QWidget;
    txtLog_ = new QPlainTextEdit(content);
    txtLog_->setObjectName(QStringLiteral("txtLog"));
    txtLog_->setReadOnly(true);
    txtLog_->setTabChangesFocus(true);
    txtLog_->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtLog_->setAccessibleName(QStringLiteral("Multiple Client Operation Log"));
    cmdClose_ = NamedButton(content, QStringLiteral("cmdClose"), QString());
    connect(cmdClose_, &QPushButton::clicked, this, [this] { PressClose(); });

    auto* column = new QVBoxLayout(content);
    column->addWidget(txtLog_, 1);
    // Not there but for a walk that tells how far it is.
    lblFoot_ = new StatusLine(content, QStringLiteral("lblFoot"));
    lblFoot_->setAccessibleDescription(QStringLiteral("How far the walk is"));
    auto* foot = new QHBoxLayout;
    foot->addWidget(lblFoot_, 1);
    foot->addWidget(cmdClose_, 0, Qt::AlignRight);
    column->addLayout(foot);
    setWidget(content);
    content->setFocusProxy(cmdClose_);
    resize(fontMetrics().averageCharWidth() * Characters, fontMetrics().lineSpacing() * Lines);
    Reset();
}

void frmLog::Reset() {
    txtLog_->clear();
    // A letter that no menu of the main window has: "C" would be that of "Client".
    cmdClose_->setText(QStringLiteral("Canc&el"));
    cancels_ = true;
    CancelRequested = false;
    SetFoot("");
}

void frmLog::SetFoot(const std::string& text) {
    lblFoot_->setVisible(!text.empty());
    lblFoot_->Tell(text, false);
}

void frmLog::AppendText(const std::string& text) {
    txtLog_->moveCursor(QTextCursor::End);
    txtLog_->insertPlainText(ToQt(text));
    txtLog_->moveCursor(QTextCursor::End);
}

std::string frmLog::Text() const {
    return FromQt(txtLog_->toPlainText());
}

void frmLog::EndWalk() {
    cmdClose_->setText(QStringLiteral("Clos&e"));
    cancels_ = false;
}

void frmLog::Unload() {
    if (!loaded_) {
        return;
    }
    loaded_ = false;
    QMdiArea* area = mdiArea();
    HideFromArea();
    if (area != nullptr) {
        area->removeSubWindow(this);
    }
    deleteLater();
}

void frmLog::HideFromArea() {
    hide();
    if (mdiArea() == nullptr) {
        return;
    }
    const QList<QMdiSubWindow*> windows = mdiArea()->subWindowList(QMdiArea::StackingOrder);
    const auto next = std::find_if(windows.rbegin(), windows.rend(), [](QMdiSubWindow* window) {
        return window->isVisible() && !window->isMinimized();
    });
    if (next != windows.rend()) {
        mdiArea()->setActiveSubWindow(*next);
    }
}

void frmLog::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        QMouseEvent move = MoveAheadOf(*event);
        QMdiSubWindow::mouseMoveEvent(&move);
    }
    QMdiSubWindow::mousePressEvent(event);
}

void frmLog::closeEvent(QCloseEvent* event) {
    Unload();
    event->accept();
}

void frmLog::PressClose() {
    if (!cancels_) {
        HideFromArea();
        return;
    }
    if (!CancelRequested) {
        CancelRequested = true;
        AppendText("\nCancel Request...\n");
    }
}
