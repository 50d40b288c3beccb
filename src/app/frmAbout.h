#ifndef ORVIA_APP_FRM_ABOUT_H
#define ORVIA_APP_FRM_ABOUT_H

#include <QDialog>

/// Name and version of the program; the Escape key closes it.
class frmAbout final : public QDialog {
 public:
    explicit frmAbout(QWidget* parent);
};

#endif  // ORVIA_APP_FRM_ABOUT_H
