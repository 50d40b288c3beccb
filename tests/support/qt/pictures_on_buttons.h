#ifndef ORVIA_TESTS_SUPPORT_QT_PICTURES_ON_BUTTONS_H
#define ORVIA_TESTS_SUPPORT_QT_PICTURES_ON_BUTTONS_H

#include <QApplication>
#include <QProxyStyle>

namespace testing_support {

/// As long as it lives, the style gives the buttons of boxes their pictures, as some desktops do.
class PicturesOnButtons final {
 public:
    PicturesOnButtons() : before_(QApplication::style()->name()) {
        QApplication::setStyle(new Style(before_));
    }
    ~PicturesOnButtons() { QApplication::setStyle(before_); }
    PicturesOnButtons(const PicturesOnButtons&) = delete;
    PicturesOnButtons& operator=(const PicturesOnButtons&) = delete;

 private:
    class Style final : public QProxyStyle {
     public:
        using QProxyStyle::QProxyStyle;

        int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                      QStyleHintReturn* answer) const override {
            return hint == SH_DialogButtonBox_ButtonsHaveIcons
                       ? 1
                       : QProxyStyle::styleHint(hint, option, widget, answer);
        }
    };

    const QString before_;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_QT_PICTURES_ON_BUTTONS_H
