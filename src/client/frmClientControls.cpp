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
#include "client/layout.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"
#include "platform/qt/twips.h"

namespace {

// A line of text that the places of the design leave room for, in pixels.
constexpr double DesignLine = 17;
constexpr int SmallestText = 7;  // pixels; what does not even fit so is told by a tip
constexpr int LargestFigure = 22;

QRect PixelsOf(const TwipsBox& box, double pixelsPerTwip) {
    const auto pixels = [pixelsPerTwip](std::int32_t twips) {
        return static_cast<int>(std::lround(twips * pixelsPerTwip));
    };
    return {QPoint(pixels(box.Left), pixels(box.Top)),
            QPoint(pixels(box.Left + box.Width) - 1, pixels(box.Top + box.Height) - 1)};
}

Qt::Alignment AlignmentOf(const PanelControl& control, const ControlRow& row) {
    const Qt::Alignment vertical =
        row.Name == "lblHistory" ? Qt::AlignTop : Qt::Alignment(Qt::AlignVCenter);
    switch (control.Align) {
        case TextAlign::Centre:
            return Qt::AlignHCenter | vertical;
        case TextAlign::Right:
            return Qt::AlignRight | vertical;
        default:
            return Qt::AlignLeft | vertical;
    }
}

// The font of a kind of label at its largest; the text may have to shrink from there.
QFont LargestFont(ControlKind kind, const QFont& base, int height) {
    const int usual = QFontInfo(base).pixelSize();
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

bool Fits(const QLabel& label, const QFont& font) {
    const int flags = label.wordWrap() ? Qt::TextWordWrap : 0;
    const QSize size = QFontMetrics(font).boundingRect(label.rect(), flags, label.text()).size();
    return size.width() <= label.width() && size.height() <= label.height();
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
            auto* frame = new QGroupBox(around);
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
            auto* label = new QLabel(around);
            label->setTextFormat(Qt::PlainText);
            return label;
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
        button->setIcon(
            QIcon(QStringLiteral(":/icons/client-%1.svg").arg(QLatin1String(icons[mode]))));
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
    for (const Group& group : groups_) {
        ShowGroup(group, next);
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

void frmClientControls::ShowGroup(const Group& group, ClientPanel& panel) {
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

// The members of a control array keep one size, the largest at which each of them fits.
void frmClientControls::FitTexts(const Group& group) const {
    std::vector<QLabel*> labels;
    for (QWidget* widget : group.Widgets) {
        if (auto* label = qobject_cast<QLabel*>(widget)) {
            labels.push_back(label);
        }
    }
    if (labels.empty()) {
        return;
    }
    QFont font = LargestFont(group.Row->Kind, content_.font(), labels[0]->height());
    const auto allFit = [&] {
        return std::all_of(labels.begin(), labels.end(),
                           [&font](const QLabel* label) { return Fits(*label, font); });
    };
    while (font.pixelSize() > SmallestText && !allFit()) {
        font.setPixelSize(font.pixelSize() - 1);
    }
    for (QLabel* label : labels) {
        label->setFont(font);
        // A tip has no plain text of its own: what looks like markup would be taken for it.
        const bool fits = Fits(*label, font);
        label->setToolTip(fits ? QString() : Qt::convertFromPlainText(label->text()));
        if (group.Row->Shows.empty()) {
            // A reader that finds no words here would take those of the tip, markup and all.
            label->setAccessibleDescription(fits ? QString() : label->text());
        }
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
