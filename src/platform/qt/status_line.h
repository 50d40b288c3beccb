#ifndef ORVIA_PLATFORM_QT_STATUS_LINE_H
#define ORVIA_PLATFORM_QT_STATUS_LINE_H

#include <QLabel>
#include <string>

/// One line that tells what is being done, and what came of it. It asks for no width; what does not
/// fit ends in dots on the screen alone, with the whole in the tip.
class StatusLine final : public QLabel {
 public:
    StatusLine(QWidget* parent, const QString& name);

    /// Shows the text, a failure with the desktop's sign of warning before it; nothing happens if
    /// it stands there already.
    void Tell(const std::string& text, bool failed);

    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint(); }

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    [[nodiscard]] QString Cut() const;
    void TellWhole();
    [[nodiscard]] int SignWidth() const;

    bool failed_ = false;
};

#endif  // ORVIA_PLATFORM_QT_STATUS_LINE_H
