#ifndef ORVIA_CLIENT_CLIENT_PANEL_H
#define ORVIA_CLIENT_CLIENT_PANEL_H

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "client/client_record.h"

/// A rectangle in twips, from the upper left corner of what contains it.
struct TwipsBox {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    bool operator==(const TwipsBox&) const = default;
};

/// To which side of its place a text keeps.
enum class TextAlign : std::uint8_t { Left, Centre, Right };

/// What a client window shows at one of its controls.
struct PanelControl {
    std::string Text;
    bool Visible = false;
    bool Enabled = true;
    bool Wraps = false;  ///< a text too wide for one line goes on in the next
    TextAlign Align = TextAlign::Left;
    TwipsBox Place;  ///< in its container: the window, or the frame around it
    bool operator==(const PanelControl&) const = default;
};

template <int Count>
using PanelControls = std::array<PanelControl, static_cast<std::size_t>(Count)>;

/// All that a client window shows. The rules write here; the window copies it to its controls.
struct ClientPanel {
    std::int16_t DisplayMode = DisplayMedium;

    PanelControl fraLoggerName, lblLoggerName, lblLoggerName2;
    PanelControl fraLoggerTime, lblLoggerTime, lblLoggerTime3, lblLoggerTime2;
    PanelControl fraSampleInterval, lblSampleInterval, lblSampleInterval3, lblSampleInterval2;
    PanelControl fraWarmupTime, lblWarmup, lblWarmup3, lblWarmup2;
    PanelControl fraLoggingState, lblLoggingState, lblLoggingState3, lblLoggingState2;
    PanelControl fraRecords, lblRecords, lblRecords2;
    PanelControls<2> fraAlarm;  ///< fraAlarm1 and fraAlarm2
    PanelControls<2> lblAlarm, lblAlarm3, lblAlarm2;
    PanelControls<AllChannels> lblData, lblData2;
    PanelControls<PulseChannels> lblPulse3, lblPulse2;
    PanelControls<BarColumns> fraMeter, fraColumn;
    PanelControls<BarColumns> lblMax, lblMin, lblUnits, lblValue, lblHistory;
    PanelControl fraFlowMode;
    PanelControl lblFlowMode2, lblFlowMode, lblFWT, lblFWT2;
    PanelControl lblOffset, lblOffset2, lblPipeDiameter, lblPipeDiameter2;
    PanelControl lblSlope, lblSlope2, lblRoughness, lblRoughness2;
    PanelControl cmdSmall, cmdMedium, cmdWide, cmdMeter, cmdFlow;

    bool operator==(const ClientPanel&) const = default;
};

/// How a control looks and behaves.
enum class ControlKind : std::uint8_t {
    Frame,    ///< titled box around other controls
    Column,   ///< box around a bar
    Heading,  ///< label that never changes
    Caption,  ///< heading that is filled at run time
    Text,     ///< label that is filled at run time
    Note,     ///< the same beside a bar: small
    Figure,   ///< the same for a reading: large
    Button    ///< picture button
};

/// Whether a control is a label whose text changes.
[[nodiscard]] constexpr bool IsFilledAtRunTime(ControlKind kind) {
    return kind == ControlKind::Caption || kind == ControlKind::Text || kind == ControlKind::Note ||
           kind == ControlKind::Figure;
}

/// How the members of a control array are named.
enum class ControlNaming : std::uint8_t {
    Single,   ///< no array: "lblRecords"
    Indexed,  ///< from 0: "lblData(3)"
    Numbered  ///< separate controls from 1: "fraAlarm1"
};

/// One control, or one control array, of the window.
struct ControlRow {
    std::string_view Name;
    std::span<PanelControl> (*Of)(ClientPanel&);
    ControlNaming Naming;
    ControlKind Kind;
    std::uint8_t Modes;          ///< display modes that show it, bit 0 for mode 0; 0: another rule
    bool ShowsPopup;             ///< a right press on it shows the window's menu
    std::string_view Container;  ///< row it stands in, by the same index; empty: the window
    std::string_view Shows;      ///< what it shows in words; "#" stands for its number from 1
};

/// Every control of the window; containers come before what they contain.
[[nodiscard]] std::span<const ControlRow> ClientControls();

/// Name of member `index` (from 0) of a row.
[[nodiscard]] std::string ControlName(const ControlRow& row, int index);

/// Whether a row is the frame of the bar columns or stands in it.
[[nodiscard]] bool IsOfColumns(const ControlRow& row);

/// What member `index` of a row shows in that display mode, in words and unlike any other control
/// of the window; empty for controls whose text says it.
[[nodiscard]] std::string ControlDescription(const ControlRow& row, int index,
                                             std::int16_t displayMode);

/// The panel of a window in its design: fixed captions, and all else empty.
[[nodiscard]] ClientPanel DesignPanel();

#endif  // ORVIA_CLIENT_CLIENT_PANEL_H
