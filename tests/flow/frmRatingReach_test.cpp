// The window of ratings for those who do without a pointer, a picture or a large screen.
#include <QAccessible>
#include <QGroupBox>
#include <QScrollArea>
#include <map>

#include "frmRating_fixture.h"

namespace rating_testing {
namespace {

TEST_F(RatingFormTest, EveryControlHasANameForThoseWhoCannotSeeIt) {
    Open();
    for (const char* kind : {"throat-rectangular", "points"}) {
        ChooseKind(kind);
        int stops = 0;
        for (const QWidget* widget : form_->findChildren<QWidget*>()) {
            const bool own =
                !widget->objectName().isEmpty() && !widget->objectName().startsWith(u"qt_");
            if (!own || !widget->isVisible() || (widget->focusPolicy() & Qt::TabFocus) == 0) {
                continue;
            }
            ++stops;
            QAccessibleInterface* reader =
                QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
            ASSERT_NE(reader, nullptr);
            EXPECT_FALSE(reader->text(QAccessible::Name).isEmpty()) << FromQt(widget->objectName());
        }
        EXPECT_GE(stops, 13);
    }
}

TEST_F(RatingFormTest, NoTwoControlsHaveTheSameKey) {
    Open();
    for (const RatingKind& kind : RatingKinds()) {
        ChooseKind(kind.Key);
        std::map<QChar, std::string> keys;
        const auto take = [&keys](const QString& text) {
            const auto at = QString(text)
                                .replace(QStringLiteral("&&"), QStringLiteral("  "))
                                .indexOf(QLatin1Char('&'));
            if (at >= 0) {
                const auto [known, fresh] = keys.emplace(text[at + 1].toLower(), FromQt(text));
                EXPECT_TRUE(fresh) << FromQt(text) << " and " << known->second;
            }
        };
        for (const QLabel* label : form_->findChildren<QLabel*>()) {
            take(label->buddy() != nullptr ? label->text() : QString());
        }
        for (const QAbstractButton* button : form_->findChildren<QAbstractButton*>()) {
            take(button->text());
        }
        for (const QGroupBox* box : form_->findChildren<QGroupBox*>()) {
            take(box->title());
        }
        const auto* tabs = Control<QTabWidget>("TabStrip");
        take(tabs->tabText(0));
        take(tabs->tabText(1));
        EXPECT_GE(keys.size(), 14U);
    }
}

TEST_F(RatingFormTest, TheTabKeyGoesThroughTheWindowInItsOrder) {
    Open();
    ChooseKind("points");
    Control("cmbKind")->setFocus();
    std::vector<std::string> order;
    for (int i = 0; i < 14; ++i) {
        order.push_back(FromQt(QApplication::focusWidget()->objectName()));
        Press(Qt::Key_Tab);
    }
    EXPECT_EQ(order, (std::vector<std::string>{"cmbKind", "txtName", "cmbLengthUnit", "cmbFlowUnit",
                                               "cmbDimension(0)", "txtRows", "cmdRows",
                                               "chkLogarithmic", "pctCurve", "qt_tabwidget_tabbar",
                                               "lvwTable", "txtAbout", "cmdOpen", "cmdSave"}));
}

TEST_F(RatingFormTest, FitsASmallScreenForEveryKind) {
    Open();
    for (const RatingKind& kind : RatingKinds()) {
        ChooseKind(kind.Key);
        QCoreApplication::processEvents();
        EXPECT_LE(form_->minimumSizeHint().width(), 1000) << kind.Key;
        EXPECT_LE(form_->minimumSizeHint().height(), 560) << kind.Key;
        const auto* scroll = form_->findChild<QScrollArea*>();
        EXPECT_LE(scroll->widget()->minimumSizeHint().width(), scroll->viewport()->width())
            << kind.Key << " has fields that are cut off";
    }
}

}  // namespace
}  // namespace rating_testing
