#ifndef ORVIA_CLIENT_BARS_H
#define ORVIA_CLIENT_BARS_H

#include <cstdint>
#include <vector>

#include "client/client_panel.h"
#include "client/client_record.h"

/// What a rectangle of a column is filled with.
enum class BarColour : std::uint8_t {
    Ground,   ///< the window's background
    Channel,  ///< a channel's bar
    Flow      ///< the bar of flow or velocity
};

/// A rectangle to fill, in twips from the upper left corner of the window.
struct BarFill {
    int Column = 0;  ///< 0 to 7
    BarColour Colour = BarColour::Ground;
    TwipsBox Box;
    bool operator==(const BarFill&) const = default;
};

/// Height of a column's bar as a share of the whole, 0 to 1; 0 for a column that shows nothing
/// or has no scale. A share that is no number is a Fault.
[[nodiscard]] double BarFraction(const MeterEntry& meter);

/// What has changed since the last drawing, in the order of filling, empty if nothing has; takes
/// note that it is drawn. `frameTop` is the top of the columns' frames in the window.
[[nodiscard]] std::vector<BarFill> ChangedBars(ClientRecord& record, std::int32_t frameTop);

/// Makes the next ChangedBars draw every bar.
void ForgetDrawnBars(ClientRecord& record);

#endif  // ORVIA_CLIENT_BARS_H
