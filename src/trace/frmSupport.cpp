#include "trace/frmSupport.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTabBar>
#include <string_view>
#include <utility>

#include "common/file_rewrite.h"
#include "common/path_text.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

namespace {

constexpr std::string_view Title = "Report for Support";

ZipTime ZipTimeOf(const LocalTime& time) {
    return {time.Year, time.Month, time.Day, time.Hour, time.Minute, time.Second};
}

}  // namespace

frmSupport::frmSupport(Source source, const Host& outside, QWidget* parent)
    : QDialog(parent), source_(std::move(source)), outside_(outside) {
    setObjectName(QStringLiteral("frmSupport"));
    setWindowTitle(ToQt(Title));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    auto* column = new QVBoxLayout(this);
    BuildTexts(*column);
    BuildButtons(*column);
    FitScreen();
    txtPart_->setFocus();
}

// ----- opening and closing

void frmSupport::ShowOrRaise() {
    if (unloaded_) {
        return;
    }
    MakeReport();
    show();
    raise();
    activateWindow();
}

void frmSupport::Unload() {
    unloaded_ = true;
    hide();
}

void frmSupport::FitScreen() {
    constexpr QSize Wanted(900, 600);
    constexpr QSize Frame(34, 80);
    const QSize room = screen()->availableSize() - Frame;
    resize(Wanted.boundedTo(room).expandedTo(minimumSizeHint()));
}

// ----- the controls

void frmSupport::BuildTexts(QBoxLayout& column) {
    auto* what = new QLabel(QStringLiteral("These texts go into one zip file, and nothing else. "
                                           "Look through them before you give it away."),
                            this);
    what->setObjectName(QStringLiteral("lblWhat"));
    what->setWordWrap(true);
    chkNames_ = new QCheckBox(QStringLiteral("With the &names of loggers and files, and the bytes "
                                             "of the trace"),
                              this);
    chkNames_->setObjectName(QStringLiteral("chkNames"));
    chkNames_->setChecked(true);
    tabParts_ = new QTabBar(this);
    tabParts_->setObjectName(QStringLiteral("tabParts"));
    tabParts_->setAccessibleName(QStringLiteral("Texts of the report"));
    tabParts_->setExpanding(false);
    txtPart_ = new QPlainTextEdit(this);
    txtPart_->setObjectName(QStringLiteral("txtPart"));
    txtPart_->setAccessibleName(QStringLiteral("Text that goes into the report"));
    txtPart_->setReadOnly(true);
    txtPart_->setTabChangesFocus(true);
    txtPart_->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtPart_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    column.addWidget(what);
    column.addWidget(chkNames_);
    column.addWidget(tabParts_);
    column.addWidget(txtPart_, 1);
    connect(chkNames_, &QCheckBox::toggled, this, [this] { MakeReport(); });
    connect(tabParts_, &QTabBar::currentChanged, this, [this] { ShowPart(); });
}

void frmSupport::BuildButtons(QBoxLayout& column) {
    lblState_ =
        ValueLabel(this, QStringLiteral("lblState"), QStringLiteral("What came of the saving"));
    cmdSave_ = NamedButton(this, QStringLiteral("cmdSave"), QStringLiteral("&Save..."));
    cmdClose_ = NamedButton(this, QStringLiteral("cmdClose"), QStringLiteral("Clos&e"));
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

// ----- the report

void frmSupport::MakeReport() {
    const SupportSource source = source_();
    made_ = source.Made;
    parts_ = SupportReport(source, chkNames_->isChecked());
    while (tabParts_->count() < static_cast<int>(parts_.size())) {
        const auto next = static_cast<std::size_t>(tabParts_->count());
        tabParts_->addTab(ToQt(parts_[next].Name));
        tabParts_->updateGeometry();  // a hidden bar does not tell of its new height
    }
    lblState_->clear();
    ShowPart();
}

void frmSupport::ShowPart() {
    const int part = tabParts_->currentIndex();
    if (part >= 0) {
        txtPart_->setPlainText(ToQt(parts_[static_cast<std::size_t>(part)].Contents));
    }
}

void frmSupport::Save() {
    const std::optional<std::string> path = outside_.Dialogs.PickForSaving(
        {.Title = "Save Report for Support",
         .DefaultExtension = ".zip",
         .Filter = "Zip Files (*.zip)|*.zip",
         .InitialName = JoinPath(outside_.StartFolder(), "orvia-report.zip")},
        true);
    if (!path || unloaded_) {
        return;
    }
    if (RewriteFile(*path, ZipOf(parts_, ZipTimeOf(made_)))) {
        lblState_->setText(QStringLiteral("Saved as ") + ToQt(BehindLastSeparator(*path)));
    } else {
        outside_.Boxes.Show({.Text = "The file could not be written.",
                             .Title = std::string(Title),
                             .Icon = BoxIcon::Exclamation});
    }
}
