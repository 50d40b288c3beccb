#ifndef ORVIA_ARCHIVE_PLOT_LOOKS_H
#define ORVIA_ARCHIVE_PLOT_LOOKS_H

#include <cstddef>
#include <cstdint>

/// Shape that stands on a line here and there, so that lines are told apart without colour.
enum class PlotMarker { Disc, Square, Triangle, Diamond, Cross, Circle };

/// How a line is drawn. Colours are 0xRRGGBB.
struct PlotLook {
    std::uint32_t OnLight = 0;  ///< on a light ground
    std::uint32_t OnDark = 0;
    PlotMarker Marker = PlotMarker::Disc;
};

/// Looks that differ from each other; behind them they begin again.
inline constexpr std::size_t PlotLooks = 24;

/// The look of that number, from 0.
[[nodiscard]] PlotLook PlotLookOf(std::size_t number);

#endif  // ORVIA_ARCHIVE_PLOT_LOOKS_H
