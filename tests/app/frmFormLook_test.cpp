#include <gmock/gmock.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "support/qt/form_look.h"

// The look itself, on a form with one fault of each kind.

namespace testing_support {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class FormLook : public ::testing::Test {
 protected:
    FormLook() {
        form_.resize(400, 300);
        first_->setGeometry(10, 10, 120, 30);
        second_->setGeometry(10, 60, 120, 30);
        label_->setGeometry(10, 110, 200, 30);
        form_.show();
    }

    QWidget form_;
    QPushButton* first_ = new QPushButton(QStringLiteral("&First"), &form_);
    QPushButton* second_ = new QPushButton(QStringLiteral("&Second"), &form_);
    QLabel* label_ = new QLabel(QStringLiteral("A line of text"), &form_);
};

TEST_F(FormLook, FindsNothingInAFormThatIsInOrder) {
    EXPECT_THAT(FaultsOf(form_), IsEmpty());
}

TEST_F(FormLook, FindsATextThatIsCut) {
    label_->setFixedWidth(20);
    EXPECT_THAT(FaultsOf(form_), Contains(StartsWith("cut: ")));
}

TEST_F(FormLook, FindsControlsThatOverlap) {
    second_->move(20, 20);
    EXPECT_THAT(FaultsOf(form_), Contains(StartsWith("overlap: ")));
}

TEST_F(FormLook, FindsATextOfWeakContrast) {
    QPalette palette = label_->palette();
    palette.setColor(QPalette::WindowText, palette.color(QPalette::Window).darker(130));
    label_->setPalette(palette);
    EXPECT_THAT(FaultsOf(form_), Contains(StartsWith("contrast: ")));
}

TEST_F(FormLook, FindsAControlWithoutAName) {
    QLineEdit field(&form_);
    field.setGeometry(10, 160, 100, 30);
    field.show();
    EXPECT_THAT(FaultsOf(form_), Contains(StartsWith("no name: ")));
    field.setAccessibleName(QStringLiteral("Field"));
    EXPECT_THAT(FaultsOf(form_), IsEmpty());
}

TEST_F(FormLook, FindsATabKeyThatGoesBackUp) {
    QPushButton third(QStringLiteral("&Between"), &form_);
    third.setGeometry(10, 200, 100, 30);
    third.show();
    EXPECT_THAT(FaultsOf(form_), IsEmpty());
    second_->move(10, 240);
    EXPECT_THAT(FaultsOf(form_), Contains(StartsWith("tab goes back: ")));
}

TEST_F(FormLook, TakesTheOrderOfTabForARing) {
    QPushButton third(QStringLiteral("&Last"), &form_);
    third.setGeometry(10, 200, 100, 30);
    third.show();
    QWidget::setTabOrder(&third, first_);
    EXPECT_THAT(FaultsOf(form_), IsEmpty());
}

TEST_F(FormLook, FindsAKeyThatTwoControlsShare) {
    second_->setText(QStringLiteral("&Further"));
    EXPECT_THAT(FaultsOf(form_), Contains(StartsWith("key Alt+F: ")));
}

}  // namespace
}  // namespace testing_support
