#ifndef ORVIA_ARCHIVE_FRM_ARCHIVE_H
#define ORVIA_ARCHIVE_FRM_ARCHIVE_H

#include <QDialog>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "archive/archive_care.h"
#include "archive/archive_session.h"

class ArchiveList;
class LoggerModel;
class LoggerOrder;
class QBoxLayout;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QSplitter;
class UploadModel;

/// The window on what was collected: the loggers with what there is of each, their uploads, and
/// what can be made of a period. It stands beside the other windows and never uses the link.
class frmArchive final : public QDialog {
    Q_OBJECT

 public:
    frmArchive(const ArchiveWork& work, QWidget* parent);
    ~frmArchive() override;

    /// Opens the window; one that is open comes to the front as it is.
    void ShowOrRaise();
    /// Closes the window at the end of the program: nothing is told any more. A back-up that runs
    /// is finished before the window goes, a deletion stays where it is.
    void Unload();

    /// Escape acts as the close box.
    void reject() override { close(); }

    /// Opens the window of a plot, and that of a report.
    std::function<void(std::vector<std::shared_ptr<const NamedSeries>>, const Period&)> ShowPlot;
    std::function<void(std::shared_ptr<const NamedSeries>, const Period&)> ShowReport;

 protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

 private:
    void BuildChoice(QBoxLayout& column);
    void BuildFilter(QBoxLayout& column);
    void BuildLists(QBoxLayout& column);
    [[nodiscard]] QWidget* BuildLoggers();
    [[nodiscard]] QWidget* BuildUploads();
    void BuildPeriod(QBoxLayout& column);
    [[nodiscard]] QDateEdit* DayField(const char* name);
    void BuildCare(QBoxLayout& column);
    QPushButton* AddButton(QBoxLayout& row, const char* name, const char* caption, const char* hint,
                           void (frmArchive::*press)());
    void BuildTimers();
    void OrderTabs();
    void FitScreen();

    void Refresh();
    void LookAt(bool shared);
    void ShowChoice();
    void TakeList();
    void ShowUploads();
    void ShowStates();
    void ShowCount();
    void TakeFilter(const QString& text);

    void CountGaps();
    [[nodiscard]] std::optional<std::int64_t> NextToCount() const;

    [[nodiscard]] std::vector<LoggerLine> Chosen() const;
    [[nodiscard]] PeriodChoice ChosenPeriod() const;
    [[nodiscard]] ChosenSeries ReadChosen();
    template <typename Act>
    auto WhileAsking(Act act);
    void Plot();
    void Report();
    void SaveCsv();
    void DeleteLogger();
    void BackUp();
    void Check();
    void Cancel();
    void StepCare();
    void Tell(const CareResult& result);
    /// Tells why something cannot be done, if so.
    [[nodiscard]] bool Refuses(const std::optional<std::string>& why);

    ArchiveSession session_;
    ArchiveCare care_;
    LoggerModel* model_ = nullptr;
    LoggerOrder* order_ = nullptr;
    UploadModel* uploads_ = nullptr;
    QTimer look_;   ///< whether something changed, while the window is seen
    QTimer count_;  ///< counts gaps, a portion at a time
    QTimer step_;   ///< takes the care of the archive further
    bool unloaded_ = false;
    bool asking_ = false;  ///< a box or a dialog of this window stands

    QWidget* pnlChoice_ = nullptr;  ///< seen while there is a choice
    QRadioButton* optShared_ = nullptr;
    QRadioButton* optLocal_ = nullptr;
    QLineEdit* txtFilter_ = nullptr;
    QLabel* lblCount_ = nullptr;
    QLabel* lblNotice_ = nullptr;
    QSplitter* lists_ = nullptr;
    ArchiveList* lvwLoggers_ = nullptr;
    QLabel* lblUploads_ = nullptr;
    ArchiveList* lvwUploads_ = nullptr;
    QComboBox* cmbPeriod_ = nullptr;
    QDateEdit* dtpFrom_ = nullptr;
    QDateEdit* dtpTo_ = nullptr;
    QPushButton* cmdPlot_ = nullptr;
    QPushButton* cmdReport_ = nullptr;
    QPushButton* cmdSaveCsv_ = nullptr;
    QCheckBox* chkMachine_ = nullptr;
    QLabel* lblState_ = nullptr;
    QProgressBar* ProgressBar_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    QPushButton* cmdDelete_ = nullptr;
    QPushButton* cmdBackUp_ = nullptr;
    QPushButton* cmdCheck_ = nullptr;
    QPushButton* cmdClose_ = nullptr;
};

#endif  // ORVIA_ARCHIVE_FRM_ARCHIVE_H
