#ifndef ORVIA_CLIENT_FRMCLIENTFRAME_H
#define ORVIA_CLIENT_FRMCLIENTFRAME_H

#include <QGroupBox>

/// A titled box whose line runs through the middle of its title. The style's own line lies below
/// the title, where the first text in the box stands.
class frmClientFrame final : public QGroupBox {
 public:
    using QGroupBox::QGroupBox;

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    [[nodiscard]] QRect TitleRect() const;
};

#endif  // ORVIA_CLIENT_FRMCLIENTFRAME_H
