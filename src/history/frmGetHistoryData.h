#ifndef ORVIA_HISTORY_FRM_GET_HISTORY_DATA_H
#define ORVIA_HISTORY_FRM_GET_HISTORY_DATA_H

#include <QDialog>
#include <QTimer>
#include <cstdint>
#include <string>

#include "history/history_context.h"
#include "history/upload.h"

class QLabel;
class QProgressBar;
class QPushButton;

/// The dialog in which an upload runs, from its first activation until it hides.
class frmGetHistoryData final : public QDialog, public UploadView {
    Q_OBJECT

 public:
    frmGetHistoryData(const HistoryContext& history, std::int32_t totalRecords, QWidget* parent);

    /// Escape and the close box act as cmdCancel: the upload ends in its own time.
    void reject() override { Press(TagCancel); }

    // UploadView
    [[nodiscard]] std::string Tag() const override { return tag_; }
    void SetTag(const std::string& tag) override { tag_ = tag; }
    void SetBarMaximum(std::int32_t maximum) override;
    void SetBarValue(std::int32_t value) override;
    void SetRetries(const std::string& text) override;
    void SetProgress(const std::string& text) override;
    void AllowOkay() override;
    void Hide() override;

 protected:
    void showEvent(QShowEvent* event) override;

 private:
    /// What the bar and the labels show.
    struct Shown {
        std::int32_t Maximum = 1;
        std::int32_t Value = 0;
        std::string Retries;
        std::string Progress;
    };

    void BuildProgress();
    void BuildButtons();
    /// Sets the Tag of a button, once the upload has begun. Before, it would only keep the upload
    /// from beginning, and nothing would ever hide the dialog.
    void Press(const char* tag);
    void Move();
    void ShowNow();

    const HistoryContext history_;
    const std::int32_t TotalRecords_;
    std::string tag_ = TagStarting;
    Shown told_;
    bool moved_ = false;    ///< told since the last move
    QTimer untilNextMove_;  ///< runs while a further move would come too soon

    QProgressBar* ProgressBar1_ = nullptr;
    QLabel* lblRetries_ = nullptr;
    QLabel* lblGetHistoryData_ = nullptr;
    QPushButton* cmdOkay_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
};

#endif  // ORVIA_HISTORY_FRM_GET_HISTORY_DATA_H
