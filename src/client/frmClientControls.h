#ifndef ORVIA_CLIENT_FRMCLIENTCONTROLS_H
#define ORVIA_CLIENT_FRMCLIENTCONTROLS_H

#include <QHash>
#include <QString>
#include <array>
#include <vector>

#include "client/bars.h"
#include "client/client_panel.h"
#include "client/client_record.h"

class QLabel;
class QObject;
class QPushButton;
class QWidget;
class frmClientColumn;
class frmClientText;

/// The controls of a client window: made from the table of controls, filled from a panel.
class frmClientControls {
 public:
    /// Makes all controls inside `content`.
    explicit frmClientControls(QWidget& content);

    /// Copies what differs from the last call.
    void Show(const ClientPanel& panel);
    /// Fills all again, after the font or the palette changed.
    void Restyle();

    /// Gives the columns their bars' places; again whenever the size of a twip changed.
    void FixBars(const ClientRecord& record, const ClientPanel& panel);
    /// Fills these rectangles of the window; a column without any keeps what it shows.
    void DrawBars(const std::vector<BarFill>& fills);
    /// Empties every column.
    void ClearBars();
    /// Paints the frames of the columns anew.
    void RepaintColumns();

    /// Pixels of a twip: more than the plain ones when the font is larger than the design's.
    [[nodiscard]] double PixelsPerTwip() const { return pixelsPerTwip_; }
    /// The picture button of a display mode, which is one of the five.
    [[nodiscard]] QPushButton* Button(std::int16_t displayMode) const;
    /// Whether a right press on the widget shows the menu.
    [[nodiscard]] bool ShowsPopup(const QObject* widget) const;

 private:
    struct Group {
        const ControlRow* Row;
        std::vector<QWidget*> Widgets;
    };

    using Texts = std::vector<frmClientText*>;

    void MakeGroup(const ControlRow& row);
    [[nodiscard]] QWidget* MakeControl(const ControlRow& row, int index);
    [[nodiscard]] QWidget* ContainerOf(const ControlRow& row, int index) const;
    void MakeButtons();
    bool ShowGroup(const Group& group, ClientPanel& panel);
    void ShowControl(QWidget& widget, const PanelControl& control);
    [[nodiscard]] static Texts TextsOf(const Group& group);
    void FitTexts(const Group& group) const;
    void FitInformation() const;
    void FitTogether(const Texts& texts, const ControlRow& row) const;
    void TellWhole(frmClientText& text) const;
    void ScaleToFont();
    void DescribeFor(std::int16_t displayMode);
    void MarkChosen(std::int16_t displayMode);
    void CheckChosen(std::int16_t displayMode);
    void BlendDisabledText();

    QWidget& content_;
    std::vector<Group> groups_;
    QHash<const QObject*, const ControlRow*> rows_;
    std::array<QPushButton*, 5> buttons_ = {};
    std::array<frmClientColumn*, BarColumns> columns_ = {};
    ClientPanel shown_;
    bool nothingShown_ = true;
    double pixelsPerTwip_ = 0;
};

#endif  // ORVIA_CLIENT_FRMCLIENTCONTROLS_H
