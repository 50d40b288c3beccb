#ifndef ORVIA_CLIENT_LAYOUT_H
#define ORVIA_CLIENT_LAYOUT_H

#include <cstdint>

#include "client/client_panel.h"
#include "client/client_record.h"

// Where the controls of a client window stand, in twips. Frames, bar columns and flow parameters
// have one place for good; the rest moves with the display mode.

/// Distance from one bar column to the next.
inline constexpr std::int32_t ColumnPitch = 1180;

/// How large a display mode is.
struct ModeSize {
    std::int32_t Height;         ///< of the window with its border
    std::int32_t Width;          ///< the same
    std::int32_t ContentHeight;  ///< the least that the controls need inside the border
    std::int32_t ContentWidth;   ///< the same
};

/// Whether it is one of the five display modes.
[[nodiscard]] bool IsDisplayMode(std::int16_t displayMode);

/// Size of a display mode, which must be one of the five.
[[nodiscard]] const ModeSize& SizeOfMode(std::int16_t displayMode);

/// Puts in place what never moves.
void PlaceFixedControls(ClientPanel& panel);

/// Sets places and visibility for one of the five display modes. The frame of the flow parameters
/// stays once it was shown.
void ArrangeControls(std::int16_t displayMode, ClientPanel& panel);

/// Works out the geometry of the bars from the place of the first column.
void FixBarGeometry(const ClientPanel& panel, ClientRecord& record);

/// Where one bar column stands, from the upper left corner of the window.
struct ColumnPlaces {
    TwipsBox Column;  ///< the box around the bar
    TwipsBox Bar;     ///< a full bar
};

/// Places of column `column` (0 to 7), once PlaceFixedControls and FixBarGeometry have run.
[[nodiscard]] ColumnPlaces PlacesOfColumn(const ClientPanel& panel, const ClientRecord& record,
                                          int column);

#endif  // ORVIA_CLIENT_LAYOUT_H
