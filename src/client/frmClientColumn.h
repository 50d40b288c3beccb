#ifndef ORVIA_CLIENT_FRMCLIENTCOLUMN_H
#define ORVIA_CLIENT_FRMCLIENTCOLUMN_H

#include <QWidget>
#include <vector>

#include "client/bars.h"

/// The box around one bar. It covers its ground itself, so that drawing a bar paints nothing else
/// of the window.
class frmClientColumn final : public QWidget {
    Q_OBJECT

 public:
    explicit frmClientColumn(QWidget* parent);

    /// Takes the place of the bar in the column and of the column in the window, in twips, and how
    /// many pixels a twip has.
    void SetGeometryOfBar(const TwipsBox& bar, const TwipsBox& column, double pixelsPerTwip);
    /// Fills these rectangles of the window, which replace those of before.
    void Fill(const std::vector<BarFill>& fills);
    /// Empties the column.
    void Clear();

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    [[nodiscard]] QRectF PixelsOf(const TwipsBox& box) const;
    [[nodiscard]] QRectF Outline() const;
    [[nodiscard]] QColor ColourOf(BarColour colour) const;

    std::vector<BarFill> fills_;
    TwipsBox bar_;
    TwipsBox column_;
    double pixelsPerTwip_ = 0;
};

#endif  // ORVIA_CLIENT_FRMCLIENTCOLUMN_H
