// How the window of regular collections is put together; what it does is in frmCollect.cpp.
#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSpinBox>
#include <QTabWidget>
#include <QTimeEdit>

#include "collect/frmCollect.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

namespace {

QString Named(const char* name) {
    return QString::fromLatin1(name);
}

template <typename Button>
Button* Choice(QWidget* parent, const char* name, const char* text) {
    auto* made = new Button(QString::fromLatin1(text), parent);
    made->setObjectName(Named(name));
    return made;
}

QGroupBox* Group(QWidget* page, QBoxLayout& column, const char* title) {
    auto* group = new QGroupBox(QString::fromLatin1(title), page);
    column.addWidget(group);
    return group;
}

QPlainTextEdit* ReadText(QWidget* parent, const char* name, const char* meaning) {
    auto* text = new QPlainTextEdit(parent);
    text->setObjectName(Named(name));
    text->setAccessibleName(QString::fromLatin1(meaning));
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    return text;
}

}  // namespace

frmCollect::frmCollect(const CollectWork& work, QWidget* parent) : QDialog(parent), work_(work) {
    constexpr int RefreshMilliseconds = 500;
    setObjectName(Named("frmCollect"));
    setWindowTitle(QStringLiteral("Collect Regularly"));
    setSizeGripEnabled(true);
    auto* column = new QVBoxLayout(this);
    tabPages_ = new QTabWidget(this);
    tabPages_->setObjectName(Named("tabPages"));
    tabPages_->setAccessibleName(QStringLiteral("Pages"));
    tabPages_->addTab(BuildPlanPage(), QStringLiteral("&Rounds"));
    tabPages_->addTab(BuildDigestPage(), QStringLiteral("&Digest"));
    tabPages_->addTab(BuildLogPage(), QStringLiteral("&Logs"));
    column->addWidget(tabPages_, 1);
    BuildButtons(*column);
    FitScreen();
    connect(&refresh_, &QTimer::timeout, this, [this] { Refresh(); });
    refresh_.setInterval(RefreshMilliseconds);
    chkOn_->setFocus();
}

QWidget* frmCollect::BuildPlanPage() {
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    chkOn_ = Choice<QCheckBox>(page, "chkOn", "Collect history &by itself");
    column->addWidget(chkOn_);
    connect(chkOn_, &QCheckBox::toggled, this, [this] { Changed(); });
    BuildTimes(*column, page);
    BuildWhat(*column, page);
    BuildRounds(*column, page);
    column->addStretch();
    return page;
}

void frmCollect::BuildTimes(QBoxLayout& column, QWidget* page) {
    QGroupBox* group = Group(page, column, "When");
    optHours_ = Choice<QRadioButton>(group, "optHours", "&Every");
    optDaily_ = Choice<QRadioButton>(group, "optDaily", "Da&ily");
    optWeekly_ = Choice<QRadioButton>(group, "optWeekly", "&Weekly on");
    spnHours_ = new QSpinBox(group);
    spnHours_->setObjectName(Named("spnHours"));
    spnHours_->setAccessibleName(QStringLiteral("Hours from one round to the next"));
    spnHours_->setRange(1, CollectPlan::MostHours);
    spnHours_->setSuffix(QStringLiteral(" hours"));
    cmbWeekday_ = new QComboBox(group);
    cmbWeekday_->setObjectName(Named("cmbWeekday"));
    cmbWeekday_->setAccessibleName(QStringLiteral("Day of the week"));
    for (const char* day :
         {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"}) {
        cmbWeekday_->addItem(QString::fromLatin1(day));
    }
    tmeAt_ = new QTimeEdit(group);
    tmeAt_->setObjectName(Named("tmeAt"));
    tmeAt_->setDisplayFormat(QStringLiteral("HH:mm"));
    auto* rows = new QGridLayout(group);
    rows->addWidget(optHours_, 0, 0);
    rows->addWidget(spnHours_, 0, 1);
    rows->addWidget(optDaily_, 1, 0);
    rows->addWidget(optWeekly_, 2, 0);
    rows->addWidget(cmbWeekday_, 2, 1);
    rows->addWidget(CaptionFor(tmeAt_, Named("lblAt"), QStringLiteral("a&t")), 1, 2, 2, 1);
    rows->addWidget(tmeAt_, 1, 3, 2, 1);
    rows->setColumnStretch(4, 1);
    for (QRadioButton* option : {optHours_, optDaily_, optWeekly_}) {
        connect(option, &QRadioButton::toggled, this, [this] { Changed(); });
    }
    connect(spnHours_, &QSpinBox::valueChanged, this, [this] { Changed(); });
    connect(cmbWeekday_, &QComboBox::currentIndexChanged, this, [this] { Changed(); });
    connect(tmeAt_, &QTimeEdit::timeChanged, this, [this] { Changed(); });
}

void frmCollect::BuildWhat(QBoxLayout& column, QWidget* page) {
    QGroupBox* group = Group(page, column, "What");
    optBook_ = Choice<QRadioButton>(group, "optBook", "All loggers of the address boo&k");
    optWindows_ = Choice<QRadioButton>(group, "optWindows", "Those whose window is &open");
    chkSync_ = Choice<QCheckBox>(group, "chkSync", "and s&ynchronize their clocks");
    auto* rows = new QVBoxLayout(group);
    for (QWidget* row : std::initializer_list<QWidget*>{optBook_, optWindows_, chkSync_}) {
        rows->addWidget(row);
    }
    connect(optBook_, &QRadioButton::toggled, this, [this] { Changed(); });
    connect(chkSync_, &QCheckBox::toggled, this, [this] { Changed(); });
    chkAtStart_ = Choice<QCheckBox>(page, "chkAtStart",
                                    "Open &at Start: the desktop session starts the console");
    chkAtStart_->setVisible(work_.outside.AtStart != nullptr);
    column.addWidget(chkAtStart_);
    connect(chkAtStart_, &QCheckBox::toggled, this, [this] { Changed(); });
}

void frmCollect::BuildRounds(QBoxLayout& column, QWidget* page) {
    lblNext_ = ValueLabel(page, Named("lblNext"), QStringLiteral("When the next round comes"));
    lblLast_ = ValueLabel(page, Named("lblLast"), QStringLiteral("What came of the last round"));
    lblRound_ = ValueLabel(page, Named("lblRound"), QStringLiteral("How far a round is"));
    cmdNow_ = NamedButton(page, Named("cmdNow"), QStringLiteral("Collect &Now"));
    cmdStop_ = NamedButton(page, Named("cmdStop"), QStringLiteral("Sto&p"));
    auto* rows = new QGridLayout;
    rows->addWidget(new QLabel(QStringLiteral("Next round:"), page), 0, 0);
    rows->addWidget(lblNext_, 0, 1);
    rows->addWidget(new QLabel(QStringLiteral("Last round:"), page), 1, 0);
    rows->addWidget(lblLast_, 1, 1);
    rows->addWidget(lblRound_, 2, 0, 1, 2);
    rows->setColumnStretch(1, 1);
    column.addLayout(rows);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {cmdNow_, cmdStop_}) {
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    buttons->addStretch();
    column.addLayout(buttons);
    connect(cmdNow_, &QPushButton::clicked, this, [this] {
        work_.schedule.StartNow();
        Refresh();
    });
    connect(cmdStop_, &QPushButton::clicked, this, [this] {
        work_.schedule.Stop();
        Refresh();
    });
}

QWidget* frmCollect::BuildDigestPage() {
    constexpr int MostRecords = 16'777'215;
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    auto* what = new QLabel(
        QStringLiteral("After each round the digest tells what needs a person: loggers that were "
                       "not collected, clocks that are off, memories that run full, gaps, and "
                       "channels below the values that stand here."),
        page);
    what->setObjectName(Named("lblWhat"));
    what->setWordWrap(true);
    column->addWidget(what);
    spnMemory_ = new QSpinBox(page);
    spnMemory_->setObjectName(Named("spnMemory"));
    spnMemory_->setRange(0, MostRecords);
    spnMemory_->setSpecialValueText(QStringLiteral("not known"));
    auto* memory = new QHBoxLayout;
    memory->addWidget(CaptionFor(spnMemory_, Named("lblMemory"),
                                 QStringLiteral("Records that a logger has roo&m for:")));
    memory->addWidget(spnMemory_);
    memory->addStretch();
    column->addLayout(memory);
    connect(spnMemory_, &QSpinBox::valueChanged, this, [this] { Changed(); });
    BuildLowest(*column, page);
    chkCommand_ =
        Choice<QCheckBox>(page, "chkCommand", "Start this program, which &reads the digest:");
    txtCommand_ = new QLineEdit(page);
    txtCommand_->setObjectName(Named("txtCommand"));
    txtCommand_->setAccessibleName(QStringLiteral("Program that reads the digest"));
    txtCommand_->setPlaceholderText(QStringLiteral("/usr/bin/mail -s \"Loggers\" me@example.org"));
    lblFile_ = ValueLabel(page, Named("lblFile"), QStringLiteral("File of the newest digest"));
    lblFile_->setWordWrap(true);
    for (QWidget* row : std::initializer_list<QWidget*>{chkCommand_, txtCommand_, lblFile_}) {
        column->addWidget(row);
    }
    connect(chkCommand_, &QCheckBox::toggled, this, [this] { Changed(); });
    connect(txtCommand_, &QLineEdit::textChanged, this, [this] { Changed(); });
    return page;
}

void frmCollect::BuildLowest(QBoxLayout& column, QWidget* page) {
    constexpr double Widest = 1e6;
    QGroupBox* group = Group(page, column, "Lowest values, of batteries for example");
    lstLowest_ = new QListWidget(group);
    lstLowest_->setObjectName(Named("lstLowest"));
    lstLowest_->setAccessibleName(QStringLiteral("Lowest values"));
    cmbLogger_ = new QComboBox(group);
    cmbLogger_->setObjectName(Named("cmbLogger"));
    cmbLogger_->setAccessibleName(QStringLiteral("Logger"));
    cmbLogger_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    spnChannel_ = new QSpinBox(group);
    spnChannel_->setObjectName(Named("spnChannel"));
    spnChannel_->setAccessibleName(QStringLiteral("Channel"));
    spnChannel_->setRange(1, AnalogChannels);
    spnChannel_->setPrefix(QStringLiteral("channel "));
    spnLowest_ = new QDoubleSpinBox(group);
    spnLowest_->setObjectName(Named("spnLowest"));
    spnLowest_->setAccessibleName(QStringLiteral("Lowest value"));
    spnLowest_->setRange(-Widest, Widest);
    spnLowest_->setDecimals(2);
    spnLowest_->setLocale(QLocale::c());
    cmdAdd_ = NamedButton(group, Named("cmdAdd"), QStringLiteral("S&et"));
    cmdRemove_ = NamedButton(group, Named("cmdRemove"), QStringLiteral("Remo&ve"));
    auto* row = new QHBoxLayout;
    row->addWidget(cmbLogger_, 1);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{spnChannel_, spnLowest_, cmdAdd_, cmdRemove_}) {
        row->addWidget(widget);
    }
    auto* rows = new QVBoxLayout(group);
    rows->addWidget(lstLowest_, 1);
    rows->addLayout(row);
    for (QPushButton* button : {cmdAdd_, cmdRemove_}) {
        button->setAutoDefault(false);
    }
    connect(cmdAdd_, &QPushButton::clicked, this, [this] { AddLowest(); });
    connect(cmdRemove_, &QPushButton::clicked, this, [this] { RemoveLowest(); });
    connect(lstLowest_, &QListWidget::currentRowChanged, this,
            [this](int row_) { cmdRemove_->setEnabled(row_ >= 0); });
}

QWidget* frmCollect::BuildLogPage() {
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    cmbRounds_ = new QComboBox(page);
    cmbRounds_->setObjectName(Named("cmbRounds"));
    txtDigest_ = ReadText(page, "txtDigest", "Digest of the round");
    txtLog_ = ReadText(page, "txtRoundLog", "Log of the round");
    auto* row = new QHBoxLayout;
    row->addWidget(CaptionFor(cmbRounds_, Named("lblRounds"), QStringLiteral("Ro&und:")));
    row->addWidget(cmbRounds_, 1);
    column->addLayout(row);
    column->addWidget(
        CaptionFor(txtDigest_, Named("lblDigest"), QStringLiteral("What needs a person:")));
    column->addWidget(txtDigest_, 1);
    column->addWidget(CaptionFor(txtLog_, Named("lblLog"), QStringLiteral("Log:")));
    column->addWidget(txtLog_, 2);
    connect(cmbRounds_, &QComboBox::currentIndexChanged, this, [this] { ShowRound(); });
    return page;
}

void frmCollect::BuildButtons(QBoxLayout& column) {
    lblState_ = ValueLabel(this, Named("lblState"), QStringLiteral("What came of the saving"));
    cmdSave_ = NamedButton(this, Named("cmdSave"), QStringLiteral("&Save"));
    cmdClose_ = NamedButton(this, Named("cmdClose"), QStringLiteral("&Close"));
    auto* row = new QHBoxLayout;
    row->addWidget(lblState_, 1);
    for (QPushButton* button : {cmdSave_, cmdClose_}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    column.addLayout(row);
    connect(cmdSave_, &QPushButton::clicked, this, [this] { Save(); });
    connect(cmdClose_, &QPushButton::clicked, this, [this] { close(); });
}

void frmCollect::FitScreen() {
    constexpr QSize Wanted(640, 540);
    constexpr QSize Frame(34, 80);
    const QSize room = screen()->availableSize() - Frame;
    resize(Wanted.boundedTo(room).expandedTo(minimumSizeHint()));
}
