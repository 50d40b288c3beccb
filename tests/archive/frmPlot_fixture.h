#ifndef ORVIA_TESTS_ARCHIVE_FRM_PLOT_FIXTURE_H
#define ORVIA_TESTS_ARCHIVE_FRM_PLOT_FIXTURE_H

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <QWindow>
#include <memory>
#include <string>
#include <vector>

#include "archive/frmPlot.h"
#include "archive/frmPlotChart.h"
#include "common/path_text.h"
#include "frmPlot_support.h"
#include "platform/qt/text_qt.h"
#include "support/qt/find_control.h"
#include "support/qt/run_events.h"
#include "support/virtual_host.h"

namespace plot_testing {

/// The real window on a host of fakes.
class PlotFormTest : public ::testing::Test {
 protected:
    ~PlotFormTest() override {
        delete form_.data();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void Open(std::vector<std::shared_ptr<const NamedSeries>> series, const Period& span = {}) {
        Show(new frmPlot(context_, std::move(series), span, nullptr));
    }
    void OpenLive(frmPlot::LiveSource source) {
        Show(new frmPlot(context_, "Hill Tanks", std::move(source), nullptr));
    }
    void Show(frmPlot* form) {
        form_ = form;
        form_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form_.data()));
    }
    PlotChart& Chart() const { return *Control<PlotChart>("pctPlot"); }
    template <typename Widget = QWidget>
    Widget* Control(const std::string& name) const {
        return Find<Widget>(*form_, name);
    }
    void Click(const std::string& name) const {
        QWidget* control = Control(name);
        QTest::mouseClick(form_->windowHandle(), Qt::LeftButton, {},
                          control->mapTo(form_.data(), control->rect().center()));
        QCoreApplication::processEvents();
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(form_->windowHandle(), key, modifiers);
        QCoreApplication::processEvents();
    }
    std::string LabelText(const std::string& name) const {
        return FromQt(Control<QLabel>(name)->text());
    }
    /// The rows of the list: name, "x" if it is checked, value.
    std::vector<std::string> Rows() const {
        std::vector<std::string> rows;
        auto* list = Control<QTreeWidget>("lvwLines");
        for (QTreeWidgetItemIterator row(list); *row != nullptr; ++row) {
            rows.push_back(FromQt((*row)->text(0)) +
                           ((*row)->checkState(0) == Qt::Checked ? " x " : " ") +
                           FromQt((*row)->text(1)));
        }
        return rows;
    }
    QTreeWidgetItem* Row(const char* title) const {
        return Control<QTreeWidget>("lvwLines")
            ->findItems(QLatin1String(title), Qt::MatchExactly | Qt::MatchRecursive)
            .value(0);
    }
    void Pick(const std::string& name) { host_.Dialogs.Picks.push_back(PathOf(name)); }
    std::string PathOf(const std::string& name) const { return JoinPath(folder_, name); }
    const std::vector<BoxContent>& Boxes() const { return host_.Boxes.Shown; }

    VirtualHost host_;
    std::string folder_ = FreshFolder("frmPlot");
    Host outside_ = host_.AsHost(folder_);
    std::string lastFolder_;
    ArchiveContext context_{outside_, lastFolder_};
    std::shared_ptr<const NamedSeries> hill_ = Shared("Hill Tanks", TwoDays());
    std::shared_ptr<const NamedSeries> mill_ = Shared("Mill & Race", TwoDays(20));
    QPointer<frmPlot> form_;
};

}  // namespace plot_testing

#endif  // ORVIA_TESTS_ARCHIVE_FRM_PLOT_FIXTURE_H
