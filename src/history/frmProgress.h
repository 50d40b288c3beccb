#ifndef ORVIA_HISTORY_FRM_PROGRESS_H
#define ORVIA_HISTORY_FRM_PROGRESS_H

#include <QDialog>
#include <QElapsedTimer>
#include <cstdint>

#include "history/fill_list.h"

class QProgressBar;

/// Moves a bar on the screen behind some work, seldom enough to cost the work nothing: a bar may be
/// told of each of 200,000 rows. Windows are drawn meanwhile; clicks wait until the work is done.
class BarFollower final : public ProgressBar {
 public:
    explicit BarFollower(QProgressBar& bar) : bar_(bar) { sinceMove_.start(); }
    void SetValue(std::int32_t value) override;

 private:
    QProgressBar& bar_;
    QElapsedTimer sinceMove_;
    std::uint32_t calls_ = 0;
};

/// The window that stands while history is formatted for the first time.
class frmProgress final : public QDialog {
    Q_OBJECT

 public:
    explicit frmProgress(QWidget* parent);

    /// The bar, for who does the work.
    [[nodiscard]] QProgressBar& Bar() { return *ProgressBar_; }
    /// Leaving is the caller's matter.
    void reject() override {}

 private:
    QProgressBar* ProgressBar_ = nullptr;
};

#endif  // ORVIA_HISTORY_FRM_PROGRESS_H
