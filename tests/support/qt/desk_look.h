#ifndef ORVIA_TESTS_SUPPORT_QT_DESK_LOOK_H
#define ORVIA_TESTS_SUPPORT_QT_DESK_LOOK_H

#include <QPalette>
#include <QString>
#include <QWidget>

namespace testing_support {

/// The palette of a light or a dark desktop.
[[nodiscard]] QPalette DeskPalette(bool dark);

/// A desktop's colours, there before any window is made, as long as this lives.
class DeskColours {
 public:
    explicit DeskColours(bool dark);
    ~DeskColours();
    DeskColours(const DeskColours&) = delete;
    DeskColours& operator=(const DeskColours&) = delete;

 private:
    const QPalette before_;
};

/// "light" or "dark", for the name of a picture.
[[nodiscard]] QString DeskName(bool dark);

/// Keeps a picture of a window as NAME-1x.png, by the scale of its screen, where ORVIA_SCREENSHOTS
/// names a folder. Else none is made, as they cost time.
void KeepPicture(QWidget& window, const QString& name);

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_QT_DESK_LOOK_H
