#include "link/frmConnectSetup.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextDocument>

#include "link/book_choice.h"
#include "link/connect_setup.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

// The pictures lie in a static library, which keeps them only for who asks.
static void KeepPictures() {
    Q_INIT_RESOURCE(icons);
}

namespace {

/// Ticks between two looks for ports that were plugged in or out, or taken.
constexpr int LookTicks = 20;

QComboBox* ListCombo(QWidget* parent, const QString& name) {
    constexpr int Characters = 34;
    auto* combo = new QComboBox(parent);
    combo->setObjectName(name);
    // A device can have any name; the list shows it whole, the field as much as there is room for.
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(Characters);
    return combo;
}

}  // namespace

frmConnectSetup::frmConnectSetup(Settings& settings, const Host& host, QWidget* parent)
    : QDialog(parent), settings_(settings), host_(host) {
    setObjectName(QStringLiteral("frmConnectSetup"));
    setWindowTitle(QStringLiteral("Connection Settings"));
    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    auto* rows = new QGridLayout;
    column->addLayout(rows);
    BuildCombos(*rows);
    BuildAddressBook(*rows);
    BuildButtons();
    KeepPictures();
    FillIn();
    connect(&follow_, &QTimer::timeout, this, [this] { ListPorts(); });
    follow_.start(LookTicks * host.TickMilliseconds);
}

void frmConnectSetup::BuildCombos(QGridLayout& rows) {
    cmbPort_ = ListCombo(this, QStringLiteral("cmbPort"));
    cmbBaud_ = ListCombo(this, QStringLiteral("cmbBaud"));
    rows.addWidget(CaptionFor(cmbPort_, QStringLiteral("Label1"), QStringLiteral("&Port")), 0, 0);
    rows.addWidget(cmbPort_, 0, 1);
    rows.addWidget(CaptionFor(cmbBaud_, QStringLiteral("Label2"), QStringLiteral("Baud &Rate")), 1,
                   0);
    rows.addWidget(cmbBaud_, 1, 1);
    chkAutoDisconnect_ = new QCheckBox(QStringLiteral("&Disconnect if Idle for 5 minutes"), this);
    chkAutoDisconnect_->setObjectName(QStringLiteral("chkAutoDisconnect"));
    rows.addWidget(chkAutoDisconnect_, 2, 1);
}

void frmConnectSetup::BuildAddressBook(QGridLayout& rows) {
    txtAddressBook_ = new QLineEdit(this);
    txtAddressBook_->setObjectName(QStringLiteral("txtAddressBook"));
    QPushButton* cmdBrowse =
        NamedButton(this, QStringLiteral("cmdBrowse"), QStringLiteral("&Browse"));
    rows.addWidget(
        CaptionFor(txtAddressBook_, QStringLiteral("Label3"), QStringLiteral("&Address Book")), 3,
        0);
    rows.addWidget(txtAddressBook_, 3, 1);
    rows.addWidget(cmdBrowse, 3, 2);
    connect(cmdBrowse, &QPushButton::clicked, this, [this] { Browse(); });
}

void frmConnectSetup::BuildButtons() {
    QPushButton* cmdOK = NamedButton(this, QStringLiteral("cmdOK"), QStringLiteral("OK"));
    cmdOK->setDefault(true);
    QPushButton* cmdCancel =
        NamedButton(this, QStringLiteral("cmdCancel"), QStringLiteral("Cancel"));
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(cmdOK);
    row->addWidget(cmdCancel);
    auto* column = static_cast<QVBoxLayout*>(layout());
    column->addSpacing(fontMetrics().height());
    column->addLayout(row);
    connect(cmdOK, &QPushButton::clicked, this, [this] { TakeOver(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] {
        if (!loading_) {
            reject();
        }
    });
}

/// Lists the ports as they are now. There is a row for each number at all times, so a choice stays.
Enumerate::PortList frmConnectSetup::ListPorts() {
    Enumerate::PortList found;
    Enumerate::EnumerateSerialPorts(host_.LocalMachine, found);
    const Enumerate::PortList offered = Enumerate::OfferedPorts(found);
    const std::map<int, PortUser> used = host_.Inquiry.UsedPorts();
    for (int number = 1; number <= offered.UpperBound(); ++number) {
        ShowPort(number - 1, offered[number], comm::PortMark(number, used));
    }
    TellUse();
    return offered;
}

/// The field tells of the chosen port what the list tells of each.
void frmConnectSetup::TellUse() {
    cmbPort_->setToolTip(cmbPort_->currentData(Qt::ToolTipRole).toString());
    cmbPort_->setAccessibleDescription(
        cmbPort_->currentData(Qt::AccessibleDescriptionRole).toString());
}

void frmConnectSetup::ShowPort(int item, const std::string& entry, const std::string& mark) {
    const QString text = ToQt(entry);
    if (item == cmbPort_->count()) {
        cmbPort_->addItem(text);
    } else if (cmbPort_->itemText(item) != text) {
        cmbPort_->setItemText(item, text);
    }
    const QString use = ToQt(mark);
    if (cmbPort_->itemData(item, Qt::AccessibleDescriptionRole).toString() == use) {
        return;
    }
    cmbPort_->setItemData(item, use, Qt::AccessibleDescriptionRole);
    cmbPort_->setItemData(item, use.isEmpty() ? use : Qt::convertFromPlainText(use),
                          Qt::ToolTipRole);
    cmbPort_->setItemIcon(
        item, use.isEmpty() ? QIcon() : QIcon(QStringLiteral(":/icons/port-in-use.svg")));
}

void frmConnectSetup::FillIn() {
    const Enumerate::PortList offered = ListPorts();
    for (const std::string_view rate : comm::BaudRates) {
        cmbBaud_->addItem(ToQt(rate));
    }
    cmbPort_->setCurrentIndex(comm::PortChoice(offered, settings_.PortName));
    cmbBaud_->setCurrentIndex(comm::BaudChoice(settings_.BaudRate));
    chkAutoDisconnect_->setChecked(settings_.AutoDisconnect == "1");
    txtAddressBook_->setText(ToQt(settings_.AddressBookPath));
    txtAddressBook_->setCursorPosition(static_cast<int>(txtAddressBook_->text().size()));
    connect(cmbPort_, &QComboBox::currentIndexChanged, this, [this] { TellUse(); });
    TellUse();
    loading_ = false;
}

void frmConnectSetup::Browse() {
    if (const auto chosen =
            host_.Dialogs.PickExisting(BookQuery("Select Address Book", host_.StartFolder()))) {
        txtAddressBook_->setText(ToQt(*chosen));
    }
}

void frmConnectSetup::TakeOver() {
    if (loading_) {
        return;
    }
    const QString path = txtAddressBook_->text();
    const bool kept = path == ToQt(settings_.AddressBookPath);
    const comm::ConnectChoices choices{
        FromQt(cmbPort_->currentText()), FromQt(cmbBaud_->currentText()),
        chkAutoDisconnect_->isChecked(), kept ? settings_.AddressBookPath : FromQt(path)};
    if (comm::TakeChoices(choices, settings_, host_.Boxes)) {
        accept();
    }
}
