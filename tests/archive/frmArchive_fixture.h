#ifndef ORVIA_TESTS_ARCHIVE_FRM_ARCHIVE_FIXTURE_H
#define ORVIA_TESTS_ARCHIVE_FRM_ARCHIVE_FIXTURE_H

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "archive/archive_rows.h"
#include "archive/archive_transaction.h"
#include "archive/frmArchive.h"
#include "archive/series_maker.h"
#include "platform/qt/sql_archive.h"
#include "support/qt/find_control.h"
#include "support/qt/run_events.h"
#include "support/virtual_host.h"

namespace archive_testing {

using namespace testing_support;

/// What a plot was asked to show.
struct AskedPlot {
    std::vector<std::shared_ptr<const NamedSeries>> Series;
    Period Span;
};

/// The real window on a host of fakes and a real archive.
class ArchiveFormTest : public ::testing::Test {
 protected:
    ArchiveFormTest() {
        outside_.TickMilliseconds = 4;
        outside_.Archive = &archive_;
        Make();
    }

    /// Makes the window anew.
    void Make() {
        form_ = std::make_unique<frmArchive>(
            ArchiveWork{.windows = {.outside = outside_, .lastFolder = lastFolder_},
                        .settings = settings_},
            nullptr);
        form_->ShowPlot = [this](auto series, const Period& span) {
            plots_.push_back({std::move(series), span});
        };
        form_->ShowReport = [this](auto series, const Period& span) {
            reports_.push_back({{std::move(series)}, span});
        };
    }
    void Open() {
        form_->ShowOrRaise();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    }

    /// Keeps a logger with one upload of `records` records, one each 15 minutes from `first` on.
    std::int64_t Keep(const std::string& name, int records, Moment first = SomeDay) {
        archive_.Open();
        ArchiveTransaction transaction(archive_, ArchiveTransaction::Kind::Writing);
        const auto number = static_cast<std::uint8_t>(archive_.Loggers().size());
        ArchiveLogger logger{.Mac = {0, 0x13, 0xA2, 0, static_cast<std::uint8_t>(number / 100),
                                     static_cast<std::uint8_t>(number % 100)},
                             .Name = name,
                             .Records = records,
                             .Uploads = 1,
                             .Revision = 1};
        archive_.AddLogger(logger);
        SeriesMaker maker(2, 0);
        maker.Logger().LoggerName = name.substr(0, 20);
        ArchiveSettings settings = SettingsRow(maker.Logger(), FlowTable());
        archive_.AddSettings(logger.Id, settings);
        ArchiveUpload upload{.Logger = logger.Id,
                             .Begin = 1'700'000'000'000,
                             .End = 1'700'000'060'000,
                             .Outcome = ArchiveOutcome::Complete,
                             .Firmware = 12,
                             .Name = name,
                             .Settings = settings.Id,
                             .Said = records,
                             .Received = records};
        archive_.AddUpload(upload);
        std::vector<ArchiveRecord> rows;
        for (int i = 0; i < records; ++i) {
            rows.push_back({.Place = i + 1,
                            .Time = TimeNumberAt(first + i * Moment{900}),
                            .Counts = {static_cast<std::uint16_t>(i)},
                            .Upload = upload.Id});
        }
        archive_.AddRecords(logger.Id, rows);
        transaction.Commit();
        return logger.Id;
    }

    template <typename Widget = QWidget>
    Widget* Control(const std::string& name) const {
        return Find<Widget>(*form_, name);
    }
    void Click(const std::string& name) const { QTest::mouseClick(Control(name), Qt::LeftButton); }
    std::string LabelText(const std::string& name) const {
        return FromQt(Control<QLabel>(name)->text());
    }
    QAbstractItemModel& List(const std::string& name) const {
        return *Control<QTableView>(name)->model();
    }
    std::string Cell(const std::string& list, int row, int column) const {
        const QAbstractItemModel& model = List(list);
        return FromQt(model.index(row, column).data().toString());
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (int row = 0; row < List("lvwLoggers").rowCount(); ++row) {
            names.push_back(Cell("lvwLoggers", row, 0));
        }
        return names;
    }
    /// Chooses some rows of the loggers.
    void Choose(const std::vector<int>& rows) const {
        auto* view = Control<QTableView>("lvwLoggers");
        view->clearSelection();
        for (const int row : rows) {
            view->selectionModel()->select(view->model()->index(row, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
    }
    void ChoosePeriod(int number) const {
        Control<QComboBox>("cmbPeriod")->setCurrentIndex(number);
    }
    bool IsIdle() const { return !Control("ProgressBar")->isVisible(); }
    const std::vector<BoxContent>& Boxes() const { return host_.Boxes.Shown; }
    QString FileName(const char* name) const {
        return QString(folder_.filePath(QLatin1String(name)));
    }

    QTemporaryDir folder_;
    VirtualHost host_;
    Host outside_ = host_.AsHost("/nowhere");
    Settings settings_;
    std::string lastFolder_;
    SqlArchive archive_{{.File = folder_.filePath(QStringLiteral("data/archive.sqlite"))}};
    std::vector<AskedPlot> plots_;
    std::vector<AskedPlot> reports_;
    std::unique_ptr<frmArchive> form_;
};

enum PeriodRow { All, LastDay, LastWeek, LastMonth, FromTo };

}  // namespace archive_testing

#endif  // ORVIA_TESTS_ARCHIVE_FRM_ARCHIVE_FIXTURE_H
