#ifndef ORVIA_COLLECT_FRM_COLLECT_H
#define ORVIA_COLLECT_FRM_COLLECT_H

#include <QDialog>
#include <QTimer>
#include <string>
#include <vector>

#include "collect/collect_schedule.h"
#include "collect/digest_settings.h"
#include "records/address_book.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QTabWidget;
class QTimeEdit;

/// What the window of regular collections works with. The host has an archive.
struct CollectWork {
    CollectSchedule& schedule;
    const AddressBook& book;
    const Host& outside;
};

/// The window of regular collections: when rounds come, what their digest tells, and the logs of
/// those that were. It stands beside the other windows and never uses the link.
class frmCollect final : public QDialog {
    Q_OBJECT

 public:
    frmCollect(const CollectWork& work, QWidget* parent);

    /// Opens the window on what is kept; one that is open comes to the front as it is.
    void ShowOrRaise();
    /// Closes the window at the end of the program: nobody is asked anything any more.
    void Unload();

    void reject() override;

 protected:
    void closeEvent(QCloseEvent* event) override;

 private:
    /// All that can be chosen.
    struct Choices {
        CollectPlan Plan;
        DigestLimits Limits;
        DigestDelivery Delivery;
        bool AtStart = false;
    };

    [[nodiscard]] QWidget* BuildPlanPage();
    void BuildTimes(QBoxLayout& column, QWidget* page);
    void BuildWhat(QBoxLayout& column, QWidget* page);
    void BuildRounds(QBoxLayout& column, QWidget* page);
    [[nodiscard]] QWidget* BuildDigestPage();
    void BuildLowest(QBoxLayout& column, QWidget* page);
    [[nodiscard]] QWidget* BuildLogPage();
    void BuildButtons(QBoxLayout& column);
    void FitScreen();

    void ShowKept();
    [[nodiscard]] Choices Chosen() const;
    [[nodiscard]] bool IsChanged() const;
    void Save();
    [[nodiscard]] bool MayClose();
    void Changed();
    void ShowLowest();
    void AddLowest();
    void RemoveLowest();
    void Refresh();
    void LoadRounds();
    void ShowRound();

    const CollectWork work_;
    Choices kept_;
    std::map<ChannelOfLogger, double> lowest_;
    std::vector<ArchiveRound> rounds_;  ///< as cmbRounds lists them
    std::string lastShown_;
    bool listed_ = false;
    bool unloaded_ = false;
    QTimer refresh_;

    QTabWidget* tabPages_ = nullptr;
    QCheckBox* chkOn_ = nullptr;
    QRadioButton* optHours_ = nullptr;
    QRadioButton* optDaily_ = nullptr;
    QRadioButton* optWeekly_ = nullptr;
    QSpinBox* spnHours_ = nullptr;
    QComboBox* cmbWeekday_ = nullptr;
    QTimeEdit* tmeAt_ = nullptr;
    QRadioButton* optBook_ = nullptr;
    QRadioButton* optWindows_ = nullptr;
    QCheckBox* chkSync_ = nullptr;
    QCheckBox* chkAtStart_ = nullptr;
    QLabel* lblNext_ = nullptr;
    QLabel* lblLast_ = nullptr;
    QLabel* lblRound_ = nullptr;
    QSpinBox* spnMemory_ = nullptr;
    QListWidget* lstLowest_ = nullptr;
    QComboBox* cmbLogger_ = nullptr;
    QSpinBox* spnChannel_ = nullptr;
    QDoubleSpinBox* spnLowest_ = nullptr;
    QPushButton* cmdAdd_ = nullptr;
    QPushButton* cmdRemove_ = nullptr;
    QCheckBox* chkCommand_ = nullptr;
    QLineEdit* txtCommand_ = nullptr;
    QLabel* lblFile_ = nullptr;
    QComboBox* cmbRounds_ = nullptr;
    QPlainTextEdit* txtDigest_ = nullptr;
    QPlainTextEdit* txtLog_ = nullptr;
    QLabel* lblState_ = nullptr;
    QPushButton* cmdNow_ = nullptr;
    QPushButton* cmdStop_ = nullptr;
    QPushButton* cmdSave_ = nullptr;
    QPushButton* cmdClose_ = nullptr;
};

#endif  // ORVIA_COLLECT_FRM_COLLECT_H
