#include "trace/frmTrace.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <optional>

#include "common/file_rewrite.h"
#include "common/number_text.h"
#include "common/path_text.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"
#include "trace/frmTraceList.h"

Q_DECLARE_METATYPE(TraceAddress)

namespace {

/// As often as the eye follows a list.
constexpr int FollowMilliseconds = 100;

QString CountText(std::size_t count) {
    return ToQt(IntegerToText(static_cast<std::int64_t>(count)));
}

}  // namespace

frmTrace::frmTrace(LinkRecorder& recorder, const AddressBook& book, const Host& outside,
                   QWidget* parent)
    : QDialog(parent), recorder_(recorder), book_(book), outside_(outside) {
    setObjectName(QStringLiteral("frmTrace"));
    setWindowTitle(QStringLiteral("Trace of the Link"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    auto* column = new QVBoxLayout(this);
    BuildChoice(*column);
    BuildSearch(*column);
    BuildList(*column);
    BuildButtons(*column);
    BuildKeys();
    FitScreen();
    connect(&follow_, &QTimer::timeout, this, [this] { Watch(); });
    follow_.setInterval(FollowMilliseconds);
    follow_.setSingleShot(true);
}

frmTrace::~frmTrace() {
    recorder_.TellNextChange(nullptr);
}

// ----- opening and closing

void frmTrace::ShowOrRaise() {
    if (unloaded_) {
        return;
    }
    show();
    raise();
    activateWindow();
}

void frmTrace::Unload() {
    unloaded_ = true;
    hide();
}

// What happened while nobody looked is taken in at once; a hidden window wakes nobody.
void frmTrace::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    Watch();
}

void frmTrace::hideEvent(QHideEvent* event) {
    recorder_.TellNextChange(nullptr);
    follow_.stop();
    QDialog::hideEvent(event);
}

/// Shows what is new. Over a quiet link nothing wakes the window again.
void frmTrace::Watch() {
    Follow();
    recorder_.TellNextChange([this] { follow_.start(); });
}

void frmTrace::FitScreen() {
    constexpr QSize Wanted(1180, 680);
    constexpr QSize Frame(34, 80);
    const QSize room = screen()->availableSize() - Frame;
    resize(Wanted.boundedTo(room).expandedTo(minimumSizeHint()));
}

// ----- the controls

void frmTrace::BuildChoice(QBoxLayout& column) {
    cmbLogger_ = new QComboBox(this);
    cmbLogger_->setObjectName(QStringLiteral("cmbLogger"));
    cmbLogger_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbLogger_->setMinimumContentsLength(24);
    cmbLogger_->addItem(QStringLiteral("All"));
    cmbKind_ = new QComboBox(this);
    cmbKind_->setObjectName(QStringLiteral("cmbKind"));
    cmbKind_->addItem(QStringLiteral("All"));
    for (const TraceKindName& kind : TraceKindNames()) {
        cmbKind_->addItem(ToQt(kind.Name), static_cast<int>(kind.Kind));
    }
    const auto box = [this](const char* name, const char* text) {
        auto* made = new QCheckBox(QLatin1String(text), this);
        made->setObjectName(QLatin1String(name));
        return made;
    };
    chkFaults_ = box("chkFaults", "Fa&ults Only");
    chkPause_ = box("chkPause", "&Pause");
    chkHex_ = box("chkHex", "&Hex");
    auto* row = new QHBoxLayout;
    row->addWidget(CaptionFor(cmbLogger_, QStringLiteral("lblLogger"), QStringLiteral("&Logger:")));
    row->addWidget(cmbLogger_, 1);
    row->addWidget(CaptionFor(cmbKind_, QStringLiteral("lblKind"), QStringLiteral("&Kind:")));
    row->addWidget(cmbKind_);
    row->addWidget(chkFaults_);
    row->addWidget(chkPause_);
    row->addWidget(chkHex_);
    column.addLayout(row);
    connect(cmbLogger_, &QComboBox::activated, this, [this] { ChooseFilter(); });
    connect(cmbKind_, &QComboBox::activated, this, [this] { ChooseFilter(); });
    connect(chkFaults_, &QCheckBox::toggled, this, [this] { ChooseFilter(); });
    connect(chkPause_, &QCheckBox::toggled, this, [this] { Follow(); });
}

void frmTrace::BuildSearch(QBoxLayout& column) {
    txtFind_ = new QLineEdit(this);
    txtFind_->setObjectName(QStringLiteral("txtFind"));
    cmdFindNext_ = NamedButton(this, QStringLiteral("cmdFindNext"), QStringLiteral("&Next"));
    cmdFindPrevious_ =
        NamedButton(this, QStringLiteral("cmdFindPrevious"), QStringLiteral("Pre&vious"));
    lblFound_ =
        ValueLabel(this, QStringLiteral("lblFound"), QStringLiteral("Result of the search"));
    // Enter in the field searches; nothing in this window is done by Enter alone otherwise.
    for (QPushButton* button : {cmdFindNext_, cmdFindPrevious_}) {
        button->setAutoDefault(false);
    }
    auto* row = new QHBoxLayout;
    row->addWidget(CaptionFor(txtFind_, QStringLiteral("lblFind"), QStringLiteral("&Find:")));
    row->addWidget(txtFind_, 1);
    row->addWidget(cmdFindNext_);
    row->addWidget(cmdFindPrevious_);
    row->addWidget(lblFound_, 1);
    column.addLayout(row);
    connect(txtFind_, &QLineEdit::returnPressed, this, [this] { Search(true); });
    connect(cmdFindNext_, &QPushButton::clicked, this, [this] { Search(true); });
    connect(cmdFindPrevious_, &QPushButton::clicked, this, [this] { Search(false); });
}

void frmTrace::BuildList(QBoxLayout& column) {
    lvwTrace_ = new TraceList(recorder_.Kept(), this);
    txtHex_ = new QPlainTextEdit(this);
    txtHex_->setObjectName(QStringLiteral("txtHex"));
    txtHex_->setAccessibleName(QStringLiteral("Bytes of the exchange"));
    txtHex_->setReadOnly(true);
    txtHex_->setTabChangesFocus(true);
    txtHex_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    txtHex_->setMaximumHeight(8 * txtHex_->fontMetrics().height());
    txtHex_->hide();
    column.addWidget(lvwTrace_, 1);
    column.addWidget(txtHex_);
    connect(lvwTrace_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { ShowHex(); });
    connect(chkHex_, &QCheckBox::toggled, this, [this](bool shown) {
        txtHex_->setVisible(shown);
        ShowHex();
    });
}

void frmTrace::BuildButtons(QBoxLayout& column) {
    lblState_ = ValueLabel(this, QStringLiteral("lblState"), QStringLiteral("What the list shows"));
    cmdCopy_ = NamedButton(this, QStringLiteral("cmdCopy"), QStringLiteral("&Copy"));
    cmdSave_ = NamedButton(this, QStringLiteral("cmdSave"), QStringLiteral("&Save as Text..."));
    cmdClose_ = NamedButton(this, QStringLiteral("cmdClose"), QStringLiteral("Clos&e"));
    auto* row = new QHBoxLayout;
    row->addWidget(lblState_, 1);
    for (QPushButton* button : {cmdCopy_, cmdSave_, cmdClose_}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    column.addLayout(row);
    connect(cmdCopy_, &QPushButton::clicked, this, [this] { Copy(); });
    connect(cmdSave_, &QPushButton::clicked, this, [this] { SaveText(); });
    connect(cmdClose_, &QPushButton::clicked, this, [this] { close(); });
}

void frmTrace::BuildKeys() {
    const auto key = [this](const QKeySequence& keys, QWidget* where, auto action) {
        auto* shortcut = new QShortcut(keys, where);
        shortcut->setContext(where == this ? Qt::WindowShortcut : Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    key(QKeySequence::Find, this, [this] {
        txtFind_->setFocus(Qt::ShortcutFocusReason);
        txtFind_->selectAll();
    });
    key(Qt::Key_F3, this, [this] { Search(true); });
    key(Qt::SHIFT | Qt::Key_F3, this, [this] { Search(false); });
    key(QKeySequence::Copy, lvwTrace_, [this] { Copy(); });
    lvwTrace_->setFocus();
}

// ----- what is shown

LoggerNames frmTrace::Names() const {
    return NamesOf(recorder_.Loggers(), book_);
}

TraceFilter frmTrace::Wanted() const {
    TraceFilter filter;
    const QVariant kind = cmbKind_->currentData();
    if (kind.isValid()) {
        filter.Kind = static_cast<TraceKind>(kind.toInt());
    }
    const int logger = cmbLogger_->currentIndex() - 1;
    if (logger >= 0) {
        filter.Logger = cmbLogger_->currentData().value<TraceAddress>();
    }
    filter.FaultsOnly = chkFaults_->isChecked();
    return filter;
}

void frmTrace::Follow() {
    const std::uint64_t changes = recorder_.Kept().Changes();
    if (!chkPause_->isChecked() && changes != seen_) {
        seen_ = changes;
        ListLoggers();
        lvwTrace_->Follow(Names());
        ShowHex();
    }
    ShowState();
}

void frmTrace::ListLoggers() {
    if (recorder_.Loggers().size() == listed_) {
        return;
    }
    listed_ = recorder_.Loggers().size();
    const LoggerNames names = Names();
    const std::optional<TraceAddress> chosen = Wanted().Logger;
    while (cmbLogger_->count() > 1) {
        cmbLogger_->removeItem(1);
    }
    for (const TraceAddress& logger : recorder_.Loggers()) {
        cmbLogger_->addItem(ToQt(LoggerText(logger, names)), QVariant::fromValue(logger));
        if (chosen == logger) {
            cmbLogger_->setCurrentIndex(cmbLogger_->count() - 1);
        }
    }
}

void frmTrace::ChooseFilter() {
    lvwTrace_->SetFilter(Wanted(), Names());
    lblFound_->clear();
    ShowHex();
    ShowState();
}

void frmTrace::ShowHex() {
    if (txtHex_->isHidden()) {
        return;
    }
    const std::optional<std::size_t> row = lvwTrace_->Current();
    const TraceStore& kept = recorder_.Kept();
    QString text;
    if (row && kept.Holds(lvwTrace_->Model().Rows().Number(*row))) {
        text = ToQt(HexOf(kept.At(lvwTrace_->Model().Rows().Number(*row))));
    }
    if (text != txtHex_->toPlainText()) {
        txtHex_->setPlainText(text);
    }
}

void frmTrace::ShowState() {
    const std::size_t shown = lvwTrace_->Model().Rows().Count();
    const std::uint64_t kept = recorder_.Kept().End() - recorder_.Kept().First();
    lblState_->setText(QStringLiteral("%1 shown of %2 kept%3")
                           .arg(CountText(shown), CountText(kept),
                                QLatin1String(chkPause_->isChecked() ? ", paused" : "")));
    cmdCopy_->setEnabled(shown > 0);
    cmdSave_->setEnabled(shown > 0);
}

// ----- what is done with it

bool frmTrace::WithHex() const {
    return chkHex_->isChecked();
}

void frmTrace::Search(bool forward) {
    const TraceModel& model = lvwTrace_->Model();
    const auto row =
        model.Rows().Find(FromQt(txtFind_->text()), lvwTrace_->Current(), forward, model.Names());
    if (row) {
        lvwTrace_->GoTo(*row);
        lblFound_->clear();
    } else if (!txtFind_->text().isEmpty()) {
        lblFound_->setText(QStringLiteral("Not found"));
    }
}

void frmTrace::Copy() {
    const TraceModel& model = lvwTrace_->Model();
    std::vector<std::size_t> rows = lvwTrace_->Chosen();
    if (rows.empty()) {
        rows = lvwTrace_->All();
    }
    QGuiApplication::clipboard()->setText(ToQt(model.Rows().Text(rows, WithHex(), model.Names())));
}

void frmTrace::SaveText() {
    const std::optional<std::string> path = outside_.Dialogs.PickForSaving(
        {.Title = "Save Trace as Text",
         .DefaultExtension = ".txt",
         .Filter = "Text Files (*.txt)|*.txt",
         .InitialName = JoinPath(outside_.StartFolder(), "trace.txt")},
        true);
    if (!path || unloaded_) {
        return;
    }
    const TraceModel& model = lvwTrace_->Model();
    const std::string text = model.Rows().Text(lvwTrace_->All(), WithHex(), model.Names());
    if (!RewriteFile(*path, text)) {
        outside_.Boxes.Show({.Text = "The file could not be written.",
                             .Title = "Trace of the Link",
                             .Icon = BoxIcon::Exclamation});
    }
}
