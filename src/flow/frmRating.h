#ifndef ORVIA_FLOW_FRM_RATING_H
#define ORVIA_FLOW_FRM_RATING_H

#include <QDialog>
#include <cstddef>
#include <memory>

#include "flow/rating_picture.h"
#include "flow/rating_session.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QScrollArea;
class QTabWidget;
class QTextBrowser;
class RatingCurveView;
class RatingFields;
class RatingSheetView;

/// The window in which a flow table is made from a device: kind, dimensions and units on the left,
/// and at once the rating as curve, as table and in words. It stands beside the other windows and
/// never uses the link.
class frmRating final : public QDialog {
    Q_OBJECT

 public:
    frmRating(const Host& outside, QWidget* parent);
    ~frmRating() override;

    /// Opens the window with a new table; one that is open comes to the front as it is.
    void ShowOrRaise();
    /// Whether nothing is lost by closing; asks about changes.
    [[nodiscard]] bool MayClose();
    /// Closes the window at the end of the program: nobody is asked or told anything any more.
    void Unload();

    /// Escape acts as the close box.
    void reject() override { close(); }

 protected:
    void closeEvent(QCloseEvent* event) override;

 private:
    void BuildKind(QBoxLayout& column);
    void FillKinds();
    void BuildUnits(QBoxLayout& column);
    void BuildFields(QBoxLayout& column);
    void BuildRows(QBoxLayout& column);
    void BuildRating(QBoxLayout& column);
    [[nodiscard]] QWidget* BuildCurve();
    [[nodiscard]] QWidget* BuildTables();
    void BuildButtons(QBoxLayout& column);
    void FitScreen();
    void OrderTabs();

    void ShowEntry();
    void ShowUnits();
    void ShowKind();
    void ShowRows();
    void ShowRating();
    void ShowWords();
    void ShowTitle();
    void ShowMarks();
    void GoTo(std::size_t stop);

    void ChooseKind();
    void TakeRows();
    void SaveTable();
    void OpenTable();

    const Host outside_;
    std::unique_ptr<RatingSession> session_;
    RatingPicture picture_;
    std::size_t stop_ = 0;
    QString words_;         ///< that txtAbout holds
    bool showing_ = false;  ///< the program, not the operator, changes the controls
    bool unloaded_ = false;

    QComboBox* cmbKind_ = nullptr;
    QLabel* lblKind_ = nullptr;
    QLineEdit* txtName_ = nullptr;
    QComboBox* cmbLengthUnit_ = nullptr;
    QComboBox* cmbFlowUnit_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    RatingFields* fields_ = nullptr;
    QGroupBox* fraRows_ = nullptr;
    QLabel* lblColumns_ = nullptr;
    QPlainTextEdit* txtRows_ = nullptr;
    QLabel* lblRows_ = nullptr;
    QPushButton* cmdRows_ = nullptr;
    RatingCurveView* pctCurve_ = nullptr;
    QLabel* lblCursor_ = nullptr;
    QCheckBox* chkLogarithmic_ = nullptr;
    QTabWidget* tabs_ = nullptr;
    RatingSheetView* lvwTable_ = nullptr;
    RatingSheetView* lvwResiduals_ = nullptr;
    QTextBrowser* txtAbout_ = nullptr;
    QLabel* lblState_ = nullptr;
    QPushButton* cmdOpen_ = nullptr;
    QPushButton* cmdSave_ = nullptr;
    QPushButton* cmdClose_ = nullptr;
};

#endif  // ORVIA_FLOW_FRM_RATING_H
