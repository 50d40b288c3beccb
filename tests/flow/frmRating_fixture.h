#ifndef ORVIA_TESTS_FLOW_FRM_RATING_FIXTURE_H
#define ORVIA_TESTS_FLOW_FRM_RATING_FIXTURE_H

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QWindow>
#include <memory>
#include <string>

#include "common/path_text.h"
#include "flow/frmRating.h"
#include "flow/frmRatingCurve.h"
#include "flow/frmRatingSheet.h"
#include "platform/qt/text_qt.h"
#include "support/qt/find_control.h"
#include "support/qt/run_events.h"
#include "support/virtual_host.h"

namespace rating_testing {

using namespace testing_support;

/// The real window on a host of fakes.
class RatingFormTest : public ::testing::Test {
 protected:
    void Open() {
        form_->ShowOrRaise();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    }
    void ChooseKind(std::string_view key) {
        const auto place = static_cast<int>(FindRatingKind(key) - RatingKinds().data());
        auto* list = Control<QComboBox>("cmbKind");
        list->setCurrentIndex(list->findData(place));
        QCoreApplication::processEvents();
    }

    template <typename Widget = QWidget>
    Widget* Control(const std::string& name) const {
        return Find<Widget>(*form_, name);
    }
    /// Name of the control of a figure of the kind that is shown.
    std::string InputOf(std::string_view kind, std::string_view key) const {
        const RatingKind& told = *FindRatingKind(kind);
        const std::size_t at = RatingFieldAt(told, key).value();
        const bool choice = told.Fields[at].Units == RatingUnits::Choice;
        return (choice ? "cmbDimension(" : "txtDimension(") + std::to_string(at) + ")";
    }
    void Click(const std::string& name) const {
        QWidget* control = Control(name);
        QTest::mouseClick(form_->windowHandle(), Qt::LeftButton, {},
                          control->mapTo(form_.get(), control->rect().center()));
        QCoreApplication::processEvents();
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(form_->windowHandle(), key, modifiers);
        QCoreApplication::processEvents();
    }
    /// Types in place of what the field holds.
    void Type(const std::string& name, const char* text) const {
        auto* field = Control<QLineEdit>(name);
        field->setFocus();
        field->selectAll();
        *text == '\0' ? QTest::keyClick(field, Qt::Key_Delete)
                      : QTest::keyClicks(field, QLatin1String(text));
    }
    std::string Text(const std::string& name) const {
        return FromQt(Control<QLineEdit>(name)->text());
    }
    std::string LabelText(const std::string& name) const {
        return FromQt(Control<QLabel>(name)->text());
    }
    std::string About() const { return FromQt(Control<QTextBrowser>("txtAbout")->toPlainText()); }
    bool AboutSays(const std::string& words) const {
        return About().find(words) != std::string::npos;
    }
    int TableRows() const { return Control<QTableView>("lvwTable")->model()->rowCount(); }
    std::string Cell(const std::string& list, int row, int column) const {
        const QAbstractItemModel* model = Control<QTableView>(list)->model();
        return FromQt(model->index(row, column).data().toString());
    }

    void Pick(const std::string& name) { host_.Dialogs.Picks.push_back(PathOf(name)); }
    std::string PathOf(const std::string& name) const { return JoinPath(folder_, name); }
    const std::vector<BoxContent>& Boxes() const { return host_.Boxes.Shown; }

    VirtualHost host_;
    std::string folder_ = FreshFolder("frmRating");
    Host outside_ = host_.AsHost(folder_);
    std::unique_ptr<frmRating> form_ = std::make_unique<frmRating>(outside_, nullptr);
};

}  // namespace rating_testing

#endif  // ORVIA_TESTS_FLOW_FRM_RATING_FIXTURE_H
