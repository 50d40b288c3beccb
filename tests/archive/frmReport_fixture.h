#ifndef ORVIA_TESTS_ARCHIVE_FRM_REPORT_FIXTURE_H
#define ORVIA_TESTS_ARCHIVE_FRM_REPORT_FIXTURE_H

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QWindow>
#include <cmath>
#include <memory>
#include <string>

#include "archive/frmReport.h"
#include "archive/report_words.h"
#include "archive/series_maker.h"
#include "common/path_text.h"
#include "platform/qt/text_qt.h"
#include "support/qt/find_control.h"
#include "support/virtual_host.h"

namespace testing_support {

/// Two weeks of a logger with a flow, every quarter of an hour, an afternoon of it missing.
[[nodiscard]] inline SeriesMaker TwoWeeks(int analog = 2, int pulse = 1) {
    SeriesMaker maker(analog, pulse);
    maker.FlowIsLevel(1);
    maker.Logger().DecPlaces = {2, 1, 0, 1, 2, 1, 0, 1, 1, 0};
    maker.Logger().FlowDeviceName = "V 90";
    maker.Logger().FlowDecPlaces = 1;
    for (int i = 0; i < 14 * 96; ++i) {
        if (i > 300 && i < 320) {
            continue;
        }
        const double day = i / 96.0 * 6.2831853;
        const int level = static_cast<int>(40 + 25 * std::sin(day) + 10 * std::sin(3.3 * day));
        maker.Add(SomeDay + Moment{i} * 900,
                  {level, 500 + i % 96, i * 2, 20 + i % 7, i % 1000, i * 3 % 700, i % 11 * 60,
                   i % 300, i * 7 % 65536, i % 100});
    }
    return maker;
}

/// The real window on a host of fakes.
class ReportFormTest : public ::testing::Test {
 protected:
    ~ReportFormTest() override { delete form_; }

    void Open(const SeriesMaker& maker = TwoWeeks(), const Period& span = TwoWeeksSpan) {
        delete form_;
        series_ = std::make_shared<const NamedSeries>("Pump 3", maker.Made);
        form_ = new frmReport({outside_, lastFolder_}, series_, span, nullptr);
        form_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form_));
        Settle();
    }
    /// Until nothing is worked out any more.
    void Settle() {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !form_->IsWorking(); }, 30'000));
    }

    template <typename Widget = QWidget>
    Widget* Control(const std::string& name) const {
        return Find<Widget>(*form_, name);
    }
    void Click(const std::string& name) const {
        QWidget* control = Control(name);
        QTest::mouseClick(form_->windowHandle(), Qt::LeftButton, {},
                          control->mapTo(form_, control->rect().center()));
        QCoreApplication::processEvents();
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(form_->windowHandle(), key, modifiers);
        QCoreApplication::processEvents();
    }
    void Choose(const std::string& list, int row) {
        Control<QComboBox>(list)->setCurrentIndex(row);
        Settle();
    }
    void SetDate(const std::string& field, const QDate& date) {
        Control<QDateEdit>(field)->setDate(date);
        Settle();
    }
    void Type(const std::string& name, const char* text) const {
        auto* field = Control<QLineEdit>(name);
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, QLatin1String(text));
    }
    std::string LabelText(const std::string& name) const {
        return FromQt(Control<QLabel>(name)->text());
    }
    bool IsEnabled(const std::string& name) const { return Control(name)->isEnabled(); }

    /// The texts of a list, what heads its rows first.
    std::vector<std::vector<std::string>> Cells(const std::string& list) const {
        const QAbstractItemModel* model = Control<QTableView>(list)->model();
        std::vector<std::vector<std::string>> rows;
        for (int row = 0; row < model->rowCount(); ++row) {
            rows.push_back({FromQt(model->headerData(row, Qt::Vertical).toString())});
            for (int column = 0; column < model->columnCount(); ++column) {
                rows.back().push_back(FromQt(model->index(row, column).data().toString()));
            }
        }
        return rows;
    }
    Report Expected(const Period& span = TwoWeeksSpan, PeriodStep step = PeriodStep::Day,
                    std::optional<VolumeUnit> unit = std::nullopt, const std::string& site = "",
                    const std::string& madeBy = "") const {
        return MakeReport(series_->Values(), {span, step, unit, site, madeBy}, host_.Clock);
    }
    /// What the window shows is this report.
    void ExpectShown(const Report& report) const {
        EXPECT_EQ(Cells("lvwReport"), report.Rows);
        ASSERT_EQ(Cells("lvwTotal").size(), 1U);
        EXPECT_EQ(Cells("lvwTotal").front(), report.Total);
        EXPECT_EQ(LabelText("lblSummary"), PeriodSummary(report));
    }

    void Pick(const std::string& name) { host_.Dialogs.Picks.push_back(PathOf(name)); }
    std::string PathOf(const std::string& name) const { return JoinPath(folder_, name); }
    const std::vector<BoxContent>& Boxes() const { return host_.Boxes.Shown; }
    /// Runs one of the programs that read a PDF; what it printed.
    static std::string Run(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForStarted()) << FromQt(program) << " is not installed";
        EXPECT_TRUE(process.waitForFinished(60'000));
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return process.readAllStandardOutput().toStdString();
    }
    static std::string TextOfPdf(const std::string& path) {
        return Run(QStringLiteral("pdftotext"),
                   {QStringLiteral("-layout"), ToQt(path), QStringLiteral("-")});
    }
    static std::string FactsOfPdf(const std::string& path) {
        return Run(QStringLiteral("pdfinfo"), {ToQt(path)});
    }

    static inline const Period TwoWeeksSpan{SomeDay, SomeDay + 14 * SecondsPerDay};
    VirtualHost host_;
    std::string folder_ = FreshFolder("frmReport");
    Host outside_ = host_.AsHost(folder_);
    std::string lastFolder_;
    std::shared_ptr<const NamedSeries> series_;
    QPointer<frmReport> form_;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_ARCHIVE_FRM_REPORT_FIXTURE_H
