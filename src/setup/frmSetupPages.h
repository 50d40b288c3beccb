#ifndef ORVIA_SETUP_FRMSETUPPAGES_H
#define ORVIA_SETUP_FRMSETUPPAGES_H

#include <QWidget>
#include <array>
#include <vector>

#include "setup/frmSetupFields.h"
#include "setup/setup_context.h"
#include "setup/setup_view.h"

class QGridLayout;
class QGroupBox;
class QLayout;
class QRadioButton;
class QPushButton;

/// The four pages of the set-up, one above the other; one is visible.
class frmSetupPages final : public QWidget {
 public:
    /// For a logger with the channel counts of the current one.
    frmSetupPages(const SetupRecords& records, QWidget* parent);

    /// The controls that hold a value.
    [[nodiscard]] frmSetupFields& Fields() { return fields_; }
    [[nodiscard]] const frmSetupFields& Fields() const { return fields_; }

    /// Shows page `n`, then hides the one that was visible.
    void SelectFrame(int n);

    /// Lets the controls of the flow page be used or not.
    void EnableFlow(const FlowStates& states);
    /// Lets the time of alarm 0 or 1 be set or not.
    void EnableAlarm(int alarm, bool on);

    /// cmdCalibrate of each channel that the logger has.
    [[nodiscard]] const std::vector<QPushButton*>& Calibrate() const { return cmdCalibrate_; }
    /// cmdBrowse of the flow page.
    [[nodiscard]] QPushButton* Browse() const { return cmdBrowse_; }
    /// The options of the flow page, by their codes.
    [[nodiscard]] const std::vector<QRadioButton*>& FlowOptions() const { return flowOptions_; }

 private:
    void BuildFrames();
    void BuildGeneralPage();
    QLayout* BuildIdentity(QWidget* page);
    QWidget* BuildTiming(QWidget* page);
    QLayout* BuildException(QWidget* page);
    QLayout* BuildBaudRate(QWidget* page);
    void BuildAlarm(QGridLayout& grid, int alarm);
    void BuildAnalogPage();
    void BuildHeads(QWidget* page);
    QGroupBox* BuildChannel(QWidget* page, int channel, bool exists);
    QWidget* NewCell(QGroupBox* panel, int channel, int number);
    [[nodiscard]] frmSetupFields::Validator UnitCheck() const;
    void BuildDigitalPage();
    QGroupBox* BuildPulse(QWidget* page, int channel, bool exists);
    void BuildFlowPage();
    void BuildFlowMethods(QGridLayout& grid);
    void BuildFlowDisplay(QGridLayout& grid);
    QGroupBox* BuildMannings(QWidget* page);

    const SetupRecords& records_;
    frmSetupFields fields_;
    std::array<QWidget*, 4> Frames_ = {};
    int CurrentFrame_ = 0;
    std::array<std::vector<QWidget*>, 2> alarms_;  ///< what the check box of an alarm turns on
    std::vector<QPushButton*> cmdCalibrate_;
    QPushButton* cmdBrowse_ = nullptr;
    std::vector<QRadioButton*> flowOptions_;
    std::vector<QWidget*> ofFlume_;
    std::vector<QWidget*> ofWeir_;
    std::vector<QWidget*> ofTable_;
    std::vector<QWidget*> ofFlow_;
    std::vector<QWidget*> ofMannings_;
};

#endif  // ORVIA_SETUP_FRMSETUPPAGES_H
