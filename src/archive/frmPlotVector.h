#ifndef ORVIA_ARCHIVE_FRM_PLOT_VECTOR_H
#define ORVIA_ARCHIVE_FRM_PLOT_VECTOR_H

#include <QIODevice>
#include <QPaintDevice>
#include <QSize>
#include <memory>

class QPaintEngine;

/// A sheet whose painter writes scalable vector graphics: lines, areas and texts, each with the
/// pen, brush, place and clip that it was painted with.
class VectorSheet final : public QPaintDevice {
 public:
    /// `size` in pixels, 96 of them to an inch. What is painted goes to `file`.
    VectorSheet(QIODevice& file, QSize size);
    ~VectorSheet() override;

    [[nodiscard]] QPaintEngine* paintEngine() const override;

 protected:
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override;

 private:
    QSize size_;
    std::unique_ptr<QPaintEngine> engine_;
};

#endif  // ORVIA_ARCHIVE_FRM_PLOT_VECTOR_H
