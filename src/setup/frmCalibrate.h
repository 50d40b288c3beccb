#ifndef ORVIA_SETUP_FRMCALIBRATE_H
#define ORVIA_SETUP_FRMCALIBRATE_H

#include <QDialog>
#include <QTimer>
#include <string>

#include "setup/calibration.h"
#include "setup/setup_context.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

/// The form of the calibration wizard, which serves all four steps; hidden between them.
class frmCalibrate final : public QDialog, public CalibrationForm {
    Q_OBJECT

 public:
    frmCalibrate(const SetupRecords& records, QWidget* parent);

    // CalibrationForm
    [[nodiscard]] CalibrationState& State() override { return calibration_; }
    void SetCaption(const std::string& caption) override;
    void SetQuestion(std::string_view question) override;
    void SetField(const std::string& text) override;
    [[nodiscard]] std::string Field() const override;
    void EnableBack(bool on) override;
    void SetNextCaption(std::string_view caption) override;
    void StartTimer() override { Timer1_.start(); }
    void StopTimer() override { Timer1_.stop(); }
    void ShowModally() override;

 private:
    void BuildField();
    void BuildButtons();
    [[nodiscard]] bool Validate();
    void Finish(const char* result);

    const SetupRecords& records_;
    CalibrationState calibration_;
    QGroupBox* Frame1_ = nullptr;
    QLabel* lblCalibrate_ = nullptr;
    QLineEdit* txtCalibrate_ = nullptr;
    QPushButton* cmdBack_ = nullptr;
    QPushButton* cmdNext_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    QTimer Timer1_{this};
};

#endif  // ORVIA_SETUP_FRMCALIBRATE_H
