#ifndef ORVIA_TRACE_FRM_SUPPORT_H
#define ORVIA_TRACE_FRM_SUPPORT_H

#include <QDialog>
#include <functional>
#include <vector>

#include "trace/support_report.h"

class QBoxLayout;
class QCheckBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTabBar;

/// The window of the report for support: shows every text that goes in, and saves just those. It
/// stands beside the other windows and never uses the link.
class frmSupport final : public QDialog {
    Q_OBJECT

 public:
    using Source = std::function<SupportSource()>;

    /// `source` tells how the console is at that moment.
    frmSupport(Source source, const Host& outside, QWidget* parent);

    /// Opens the window on a report made now; one that is open comes to the front with a new one.
    void ShowOrRaise();
    /// Closes the window at the end of the program: nobody is asked or told anything any more.
    void Unload();

 private:
    void BuildTexts(QBoxLayout& column);
    void BuildButtons(QBoxLayout& column);
    void FitScreen();
    void MakeReport();
    void ShowPart();
    void Save();

    const Source source_;
    const Host outside_;
    std::vector<ZipEntry> parts_;  ///< what is shown, and what is saved
    LocalTime made_;
    bool unloaded_ = false;

    QCheckBox* chkNames_ = nullptr;
    QTabBar* tabParts_ = nullptr;
    QPlainTextEdit* txtPart_ = nullptr;
    QLabel* lblState_ = nullptr;
    QPushButton* cmdSave_ = nullptr;
    QPushButton* cmdClose_ = nullptr;
};

#endif  // ORVIA_TRACE_FRM_SUPPORT_H
