#ifndef ORVIA_SETUP_FRMSETUPROW_H
#define ORVIA_SETUP_FRMSETUPROW_H

#include <QGroupBox>

/// The panel of a channel: its title stands beside the row of controls, not above it. One that
/// cannot be used has a faint line around it.
class frmSetupRow final : public QGroupBox {
 public:
    frmSetupRow(const QString& title, QWidget* parent);

    /// What the row needs; the toolkit's box adds the height of a title above.
    [[nodiscard]] QSize minimumSizeHint() const override { return QWidget::minimumSizeHint(); }

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    [[nodiscard]] int TitleWidth() const;
    void KeepRoomForTitle();
};

#endif  // ORVIA_SETUP_FRMSETUPROW_H
