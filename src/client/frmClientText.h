#ifndef ORVIA_CLIENT_FRMCLIENTTEXT_H
#define ORVIA_CLIENT_FRMCLIENTTEXT_H

#include <QFont>
#include <QLabel>
#include <optional>

/// A label whose text takes the size that its place has room for. What does not even fit at the
/// smallest one is cut on the screen alone: the text itself, which a screen reader takes, and the
/// tip tell the whole.
class frmClientText final : public QLabel {
 public:
    explicit frmClientText(QWidget* parent);

    /// The largest size of that font, down to `smallest` pixels, at which the text fits; none if
    /// it does not fit at all.
    [[nodiscard]] std::optional<int> FittingSize(const QFont& largest, int smallest) const;
    /// Shows the text at that size of the font. It stands on the line on which a text of the
    /// font's own size would, so that neighbours of other sizes stand on one line.
    void ShowAt(int pixels, const QFont& largest);
    /// Whether the end of the text is not on the screen.
    [[nodiscard]] bool IsCut() const { return cut_; }

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    [[nodiscard]] int Gap() const;
    [[nodiscard]] int Room() const;
    [[nodiscard]] bool Fits(const QFont& font) const;
    [[nodiscard]] QString CutText() const;

    bool cut_ = false;
};

#endif  // ORVIA_CLIENT_FRMCLIENTTEXT_H
