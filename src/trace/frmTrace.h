#ifndef ORVIA_TRACE_FRM_TRACE_H
#define ORVIA_TRACE_FRM_TRACE_H

#include <QDialog>
#include <QTimer>

#include "platform/host.h"
#include "records/address_book.h"
#include "trace/link_recorder.h"
#include "trace/trace_filter.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class TraceList;

/// The window of the trace: every exchange of the link in words, as it runs. It stands beside the
/// other windows, looks at what was kept and never uses the link.
class frmTrace final : public QDialog {
    Q_OBJECT

 public:
    frmTrace(LinkRecorder& recorder, const AddressBook& book, const Host& outside, QWidget* parent);
    ~frmTrace() override;

    /// Opens the window at the end of the trace; one that is open comes to the front as it is.
    void ShowOrRaise();
    /// Closes the window at the end of the program: nobody is asked or told anything any more.
    void Unload();

 protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

 private:
    void BuildChoice(QBoxLayout& column);
    void BuildSearch(QBoxLayout& column);
    void BuildList(QBoxLayout& column);
    void BuildButtons(QBoxLayout& column);
    void BuildKeys();
    void FitScreen();

    void Watch();
    void Follow();
    void ListLoggers();
    void ChooseFilter();
    void ShowHex();
    void ShowState();
    void Search(bool forward);
    void Copy();
    void SaveText();
    [[nodiscard]] LoggerNames Names() const;
    [[nodiscard]] TraceFilter Wanted() const;
    [[nodiscard]] bool WithHex() const;

    LinkRecorder& recorder_;
    const AddressBook& book_;
    const Host outside_;
    QTimer follow_{this};     ///< runs once behind a change
    std::uint64_t seen_ = 0;  ///< changes of the trace that are shown
    std::size_t listed_ = 0;  ///< loggers in the list of them
    bool unloaded_ = false;

    QComboBox* cmbLogger_ = nullptr;
    QComboBox* cmbKind_ = nullptr;
    QCheckBox* chkFaults_ = nullptr;
    QCheckBox* chkPause_ = nullptr;
    QCheckBox* chkHex_ = nullptr;
    QLineEdit* txtFind_ = nullptr;
    QPushButton* cmdFindNext_ = nullptr;
    QPushButton* cmdFindPrevious_ = nullptr;
    QLabel* lblFound_ = nullptr;
    TraceList* lvwTrace_ = nullptr;
    QPlainTextEdit* txtHex_ = nullptr;
    QLabel* lblState_ = nullptr;
    QPushButton* cmdCopy_ = nullptr;
    QPushButton* cmdSave_ = nullptr;
    QPushButton* cmdClose_ = nullptr;
};

#endif  // ORVIA_TRACE_FRM_TRACE_H
