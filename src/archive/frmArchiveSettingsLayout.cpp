// How the window of the archive's settings is put together; what it does is in
// frmArchiveSettings.cpp.
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

#include "archive/frmArchiveSettings.h"
#include "platform/qt/named_controls.h"

namespace {

QString Named(const char* name) {
    return QString::fromLatin1(name);
}

QLineEdit* Field(QWidget* parent, const char* name, const char* hint) {
    constexpr int longest = 300;
    auto* field = new QLineEdit(parent);
    field->setObjectName(Named(name));
    field->setToolTip(QString::fromLatin1(hint));
    field->setMaxLength(longest);
    return field;
}

QLabel* WrappedLabel(QWidget* parent, const char* name, const char* meaning) {
    QLabel* label = ValueLabel(parent, Named(name), QString::fromLatin1(meaning));
    label->setWordWrap(true);
    return label;
}

}  // namespace

frmArchiveSettings::frmArchiveSettings(const ArchiveSettingsWork& work, QWidget* parent)
    : QDialog(parent), work_(work) {
    setObjectName(Named("frmArchiveSettings"));
    setWindowTitle(QStringLiteral("Archive Settings"));
    setSizeGripEnabled(true);
    auto* column = new QVBoxLayout(this);
    BuildHead(*column);
    BuildServer(*column);
    BuildHandOver(*column);
    column->addStretch();
    BuildButtons(*column);
    OrderTabs();
    constexpr int ticksBetweenLooks = 2;
    refresh_.setInterval(ticksBetweenLooks * work_.outside.TickMilliseconds);
    connect(&refresh_, &QTimer::timeout, this, [this] { Refresh(); });
    ShowKept();
    FitScreen();
}

void frmArchiveSettings::BuildHead(QBoxLayout& column) {
    chkShare_ = new QCheckBox(QStringLiteral("&Share the archive with other consoles"), this);
    chkShare_->setObjectName(Named("chkShare"));
    chkShare_->setToolTip(
        QStringLiteral("Hands each upload over to an archive on a server of PostgreSQL."));
    lblWhyNot_ = WrappedLabel(this, "lblWhyNot", "Why the archive cannot be shared");
    auto* what = new QLabel(
        QStringLiteral("Each upload is kept on this computer first. It is handed over when the "
                       "server answers, by itself, and nothing waits for that."),
        this);
    what->setObjectName(Named("lblWhat"));
    what->setWordWrap(true);
    for (QWidget* row : std::initializer_list<QWidget*>{chkShare_, lblWhyNot_, what}) {
        column.addWidget(row);
    }
    connect(chkShare_, &QCheckBox::toggled, this, [this] { ShowStates(); });
}

void frmArchiveSettings::BuildServer(QBoxLayout& column) {
    grpServer_ = new QGroupBox(QStringLiteral("Server"), this);
    grpServer_->setObjectName(Named("grpServer"));
    auto* grid = new QGridLayout(grpServer_);
    BuildFields(*grid);
    BuildPassword(*grid);
    BuildTest(*grid);
    grid->setColumnStretch(1, 1);
    column.addWidget(grpServer_);
}

void frmArchiveSettings::BuildFields(QGridLayout& grid) {
    constexpr int portCharacters = 8;
    txtServer_ = Field(grpServer_, "txtServer",
                       "Name or address of the server, or the folder of its local socket.");
    txtPort_ = Field(grpServer_, "txtPort", "Where the server listens: 5432 as a rule.");
    txtPort_->setMaximumWidth(fontMetrics().averageCharWidth() * 2 * portCharacters);
    txtDatabase_ = Field(grpServer_, "txtDatabase", "The database that the archive is in.");
    txtUser_ = Field(grpServer_, "txtUser", "Who enters it: one who files, or one who reads.");
    const auto caption = [](QWidget* field, const char* name, const char* text) {
        return CaptionFor(field, Named(name), QString::fromLatin1(text));
    };
    grid.addWidget(caption(txtServer_, "lblServer", "Ser&ver:"), 0, 0);
    grid.addWidget(txtServer_, 0, 1);
    grid.addWidget(caption(txtPort_, "lblPort", "&Port:"), 0, 2);
    grid.addWidget(txtPort_, 0, 3);
    grid.addWidget(caption(txtDatabase_, "lblDatabase", "&Database:"), 1, 0);
    grid.addWidget(txtDatabase_, 1, 1, 1, 3);
    grid.addWidget(caption(txtUser_, "lblUser", "&User:"), 2, 0);
    grid.addWidget(txtUser_, 2, 1, 1, 3);
}

void frmArchiveSettings::BuildPassword(QGridLayout& grid) {
    cmbPassword_ = new QComboBox(grpServer_);
    cmbPassword_->setObjectName(Named("cmbPassword"));
    cmbPassword_->addItems(
        {QStringLiteral("Kept in the Keyring"), QStringLiteral("Left to the File pgpass")});
    txtPassword_ = Field(grpServer_, "txtPassword", "Goes to the keyring, and nowhere else.");
    txtPassword_->setEchoMode(QLineEdit::Password);
    txtPassword_->setAccessibleName(QStringLiteral("Password itself"));
    cmbTls_ = new QComboBox(grpServer_);
    cmbTls_->setObjectName(Named("cmbTls"));
    cmbTls_->addItems({QStringLiteral("Where Offered"), QStringLiteral("Demanded"),
                       QStringLiteral("Demanded, Certificate Checked")});
    cmbTls_->setToolTip(QStringLiteral("Whether what goes to the server and back is encrypted."));
    auto* row = new QHBoxLayout;
    row->addWidget(cmbPassword_);
    row->addWidget(txtPassword_, 1);
    grid.addWidget(CaptionFor(cmbPassword_, Named("lblPassword"), QStringLiteral("Pass&word:")), 3,
                   0);
    grid.addLayout(row, 3, 1, 1, 3);
    grid.addWidget(CaptionFor(cmbTls_, Named("lblTls"), QStringLiteral("&Encryption:")), 4, 0);
    grid.addWidget(cmbTls_, 4, 1, 1, 3);
    connect(cmbPassword_, &QComboBox::currentIndexChanged, this, [this] { ShowStates(); });
}

void frmArchiveSettings::BuildTest(QGridLayout& grid) {
    cmdTest_ = NamedButton(grpServer_, Named("cmdTest"), QStringLiteral("&Test"));
    cmdTest_->setAutoDefault(false);
    cmdTest_->setToolTip(QStringLiteral("Asks the server with what stands here. Nothing is kept."));
    lblTest_ = WrappedLabel(grpServer_, "lblTest", "What came of the test");
    lblTest_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblTest_->setMinimumHeight(3 * fontMetrics().lineSpacing());
    grid.addWidget(cmdTest_, 5, 0, Qt::AlignTop);
    grid.addWidget(lblTest_, 5, 1, 1, 3);
    connect(cmdTest_, &QPushButton::clicked, this, [this] { Test(); });
}

void frmArchiveSettings::BuildHandOver(QBoxLayout& column) {
    auto* group = new QGroupBox(QStringLiteral("Hand-over"), this);
    lblHandOver_ = WrappedLabel(group, "lblHandOver", "How the hand-over stands");
    lblHandOver_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblHandOver_->setMinimumHeight(3 * fontMetrics().lineSpacing());
    cmdAgain_ =
        NamedButton(group, Named("cmdAgain"), QStringLiteral("&Hand Over Everything Again"));
    cmdAgain_->setAutoDefault(false);
    cmdAgain_->setToolTip(
        QStringLiteral("Adds what is missing there, after a server was restored for example."));
    auto* row = new QHBoxLayout;
    row->addWidget(cmdAgain_);
    row->addStretch();
    auto* rows = new QVBoxLayout(group);
    rows->addWidget(lblHandOver_);
    rows->addLayout(row);
    column.addWidget(group);
    connect(cmdAgain_, &QPushButton::clicked, this, [this] { HandOverAgain(); });
}

void frmArchiveSettings::BuildButtons(QBoxLayout& column) {
    lblState_ = WrappedLabel(this, "lblState", "What was done last");
    cmdOK_ = NamedButton(this, Named("cmdOK"), QStringLiteral("&OK"));
    cmdCancel_ = NamedButton(this, Named("cmdCancel"), QStringLiteral("&Cancel"));
    cmdOK_->setDefault(true);
    cmdCancel_->setAutoDefault(false);
    auto* row = new QHBoxLayout;
    row->addWidget(lblState_, 1);
    row->addWidget(cmdOK_, 0, Qt::AlignBottom);
    row->addWidget(cmdCancel_, 0, Qt::AlignBottom);
    column.addLayout(row);
    connect(cmdOK_, &QPushButton::clicked, this, [this] { Accept(); });
    connect(cmdCancel_, &QPushButton::clicked, this, [this] { close(); });
}

void frmArchiveSettings::OrderTabs() {
    QWidget* before = chkShare_;
    for (QWidget* widget : std::initializer_list<QWidget*>{
             txtServer_, txtPort_, txtDatabase_, txtUser_, cmbPassword_, txtPassword_, cmbTls_,
             cmdTest_, cmdAgain_, cmdOK_, cmdCancel_}) {
        setTabOrder(before, widget);
        before = widget;
    }
}

void frmArchiveSettings::FitScreen() {
    constexpr int characters = 84;
    const QSize wanted(fontMetrics().averageCharWidth() * characters, sizeHint().height());
    // Room for the frame that the desktop puts around a window.
    const int frame = 2 * fontMetrics().height();
    resize(wanted.boundedTo(screen()->availableSize() - QSize(frame, frame)));
}
