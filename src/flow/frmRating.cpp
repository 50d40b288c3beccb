#include "flow/frmRating.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTextCursor>
#include <algorithm>

#include "flow/frmRatingCurve.h"
#include "flow/frmRatingFields.h"
#include "flow/frmRatingSheet.h"
#include "platform/qt/text_qt.h"

namespace {

constexpr int ResidualsTab = 1;

QString ChapterHtml(const RatingChapter& chapter) {
    QStringList lines;
    for (const std::string& line : chapter.Lines) {
        lines.push_back(ToQt(line).toHtmlEscaped());
    }
    const QString heading = ToQt(chapter.Heading).toHtmlEscaped();
    return QStringLiteral("<p style=\"margin-top:0; margin-bottom:4px\"><b>%1%2:</b> %3</p>")
        .arg(chapter.Weighty ? QStringLiteral("! ") : QString(), heading,
             lines.join(QStringLiteral("<br>")));
}

}  // namespace

// ----- opening and closing

void frmRating::ShowOrRaise() {
    if (unloaded_) {
        return;
    }
    if (!isVisible()) {
        session_ = std::make_unique<RatingSession>(outside_);
        chkLogarithmic_->setChecked(false);
        ShowEntry();
        cmbKind_->setFocus();
    }
    show();
    raise();
    activateWindow();
}

bool frmRating::MayClose() {
    return !isVisible() || session_->MayClose();
}

void frmRating::Unload() {
    unloaded_ = true;
    session_->Silence();
    hide();
}

void frmRating::closeEvent(QCloseEvent* event) {
    const bool closes = unloaded_ || MayClose();
    event->setAccepted(closes);
    if (closes) {
        hide();
    }
}

// ----- what is shown

void frmRating::ShowEntry() {
    const RatingDevice& device = session_->Device();
    showing_ = true;
    const auto kind = static_cast<int>(device.Kind - RatingKinds().data());
    cmbKind_->setCurrentIndex(cmbKind_->findData(kind));
    txtName_->setText(ToQt(device.Name));
    showing_ = false;
    stop_ = 0;
    ShowKind();
    ShowUnits();
}

void frmRating::ShowKind() {
    const RatingEntry& entry = session_->Entry();
    lblKind_->setText(ToQt(entry.Kind().Hint));
    fields_->Build(entry);
    const bool rows = !entry.Kind().Columns.empty();
    fraRows_->setVisible(rows);
    // Beside rows the fields, few then, take what they need and no more.
    const int height = fields_->sizeHint().height();
    scroll_->parentWidget()->setSizePolicy(QSizePolicy::Preferred,
                                           rows ? QSizePolicy::Maximum : QSizePolicy::Preferred);
    scroll_->setMinimumHeight(rows ? height : 0);
    scroll_->setMaximumHeight(rows ? height : QWIDGETSIZE_MAX);
    OrderTabs();
}

void frmRating::ShowUnits() {
    const RatingEntry& entry = session_->Entry();
    showing_ = true;
    cmbLengthUnit_->setCurrentIndex(entry.Device().LengthUnit);
    cmbFlowUnit_->setCurrentIndex(entry.Device().FlowUnit);
    const QString rows = ToQt(entry.RowsText());
    if (txtRows_->toPlainText() != rows) {
        txtRows_->setPlainText(rows);
    }
    showing_ = false;
    lblColumns_->setText(QStringLiteral("&Rows: ") + EscapedAmpersands(entry.RowsCaption()));
    fields_->Show(entry);
    ShowRows();
    ShowRating();
}

void frmRating::ShowRows() {
    lblRows_->setText(ToQt(session_->Entry().RowsReport()));
}

void frmRating::ShowRating() {
    const RatingDevice& device = session_->Device();
    picture_ = PictureOf(device, session_->Made());
    lvwTable_->SetSheet(picture_.Table);
    lvwResiduals_->SetSheet(picture_.Residuals);
    tabs_->setTabVisible(ResidualsTab, !picture_.Residuals.Rows.empty());
    const std::size_t stops = picture_.Stops.size();
    stop_ = stops == 0 ? 0 : std::min(stop_, stops - 1);
    pctCurve_->Show(picture_, stop_);
    GoTo(stop_);
    ShowWords();
    ShowMarks();
    ShowTitle();
}

void frmRating::ShowWords() {
    QString words;
    for (const RatingChapter& chapter : ChaptersOf(session_->Device(), session_->Made())) {
        words += ChapterHtml(chapter);
    }
    // A text that is being read stays where it is as long as it says the same.
    if (words_ != words) {
        words_ = words;
        txtAbout_->setHtml(words);
    }
}

void frmRating::ShowMarks() {
    for (std::size_t i = 0; i < session_->Device().Values.size(); ++i) {
        fields_->Mark(i, session_->FieldMark(i));
    }
}

void frmRating::ShowTitle() {
    setWindowTitle(EscapedTitle(session_->Title()) + QStringLiteral("[*]"));
    setWindowModified(session_->Changed());
}

void frmRating::GoTo(std::size_t stop) {
    stop_ = stop;
    const QString told = ToQt(StopText(picture_, session_->Device(), stop));
    lblCursor_->setText(told);
    lblCursor_->setToolTip(told);
    pctCurve_->SetStop(stop, told);
    lvwTable_->SetRow(static_cast<int>(stop));
}

// ----- what the operator does

void frmRating::ChooseKind() {
    const QVariant chosen = cmbKind_->currentData();
    if (showing_ || !chosen.isValid()) {
        return;
    }
    session_->ChooseKind(RatingKinds()[chosen.toUInt()]);
    lblState_->clear();
    stop_ = 0;
    ShowKind();
    ShowUnits();
}

void frmRating::TakeRows() {
    const std::string text = session_->PickRows();
    if (text.empty() || unloaded_) {
        return;
    }
    // As if it were pasted, so that it can be undone.
    QTextCursor cursor(txtRows_->document());
    cursor.select(QTextCursor::Document);
    cursor.insertText(ToQt(text));
    ShowRating();
}

void frmRating::SaveTable() {
    if (session_->Save()) {
        lblState_->setText(QStringLiteral("Saved: %1 points.").arg(picture_.Curve.size()));
    }
    if (!unloaded_) {
        ShowRating();
    }
}

void frmRating::OpenTable() {
    if (session_->Open() && !unloaded_) {
        lblState_->clear();
        ShowEntry();
    }
}
