#ifndef ORVIA_HISTORY_FRM_HISTORY_OPTIONS_H
#define ORVIA_HISTORY_FRM_HISTORY_OPTIONS_H

#include <QDialog>

#include "records/settings.h"

class QRadioButton;

/// How date and time stand in the files that the viewer saves.
class frmHistoryOptions final : public QDialog {
    Q_OBJECT

 public:
    frmHistoryOptions(Settings& settings, QWidget* parent);

 private:
    void BuildChoice();
    void BuildButtons();
    void Store();

    Settings& settings_;
    QRadioButton* optComma_ = nullptr;
    QRadioButton* optNoComma_ = nullptr;
};

#endif  // ORVIA_HISTORY_FRM_HISTORY_OPTIONS_H
