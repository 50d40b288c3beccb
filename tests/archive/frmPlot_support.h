#ifndef ORVIA_TESTS_ARCHIVE_FRM_PLOT_SUPPORT_H
#define ORVIA_TESTS_ARCHIVE_FRM_PLOT_SUPPORT_H

#include <QImage>
#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <utility>

#include "archive/named_series.h"
#include "archive/series_maker.h"

namespace plot_testing {

using namespace testing_support;

/// A level that rises and falls with the days, two days of it, every 15 minutes from SomeDay, with
/// temperature, pulses and flow; a gap from 10:00 to 14:00 of the first day, the clock set back by
/// an hour at 6:00 of the second.
[[nodiscard]] inline Series TwoDays(int shift = 0) {
    SeriesMaker maker(2, 1);
    maker.FlowIsLevel(1);
    maker.Logger().DecPlaces = {2, 1, 0, 0, 0, 0, 0, 0, 0, 0};
    maker.Logger().AlarmEnable = {1, 0};
    maker.Logger().AlarmHour = {14, 0};
    for (int i = 0; i < 192; ++i) {
        if (i >= 40 && i < 56) {
            continue;
        }
        const Moment back = i >= 120 ? SecondsPerHour : 0;
        const double turn = (i + shift) * 3.14159 / 48;
        maker.Add(SomeDay + i * 900 - back, {static_cast<int>(500 + 400 * std::sin(turn)),
                                             static_cast<int>(180 + 60 * std::cos(turn)), i * 3});
    }
    return std::move(maker.Made);
}

[[nodiscard]] inline std::shared_ptr<const NamedSeries> Shared(std::string name, Series series) {
    return std::make_shared<const NamedSeries>(std::move(name), std::move(series));
}

/// Pixels of about a colour.
[[nodiscard]] inline int PixelsOf(const QImage& image, const QColor& colour, QRect where = {}) {
    where = where.isNull() ? image.rect() : where.intersected(image.rect());
    int count = 0;
    for (int y = where.top(); y <= where.bottom(); ++y) {
        for (int x = where.left(); x <= where.right(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            constexpr int Near = 40;
            count += std::abs(pixel.red() - colour.red()) < Near &&
                             std::abs(pixel.green() - colour.green()) < Near &&
                             std::abs(pixel.blue() - colour.blue()) < Near
                         ? 1
                         : 0;
        }
    }
    return count;
}

}  // namespace plot_testing

#endif  // ORVIA_TESTS_ARCHIVE_FRM_PLOT_SUPPORT_H
