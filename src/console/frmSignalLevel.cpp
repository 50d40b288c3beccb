#include "console/frmSignalLevel.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "console/frmSignalTrail.h"
#include "console/signal_level.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

frmSignalLevel::frmSignalLevel(const OperationContext& context, Bell& sound,
                               std::int16_t clientIndex, QWidget* parent)
    : QDialog(parent), context_(context) {
    setObjectName(QStringLiteral("frmSignalLevel"));
    setWindowTitle(QStringLiteral("Signal Level"));
    monitor_.ClientIndex = clientIndex;
    new QVBoxLayout(this);
    BuildRadio();
    BuildBar();
    BuildButtons();
    // Below all that was there before, which keeps its place.
    trail_ = new frmSignalTrail(sound, this);
    layout()->addWidget(trail_);
    DisplayClient();
}

void frmSignalLevel::BuildRadio() {
    auto* heading = new QLabel(QStringLiteral("Checking Reception Level from Logger Radio"), this);
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    auto* rows = new QGridLayout;
    rows->setColumnStretch(1, 1);
    lblClientName_ = AddValue(*rows, QStringLiteral("lblClientName"), QStringLiteral("Radio Name:"),
                              QStringLiteral("Name of the radio"));
    lblClientName_->setWordWrap(true);
    lblMacAddress_ =
        AddValue(*rows, QStringLiteral("lblMacAddress"), QStringLiteral("MAC Address:"),
                 QStringLiteral("MAC address of the radio"));
    lblChannel_ = AddValue(*rows, QStringLiteral("lblChannel"), QStringLiteral("Channel (Hex):"),
                           QStringLiteral("Channel of the radio, hexadecimal"));
    lblDBm_ = AddValue(*rows, QStringLiteral("lblDBm"), QStringLiteral("Signal Level:"),
                       QStringLiteral("Signal level of the radio"));
    auto* column = static_cast<QVBoxLayout*>(layout());
    column->addWidget(heading);
    column->addLayout(rows);
}

QLabel* frmSignalLevel::AddValue(QGridLayout& rows, const QString& name, const QString& caption,
                                 const QString& meaning) {
    QLabel* value = ValueLabel(this, name, meaning);
    const int row = rows.rowCount();
    rows.addWidget(new QLabel(caption, this), row, 0, Qt::AlignTop);
    rows.addWidget(value, row, 1, Qt::AlignTop);
    return value;
}

void frmSignalLevel::BuildBar() {
    constexpr int Characters = 50;
    barSignalLevel_ = new QProgressBar(this);
    barSignalLevel_->setObjectName(QStringLiteral("barSignalLevel"));
    barSignalLevel_->setAccessibleName(QStringLiteral("Signal level"));
    barSignalLevel_->setTextVisible(false);
    barSignalLevel_->setRange(0, BarMaximum);
    barSignalLevel_->setValue(0);
    barSignalLevel_->setMinimumWidth(fontMetrics().averageCharWidth() * Characters);
    auto* ends = new QHBoxLayout;
    ends->addWidget(new QLabel(QStringLiteral("-96 DBm"), this));
    ends->addStretch();
    ends->addWidget(new QLabel(QStringLiteral("-40 DBm"), this));
    auto* column = static_cast<QVBoxLayout*>(layout());
    column->addSpacing(fontMetrics().height());
    column->addWidget(barSignalLevel_);
    column->addLayout(ends);
}

void frmSignalLevel::BuildButtons() {
    cmdNext_ = NamedButton(this, QStringLiteral("cmdNext"), QStringLiteral("&Next Radio"));
    QPushButton* cmdExit = NamedButton(this, QStringLiteral("cmdExit"), QStringLiteral("E&xit"));
    cmdExit->setDefault(true);
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(cmdNext_);
    row->addWidget(cmdExit);
    auto* column = static_cast<QVBoxLayout*>(layout());
    column->addSpacing(fontMetrics().height());
    column->addLayout(row);
    column->setSizeConstraint(QLayout::SetFixedSize);
    connect(cmdNext_, &QPushButton::clicked, this, [this] { monitor_.NextRequested = true; });
    connect(cmdExit, &QPushButton::clicked, this, [this] { ExitMonitor(monitor_, *this); });
}

void frmSignalLevel::DisplayClient() {
    ::DisplayClient(context_.book, monitor_, *this);
}

void frmSignalLevel::reject() {
    ExitMonitor(monitor_, *this);
}

void frmSignalLevel::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    // The loop must not keep the window system from finishing what shows the window.
    QMetaObject::invokeMethod(
        this, [this] { RunMonitor(context_, monitor_, *this); }, Qt::QueuedConnection);
}

void frmSignalLevel::closeEvent(QCloseEvent* event) {
    if (!MayCloseMonitor(monitor_)) {
        event->ignore();
        return;
    }
    hide();
    event->accept();
}

void frmSignalLevel::EnableNext(bool enable) {
    cmdNext_->setEnabled(enable);
}

void frmSignalLevel::ShowRadio(const RadioTexts& texts) {
    lblClientName_->setText(ToQt(texts.Name));
    lblMacAddress_->setText(ToQt(texts.MacAddress));
    lblChannel_->setText(ToQt(texts.Channel));
    lblDBm_->setText(ToQt(LevelText(std::nullopt)));
    trail_->Clear();
}

void frmSignalLevel::ShowLevel(const std::string& text, int barLength) {
    lblDBm_->setText(ToQt(text));
    barSignalLevel_->setValue(barLength);
}

void frmSignalLevel::KeepReading(const SignalTrail::Reading& reading) {
    trail_->Add(reading);
}

void SignalForms::ShowMonitor(const OperationContext& context, std::int16_t clientIndex) {
    frmSignalLevel form(context, sound_, clientIndex, &main_);
    form.exec();
}
