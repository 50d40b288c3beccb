#include "link/frmConnect.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include "link/frmConnectSetup.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

frmConnect::frmConnect(const comm::LinkContext& radio, Settings& settings, const Host& host,
                       QWidget* parent)
    : QDialog(parent), radio_(radio), settings_(settings), host_(host) {
    setObjectName(QStringLiteral("frmConnect"));
    setWindowTitle(QStringLiteral("Connect to Server Radio"));
    auto* row = new QHBoxLayout(this);
    row->setSizeConstraint(QLayout::SetFixedSize);
    BuildLabels();
    BuildButtons();
    ShowLabels(comm::BreaksAtLoad);
}

void frmConnect::BuildLabels() {
    constexpr int Characters = 28;
    auto* frame = new QGroupBox(this);
    frame->setObjectName(QStringLiteral("Frame1"));
    frame->setAccessibleName(QStringLiteral("Connection settings"));
    frame->setMinimumWidth(frame->fontMetrics().averageCharWidth() * Characters);
    auto* column = new QVBoxLayout(frame);
    const auto label = [frame, column](const char* name, const char* meaning) {
        auto* shown = new QLabel(frame);
        shown->setObjectName(QLatin1String(name));
        shown->setTextFormat(Qt::PlainText);
        shown->setAccessibleDescription(QLatin1String(meaning));
        column->addWidget(shown);
        return shown;
    };
    lblPort_ = label("lblPort", "Serial port of the server radio");
    lblBaudRate_ = label("lblBaudRate", "Baud rate of the server radio");
    lblAutoDisconnect_ = label("lblAutoDisconnect", "Whether an idle connection is closed");
    lblAddressBook_ = label("lblAddressBook", "Address book in use");
    layout()->addWidget(frame);
}

void frmConnect::BuildButtons() {
    auto* column = new QVBoxLayout;
    const auto button = [this, column](const char* name, const char* text) {
        QPushButton* made = NamedButton(this, QLatin1String(name), QLatin1String(text));
        column->addWidget(made);
        return made;
    };
    QPushButton* cmdSetup = button("cmdSetup", "Change &Settings");
    QPushButton* cmdConnect = button("cmdConnect", "C&onnect");
    cmdConnect->setDefault(true);
    QPushButton* cmdCancel = button("cmdCancel", "Cancel");
    column->addStretch();
    static_cast<QBoxLayout*>(layout())->addLayout(column);
    connect(cmdSetup, &QPushButton::clicked, this, [this] { ChangeSettings(); });
    connect(cmdConnect, &QPushButton::clicked, this, [this] { Connect(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
    cmdConnect->setFocus();
}

void frmConnect::ChangeSettings() {
    if (dialog_.Connecting != False) {
        return;
    }
    const Settings before = settings_;
    frmConnectSetup(settings_, host_, this).exec();
    comm::SettingsChanged(radio_.link, before, settings_);
    ShowLabels(comm::BreaksAfterSetup);
}

void frmConnect::ShowLabels(int breaks) {
    const comm::ConnectLabels labels = comm::LabelsOf(settings_, breaks);
    lblPort_->setText(ToQt(labels.Port));
    lblBaudRate_->setText(ToQt(labels.BaudRate));
    lblAutoDisconnect_->setText(ToQt(labels.AutoDisconnect));
    lblAddressBook_->setText(ToQt(labels.AddressBook));
}

void frmConnect::reject() {
    if (comm::CancelConnect(radio_.link, dialog_, radio_.boxes)) {
        QDialog::reject();
    }
}

void frmConnect::Connect() {
    if (dialog_.Connecting != False) {
        return;
    }
    comm::Connect(radio_, dialog_, [this](Pointer pointer) {
        radio_.view.SetPointer(pointer);
        pointer == Pointer::Hourglass ? setCursor(Qt::WaitCursor) : unsetCursor();
    });
    accept();
}
