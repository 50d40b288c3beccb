#include "client/frmClientControls.h"

#include <QFontMetrics>
#include <QGroupBox>
#include <QIcon>
#include <QKeySequence>
#include <QLabel>
#include <QPushButton>
#include <QTextDocument>
#include <algorithm>
#include <cmath>

#include "client/frmClientColumn.h"
#include "client/frmClientFrame.h"
#include "client/frmClientText.h"
#include "client/layout.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/pictures.h"
#include "platform/qt/text_qt.h"
#include "platform/qt/twips.h"

namespace {

// A line of text that the places of the design leave room for, in pixels.
constexpr double DesignLine = 17;
constexpr int SmallestText = 9;  // pixels; below it nobody reads in the field
constexpr int LargestFigure = 22;

QRect PixelsOf(const TwipsBox& box, double pixelsPerTwip) {
    const auto pixels = [pixelsPerTwip](std::int32_t twips) {
        return static_cast<int>(std::lround(twips * pixelsPerTwip));
    };
    return {QPoint(pixels(box.Left), pixels(box.Top)),
            QPoint(pixels(box.Left + box.Width) - 1, pixels(box.Top + box.Height) - 1)};
}

// A text of several lines begins at the top, where those beside it begin.
Qt::Alignment AlignmentOf(const PanelControl& control, const ControlRow& row) {
    const bool lines = control.Wraps || row.Name == "lblHistory";
    const Qt::Alignment vertical = lines ? Qt::AlignTop : Qt::AlignVCenter;
    switch (control.Align) {
        case TextAlign::Centre:
            return Qt::AlignHCenter | vertical;
        case TextAlign::Right:
            return Qt::AlignRight | vertical;
        default:
            return Qt::AlignLeft | vertical;
    }
}

// The boxes of information stand in one column, each with its frame around it.
bool IsInformation(const ControlRow& row) {
    return row.Kind == ControlKind::Text && !row.Container.empty() &&
           row.Container != "fraFlowMode";
}

// The font of a kind of label at its largest; the text may have to shrink from there.
QFont LargestFont(ControlKind kind, const QFont& base, const QLabel& label) {
    const int usual = QFontInfo(base).pixelSize();
    // Value and units stand one under the other where a text wraps.
    const int height = label.wordWrap() ? label.height() / 2 : label.height();
    QFont font = base;
    font.setPixelSize(usual);
    if (kind == ControlKind::Figure) {
        font.setBold(true);
        font.setPixelSize(std::clamp(height * 4 / 5, SmallestText, std::max(usual, LargestFigure)));
    } else if (kind == ControlKind::Text) {
        font.setBold(true);
        font.setPixelSize(std::clamp(height * 3 / 5, usual, usual + 3));
    }
    return font;
}

// `percent` of the first colour, the rest of the second.
QColor Blend(const QColor& first, const QColor& second, int percent) {
    const auto blend = [percent](int one, int other) {
        return (one * percent + other * (100 - percent)) / 100;
    };
    return {blend(first.red(), second.red()), blend(first.green(), second.green()),
            blend(first.blue(), second.blue())};
}

}  // namespace

frmClientControls::frmClientControls(QWidget& content) : content_(content) {
    for (const ControlRow& row : ClientControls()) {
        MakeGroup(row);
    }
    MakeButtons();
    ScaleToFont();
    BlendDisabledText();
}

void frmClientControls::MakeGroup(const ControlRow& row) {
    ClientPanel design;
    Group group{&row, {}};
    const int count = static_cast<int>(row.Of(design).size());
    for (int index = 0; index < count; ++index) {
        QWidget* widget = MakeControl(row, index);
        widget->setObjectName(ToQt(ControlName(row, index)));
        widget->setVisible(false);
        // A press on these must not pass on to what lies around them, which shows the menu.
        widget->setAttribute(Qt::WA_NoMousePropagation, !row.ShowsPopup && row.Container.empty());
        rows_.insert(widget, &row);
        group.Widgets.push_back(widget);
    }
    groups_.push_back(std::move(group));
}

QWidget* frmClientControls::ContainerOf(const ControlRow& row, int index) const {
    const auto around = std::find_if(groups_.begin(), groups_.end(), [&row](const Group& group) {
        return group.Row->Name == row.Container;
    });
    if (around == groups_.end()) {
        return &content_;
    }
    const bool single = around->Widgets.size() == 1;
    return around->Widgets[single ? 0 : static_cast<std::size_t>(index)];
}

QWidget* frmClientControls::MakeControl(const ControlRow& row, int index) {
    QWidget* around = ContainerOf(row, index);
    switch (row.Kind) {
        case ControlKind::Frame: {
            auto* frame = new frmClientFrame(around);
            frame->setAutoFillBackground(true);
            if (row.Name == "fraMeter") {
                frame->setAlignment(Qt::AlignHCenter);
            }
            return frame;
        }
        case ControlKind::Column: {
            auto* column = new frmClientColumn(around);
            columns_[static_cast<std::size_t>(index)] = column;
            return column;
        }
        case ControlKind::Button:
            return NamedButton(around, {}, {});
        default: {
            return new frmClientText(around);
        }
    }
}

void frmClientControls::MakeButtons() {
    constexpr const char* icons[] = {"small", "medium", "wide", "meter", "flow"};
    std::size_t mode = 0;
    for (const Group& group : groups_) {
        if (group.Row->Kind != ControlKind::Button) {
            continue;
        }
        auto* button = static_cast<QPushButton*>(group.Widgets[0]);
        const QKeySequence key(Qt::ALT | (Qt::Key_1 + static_cast<int>(mode)));
        const QString name = ToQt(group.Row->Shows);
        button->setAccessibleName(name);
        button->setToolTip(
            QStringLiteral("%1 (%2)").arg(name, key.toString(QKeySequence::NativeText)));
        button->setIcon(Picture(QStringLiteral("client-%1").arg(QLatin1String(icons[mode]))));
        button->setShortcut(key);
        button->setCheckable(true);
        button->setFocusPolicy(Qt::StrongFocus);
        if (mode > 0) {
            QWidget::setTabOrder(buttons_[mode - 1], button);
        }
        buttons_[mode] = button;
        ++mode;
    }
}

QPushButton* frmClientControls::Button(std::int16_t displayMode) const {
    return buttons_.at(static_cast<std::size_t>(displayMode));
}

bool frmClientControls::ShowsPopup(const QObject* widget) const {
    const ControlRow* row = rows_.value(widget);
    return row != nullptr && row->ShowsPopup;
}

void frmClientControls::ScaleToFont() {
    const double line = QFontMetrics(content_.font()).height();
    pixelsPerTwip_ = std::max(1.0, line / DesignLine) / TwipsPerPixel;
}

// The usual grey of disabled text is too weak to be read in the sun.
void frmClientControls::BlendDisabledText() {
    content_.setPalette(QPalette());
    QPalette palette = content_.palette();
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    const QColor ground = palette.color(QPalette::Active, QPalette::Window);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, Blend(text, ground, 65));
    content_.setPalette(palette);
}

void frmClientControls::Show(const ClientPanel& panel) {
    ClientPanel next = panel;
    bool information = false;
    for (const Group& group : groups_) {
        const bool refit = ShowGroup(group, next);
        information = information || (refit && IsInformation(*group.Row));
    }
    if (information) {
        FitInformation();
    }
    if (nothingShown_ || shown_.DisplayMode != panel.DisplayMode) {
        DescribeFor(panel.DisplayMode);
        MarkChosen(panel.DisplayMode);
        content_.update();
    }
    CheckChosen(panel.DisplayMode);
    nothingShown_ = false;
    shown_ = std::move(next);
}

// What a column shows hangs on the display mode.
void frmClientControls::DescribeFor(std::int16_t displayMode) {
    for (const Group& group : groups_) {
        if (group.Row->Kind == ControlKind::Button || group.Row->Shows.empty()) {
            continue;  // told by name
        }
        int index = 0;
        for (QWidget* widget : group.Widgets) {
            widget->setAccessibleDescription(
                ToQt(ControlDescription(*group.Row, index++, displayMode)));
        }
    }
}

// The sunken look of a checked button is hardly seen on a dark ground.
void frmClientControls::MarkChosen(std::int16_t displayMode) {
    const QPalette plain = content_.palette();
    QPalette marked = plain;
    marked.setColor(QPalette::Button,
                    Blend(plain.color(QPalette::Button), plain.color(QPalette::Highlight), 70));
    for (std::size_t mode = 0; mode < buttons_.size(); ++mode) {
        const bool chosen = static_cast<int>(mode) == displayMode;
        buttons_[mode]->setPalette(chosen ? marked : QPalette());
    }
}

// At every call: a click on the chosen button has let it out again.
void frmClientControls::CheckChosen(std::int16_t displayMode) {
    for (std::size_t mode = 0; mode < buttons_.size(); ++mode) {
        buttons_[mode]->setChecked(static_cast<int>(mode) == displayMode);
    }
}

// True when a text or a place is another, so that the boxes of information may need another size.
bool frmClientControls::ShowGroup(const Group& group, ClientPanel& panel) {
    const auto next = group.Row->Of(panel);
    const auto shown = group.Row->Of(shown_);
    bool refit = false;
    for (std::size_t i = 0; i < next.size(); ++i) {
        if (nothingShown_ || next[i] != shown[i]) {
            refit = refit || nothingShown_ || next[i].Text != shown[i].Text ||
                    next[i].Place != shown[i].Place;
            ShowControl(*group.Widgets[i], next[i]);
        }
    }
    if (refit) {
        FitTexts(group);
    }
    return refit;
}

void frmClientControls::ShowControl(QWidget& widget, const PanelControl& control) {
    widget.setGeometry(PixelsOf(control.Place, pixelsPerTwip_));
    if (auto* label = qobject_cast<QLabel*>(&widget)) {
        label->setText(ToQt(control.Text));
        label->setWordWrap(control.Wraps);
        label->setAlignment(AlignmentOf(control, *rows_.value(&widget)));
    } else if (auto* frame = qobject_cast<QGroupBox*>(&widget)) {
        frame->setTitle(EscapedAmpersands(control.Text));
    } else if (auto* button = qobject_cast<QPushButton*>(&widget)) {
        const int side = std::min(widget.width(), widget.height()) - 6;
        button->setIconSize({side, side});
    }
    widget.setEnabled(control.Enabled);
    widget.setVisible(control.Visible);
}

// A reading that is long makes none of the others small. Captions stay what they are, and keep one
// size.
void frmClientControls::FitTexts(const Group& group) const {
    const Texts texts = TextsOf(group);
    if (group.Row->Kind == ControlKind::Heading) {
        FitTogether(texts, *group.Row);
    } else if (!IsInformation(*group.Row)) {
        for (frmClientText* text : texts) {
            FitTogether({text}, *group.Row);
        }
    }
}

void frmClientControls::FitInformation() const {
    Texts texts;
    const ControlRow* row = nullptr;
    for (const Group& group : groups_) {
        if (IsInformation(*group.Row)) {
            const Texts more = TextsOf(group);
            texts.insert(texts.end(), more.begin(), more.end());
            row = group.Row;
        }
    }
    FitTogether(texts, *row);
}

frmClientControls::Texts frmClientControls::TextsOf(const Group& group) {
    Texts texts;
    for (QWidget* widget : group.Widgets) {
        if (auto* text = dynamic_cast<frmClientText*>(widget)) {
            texts.push_back(text);
        }
    }
    return texts;
}

// Gives the texts the largest size at which each of them fits. One that has to be cut at any size
// has no say in that of the others.
void frmClientControls::FitTogether(const Texts& texts, const ControlRow& row) const {
    if (texts.empty()) {
        return;
    }
    const QFont largest = LargestFont(row.Kind, content_.font(), *texts.front());
    int size = texts.size() == 1 ? SmallestText : largest.pixelSize();
    for (const frmClientText* text : texts) {
        if (const auto own = text->FittingSize(largest, SmallestText)) {
            size = texts.size() == 1 ? *own : std::min(size, *own);
        }
    }
    for (frmClientText* text : texts) {
        text->ShowAt(size, largest);
        TellWhole(*text);
    }
}

// A tip has no plain text of its own: what looks like markup would be taken for it.
void frmClientControls::TellWhole(frmClientText& text) const {
    text.setToolTip(text.IsCut() ? Qt::convertFromPlainText(text.text()) : QString());
    if (rows_.value(&text)->Shows.empty()) {
        // A reader that finds no words here would take those of the tip, markup and all.
        text.setAccessibleDescription(text.IsCut() ? text.text() : QString());
    }
}

void frmClientControls::Restyle() {
    ScaleToFont();
    BlendDisabledText();
    nothingShown_ = true;
    Show(ClientPanel(shown_));
}

void frmClientControls::FixBars(const ClientRecord& record, const ClientPanel& panel) {
    int index = 0;
    for (frmClientColumn* column : columns_) {
        const ColumnPlaces places = PlacesOfColumn(panel, record, index++);
        column->SetGeometryOfBar(places.Bar, places.Column, pixelsPerTwip_);
    }
}

void frmClientControls::DrawBars(const std::vector<BarFill>& fills) {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        std::vector<BarFill> own;
        std::copy_if(fills.begin(), fills.end(), std::back_inserter(own),
                     [i](const BarFill& fill) { return fill.Column == static_cast<int>(i); });
        if (!own.empty()) {
            columns_[i]->Fill(own);
        }
    }
}

void frmClientControls::ClearBars() {
    for (frmClientColumn* column : columns_) {
        column->Clear();
    }
}

void frmClientControls::RepaintColumns() {
    for (const Group& group : groups_) {
        if (group.Row->Name == "fraMeter") {
            for (QWidget* frame : group.Widgets) {
                frame->update();
            }
        }
    }
}
