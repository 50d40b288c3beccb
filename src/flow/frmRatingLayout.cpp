// How the window of ratings is put together; what it does is in frmRating.cpp.
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTextBrowser>
#include <algorithm>

#include "flow/frmRating.h"
#include "flow/frmRatingCurve.h"
#include "flow/frmRatingFields.h"
#include "flow/frmRatingSheet.h"
#include "flow/unit_names.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

namespace {

constexpr int LengthUnits = 4;
constexpr int FlowUnits = 5;

QString Named(const char* name) {
    return QString::fromLatin1(name);
}

QLabel* Wrapped(QWidget* parent, const char* name, const char* meaning) {
    QLabel* label = ValueLabel(parent, Named(name), QString::fromLatin1(meaning));
    label->setWordWrap(true);
    return label;
}

/// A row of a list that heads those below it and cannot be chosen.
void AddHeading(QComboBox& list, std::string_view text) {
    list.addItem(ToQt(text));
    auto* rows = qobject_cast<QStandardItemModel*>(list.model());
    QStandardItem* row = rows->item(list.count() - 1);
    row->setFlags(Qt::NoItemFlags);
    QFont bold = list.font();
    bold.setBold(true);
    row->setFont(bold);
}

std::ptrdiff_t KindsOf(RatingGroup group) {
    const auto kinds = RatingKinds();
    return std::count_if(kinds.begin(), kinds.end(),
                         [group](const RatingKind& kind) { return kind.Group == group; });
}

}  // namespace

frmRating::frmRating(const Host& outside, QWidget* parent)
    : QDialog(parent), outside_(outside), session_(std::make_unique<RatingSession>(outside_)) {
    setObjectName(Named("frmRating"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setSizeGripEnabled(true);
    auto* left = new QVBoxLayout;
    BuildKind(*left);
    BuildUnits(*left);
    BuildFields(*left);
    BuildRows(*left);
    left->addStretch();
    auto* right = new QVBoxLayout;
    BuildRating(*right);
    auto* body = new QHBoxLayout;
    auto* panel = new QWidget(this);
    constexpr int LeftCharacters = 55;
    panel->setFixedWidth(fontMetrics().averageCharWidth() * LeftCharacters);
    panel->setLayout(left);
    left->setContentsMargins(0, 0, 0, 0);
    body->addWidget(panel);
    body->addLayout(right, 1);
    auto* whole = new QVBoxLayout(this);
    whole->addLayout(body, 1);
    BuildButtons(*whole);
    FitScreen();
}

frmRating::~frmRating() = default;

void frmRating::BuildKind(QBoxLayout& column) {
    auto* grid = new QGridLayout;
    cmbKind_ = new QComboBox(this);
    cmbKind_->setObjectName(Named("cmbKind"));
    constexpr int KindCharacters = 24;
    cmbKind_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbKind_->setMinimumContentsLength(KindCharacters);
    FillKinds();
    lblKind_ = Wrapped(this, "lblKind", "Where the head of this kind counts from");
    txtName_ = new QLineEdit(this);
    txtName_->setObjectName(Named("txtName"));
    txtName_->setToolTip(QStringLiteral("The place in your own words; it may be left empty."));
    constexpr int LongestName = 200;
    txtName_->setMaxLength(LongestName);
    grid->addWidget(CaptionFor(cmbKind_, Named("lblKindCaption"), QStringLiteral("&Kind:")), 0, 0);
    grid->addWidget(cmbKind_, 0, 1);
    grid->addWidget(lblKind_, 1, 0, 1, 2);
    grid->addWidget(CaptionFor(txtName_, Named("lblName"), QStringLiteral("&Name:")), 2, 0);
    grid->addWidget(txtName_, 2, 1);
    grid->setColumnStretch(1, 1);
    column.addLayout(grid);
    connect(cmbKind_, &QComboBox::currentIndexChanged, this, [this] { ChooseKind(); });
    connect(txtName_, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (!showing_) {
            session_->SetName(FromQt(text));
            ShowTitle();
        }
    });
}

void frmRating::FillKinds() {
    const auto kinds = RatingKinds();
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        const bool first = i == 0 || kinds[i - 1].Group != kinds[i].Group;
        if (first && KindsOf(kinds[i].Group) > 1) {
            AddHeading(*cmbKind_, RatingGroupName(kinds[i].Group));
        } else if (first) {
            cmbKind_->insertSeparator(cmbKind_->count());
        }
        cmbKind_->addItem(ToQt(kinds[i].Caption), static_cast<int>(i));
    }
    constexpr int MostRows = 30;
    cmbKind_->setMaxVisibleItems(MostRows);
}

void frmRating::BuildUnits(QBoxLayout& column) {
    auto* row = new QHBoxLayout;
    const auto list = [this, row](const char* name, const char* label, const char* caption,
                                  int count, std::string (*text)(int)) {
        auto* units = new QComboBox(this);
        units->setObjectName(Named(name));
        for (int code = 0; code < count; ++code) {
            units->addItem(ToQt(text(code)));
        }
        row->addWidget(CaptionFor(units, Named(label), QString::fromLatin1(caption)));
        row->addWidget(units, 1);
        return units;
    };
    cmbLengthUnit_ = list("cmbLengthUnit", "lblLengthUnit", "&Lengths in:", LengthUnits,
                          [](int code) { return config::LengthUnitName(code, true); });
    cmbFlowUnit_ =
        list("cmbFlowUnit", "lblFlowUnit", "Flo&ws in:", FlowUnits, config::FlowUnitName);
    column.addLayout(row);
    connect(cmbLengthUnit_, &QComboBox::currentIndexChanged, this, [this](int code) {
        if (!showing_) {
            session_->ChooseLengthUnit(code);
            ShowUnits();
        }
    });
    connect(cmbFlowUnit_, &QComboBox::currentIndexChanged, this, [this](int code) {
        if (!showing_) {
            session_->ChooseFlowUnit(code);
            ShowUnits();
        }
    });
}

void frmRating::BuildFields(QBoxLayout& column) {
    auto* frame = new QGroupBox(QStringLiteral("&Dimensions"), this);
    frame->setObjectName(Named("fraDimensions"));
    frame->setFlat(true);
    scroll_ = new QScrollArea(frame);
    scroll_->setWidgetResizable(true);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setFocusPolicy(Qt::NoFocus);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    fields_ = new RatingFields(scroll_, [this](std::size_t field, const std::string& text) {
        session_->SetFieldText(field, text);
        lblState_->clear();
        ShowRating();
    });
    scroll_->setWidget(fields_);
    // On the ground of the window, whatever the style gives a frame.
    scroll_->viewport()->setAutoFillBackground(false);
    fields_->setAutoFillBackground(false);
    auto* inner = new QVBoxLayout(frame);
    inner->setContentsMargins(0, 0, 0, 0);
    inner->addWidget(scroll_, 1);
    column.addWidget(frame, 1);
}

void frmRating::BuildRows(QBoxLayout& column) {
    fraRows_ = new QGroupBox(QStringLiteral("Points, one a line"), this);
    fraRows_->setObjectName(Named("fraRows"));
    txtRows_ = new QPlainTextEdit(fraRows_);
    txtRows_->setObjectName(Named("txtRows"));
    txtRows_->setTabChangesFocus(true);
    txtRows_->setLineWrapMode(QPlainTextEdit::NoWrap);
    lblColumns_ = CaptionFor(txtRows_, Named("lblColumns"), QStringLiteral("&Rows:"));
    lblColumns_->setWordWrap(true);
    lblRows_ = Wrapped(fraRows_, "lblRows", "What was read of the rows");
    cmdRows_ = NamedButton(fraRows_, Named("cmdRows"), QStringLiteral("From &File..."));
    cmdRows_->setToolTip(QStringLiteral("Takes rows of comma-separated figures from a file."));
    cmdRows_->setAutoDefault(false);
    auto* inner = new QVBoxLayout(fraRows_);
    inner->addWidget(lblColumns_);
    inner->addWidget(txtRows_, 1);
    auto* below = new QHBoxLayout;
    below->addWidget(lblRows_, 1);
    below->addWidget(cmdRows_);
    inner->addLayout(below);
    column.addWidget(fraRows_, 2);
    connect(cmdRows_, &QPushButton::clicked, this, [this] { TakeRows(); });
    connect(txtRows_, &QPlainTextEdit::textChanged, this, [this] {
        if (!showing_) {
            session_->SetRowsText(FromQt(txtRows_->toPlainText()));
            lblState_->clear();
            ShowRows();
            ShowRating();
        }
    });
}

QWidget* frmRating::BuildCurve() {
    auto* panel = new QWidget(this);
    pctCurve_ = new RatingCurveView(panel);
    pctCurve_->StopChosen = [this](std::size_t stop) { GoTo(stop); };
    constexpr int LeastLines = 9;
    pctCurve_->setMinimumHeight(fontMetrics().lineSpacing() * LeastLines);
    QLabel* caption = CaptionFor(pctCurve_, Named("lblCurve"), QStringLiteral("Cur&ve:"));
    lblCursor_ = ValueLabel(panel, Named("lblCursor"), QStringLiteral("Value at the cursor"));
    lblCursor_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    chkLogarithmic_ = new QCheckBox(QStringLiteral("Lo&garithmic"), panel);
    chkLogarithmic_->setObjectName(Named("chkLogarithmic"));
    connect(chkLogarithmic_, &QCheckBox::toggled, this,
            [this](bool on) { pctCurve_->SetLogarithmic(on); });
    auto* above = new QHBoxLayout;
    above->addWidget(caption);
    above->addStretch();
    above->addWidget(chkLogarithmic_);
    auto* inner = new QVBoxLayout(panel);
    inner->setContentsMargins(0, 0, 0, 0);
    inner->addLayout(above);
    inner->addWidget(pctCurve_, 1);
    inner->addWidget(lblCursor_);
    return panel;
}

QWidget* frmRating::BuildTables() {
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName(Named("TabStrip"));
    tabs_->setAccessibleName(QStringLiteral("Table and residuals"));
    lvwTable_ =
        new RatingSheetView(tabs_, Named("lvwTable"), QStringLiteral("Table of the rating"));
    lvwTable_->RowChosen = [this](int row) { GoTo(static_cast<std::size_t>(row)); };
    lvwResiduals_ = new RatingSheetView(tabs_, Named("lvwResiduals"),
                                        QStringLiteral("Residuals of the points"));
    tabs_->addTab(lvwTable_, QStringLiteral("&Table"));
    tabs_->addTab(lvwResiduals_, QStringLiteral("R&esiduals"));
    constexpr int Characters = 36;
    tabs_->setMinimumWidth(fontMetrics().averageCharWidth() * Characters);
    return tabs_;
}

void frmRating::BuildRating(QBoxLayout& column) {
    auto* upper = new QSplitter(Qt::Horizontal, this);
    upper->setObjectName(Named("splUpper"));
    upper->setChildrenCollapsible(false);
    upper->addWidget(BuildCurve());
    upper->addWidget(BuildTables());
    upper->setStretchFactor(0, 1);
    txtAbout_ = new QTextBrowser(this);
    txtAbout_->setObjectName(Named("txtAbout"));
    txtAbout_->setTabChangesFocus(true);
    txtAbout_->setOpenLinks(false);
    auto* lower = new QWidget(this);
    auto* inner = new QVBoxLayout(lower);
    inner->setContentsMargins(0, 0, 0, 0);
    inner->addWidget(
        CaptionFor(txtAbout_, Named("lblAbout"), QStringLiteral("A&bout this rating:")));
    inner->addWidget(txtAbout_, 1);
    auto* both = new QSplitter(Qt::Vertical, this);
    both->setObjectName(Named("splRating"));
    both->setChildrenCollapsible(false);
    both->addWidget(upper);
    both->addWidget(lower);
    both->setStretchFactor(0, 3);
    both->setStretchFactor(1, 2);
    column.addWidget(both, 1);
}

void frmRating::BuildButtons(QBoxLayout& column) {
    const auto button = [this](const char* name, const char* caption, void (frmRating::*press)()) {
        QPushButton* made = NamedButton(this, Named(name), QString::fromLatin1(caption));
        // Enter in a field must not press one.
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, press);
        return made;
    };
    lblState_ = ValueLabel(this, Named("lblState"), QStringLiteral("What was done last"));
    lblState_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    cmdOpen_ = button("cmdOpen", "&Open...", &frmRating::OpenTable);
    cmdOpen_->setToolTip(QStringLiteral("Opens a table file for change."));
    cmdSave_ = button("cmdSave", "&Save as Table File", &frmRating::SaveTable);
    cmdSave_->setToolTip(
        QStringLiteral("Writes a table file, which the flow page of the setup takes."));
    cmdClose_ = NamedButton(this, Named("cmdClose"), QStringLiteral("&Close"));
    cmdClose_->setAutoDefault(false);
    connect(cmdClose_, &QPushButton::clicked, this, [this] { close(); });
    auto* row = new QHBoxLayout;
    row->addWidget(lblState_, 1);
    row->addWidget(cmdOpen_);
    row->addWidget(cmdSave_);
    row->addWidget(cmdClose_);
    column.addLayout(row);
}

void frmRating::FitScreen() {
    constexpr int Characters = 140;
    constexpr int Lines = 36;
    const QSize wanted(fontMetrics().averageCharWidth() * Characters,
                       fontMetrics().lineSpacing() * Lines);
    // Room for the frame that the desktop puts around a window.
    const int frame = 2 * fontMetrics().height();
    resize(wanted.boundedTo(screen()->availableSize() - QSize(frame, frame)));
}

void frmRating::OrderTabs() {
    std::vector<QWidget*> order{cmbKind_, txtName_, cmbLengthUnit_, cmbFlowUnit_};
    for (QWidget* input : fields_->Inputs()) {
        order.push_back(input);
    }
    for (QWidget* widget : std::initializer_list<QWidget*>{
             txtRows_, cmdRows_, chkLogarithmic_, pctCurve_, tabs_, lvwTable_, lvwResiduals_,
             txtAbout_, cmdOpen_, cmdSave_, cmdClose_}) {
        order.push_back(widget);
    }
    for (std::size_t i = 1; i < order.size(); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }
}
