#ifndef ORVIA_TESTS_SUPPORT_QT_DESK_LOOK_H
#define ORVIA_TESTS_SUPPORT_QT_DESK_LOOK_H

#include <QPalette>
#include <QString>
#include <QWidget>
#include <functional>

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

/// The folder that pictures go to, by ORVIA_SCREENSHOTS; none where it is empty, as they cost time.
[[nodiscard]] QString PictureFolder();

/// Keeps a picture of a window as NAME-1x.png, by the scale of its screen, where a folder waits.
void KeepPicture(QWidget& window, const QString& name);

/// Sees that a window fits a screen of 1024 by 600 and one of 1280 by 900, looks at it on each, and
/// keeps pictures as NAME-light-990-1x.png, by the width of the window.
void KeepOnBothScreens(QWidget& window, const QString& name, bool dark,
                       const std::function<void()>& look = {});

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_QT_DESK_LOOK_H
