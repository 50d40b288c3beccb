#ifndef ORVIA_FLOW_FRM_RATING_CURVE_H
#define ORVIA_FLOW_FRM_RATING_CURVE_H

#include <QFrame>
#include <functional>
#include <memory>

#include "flow/rating_picture.h"

/// A rating drawn as a curve, in the colours and the font of the desktop, with a cursor that goes
/// from row to row of its table: arrow keys, Page Up and Down, Home and End, or a click.
class RatingCurveView final : public QFrame {
 public:
    explicit RatingCurveView(QWidget* parent);
    ~RatingCurveView() override;

    /// Draws a rating; the cursor goes where `stop` says.
    void Show(const RatingPicture& picture, std::size_t stop);
    void SetLogarithmic(bool on);
    /// Puts the cursor on a row of the table; `told` says it in words.
    void SetStop(std::size_t stop, const QString& told);

    /// Called when the operator moves the cursor.
    std::function<void(std::size_t stop)> StopChosen;

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    struct Plot;

    void ApplyStyle();
    void FitAxes();
    void Choose(std::size_t stop);

    std::unique_ptr<Plot> plot_;
    RatingPicture picture_;
    std::size_t stop_ = 0;
    bool logarithmic_ = false;
};

#endif  // ORVIA_FLOW_FRM_RATING_CURVE_H
