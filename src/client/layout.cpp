#include "client/layout.h"

#include <array>
#include <span>

namespace {

constexpr std::array<ModeSize, 5> Sizes{{
    {6240, 3345, 5790, 3210},    // Small: the information frames lie beyond the edge
    {6240, 5830, 5790, 5685},    // Medium
    {1600, 12650, 1155, 12465},  // Wide
    {6600, 9615, 6150, 9480},    // Meter
    {6600, 9615, 6150, 9480},    // Flow
}};

constexpr std::int32_t FrameLeft = 3240;
constexpr std::int32_t FramePitch = 715;
constexpr std::int32_t RowPitch = 360;
constexpr std::int32_t RowTop = 840;
constexpr std::int32_t PulseGap = 180;  // sets the pulse rows off from the analog ones
constexpr std::int32_t WidePitch = 1200;
constexpr std::int32_t PairPitch = 2360;
constexpr std::int32_t FlowPairPitch = 780;
constexpr TwipsBox FirstMeter{30, 1200, ColumnPitch, 4320};
constexpr TwipsBox FirstColumn{245, 1140, 700, 2110};

constexpr TwipsBox Shifted(TwipsBox box, std::int32_t right, std::int32_t down) {
    box.Left += right;
    box.Top += down;
    return box;
}

void PlaceFrames(ClientPanel& panel) {
    PanelControl* const frames[] = {&panel.fraLoggerName,     &panel.fraLoggerTime,
                                    &panel.fraSampleInterval, &panel.fraWarmupTime,
                                    &panel.fraLoggingState,   &panel.fraRecords,
                                    &panel.fraAlarm[0],       &panel.fraAlarm[1]};
    PanelControl* const labels[] = {
        &panel.lblLoggerName,   &panel.lblLoggerTime, &panel.lblSampleInterval, &panel.lblWarmup,
        &panel.lblLoggingState, &panel.lblRecords,    &panel.lblAlarm[0],       &panel.lblAlarm[1]};
    std::int32_t top = 45;
    for (std::size_t i = 0; i < std::size(frames); ++i, top += FramePitch) {
        frames[i]->Place = {FrameLeft, top, 2430, 690};
        labels[i]->Place = {90, 255, 2250, 390};
    }
}

void PlacePair(PanelControl& heading, PanelControl& value, std::int32_t left, std::int32_t top) {
    heading.Place = {left, top, 2300, 255};
    value.Place = {left, top + 255, 2300, 330};
}

// What stands above and below the bars: four pairs of heading and value each.
void PlaceBands(ClientPanel& panel) {
    constexpr std::int32_t left = 90;
    constexpr std::int32_t above = 555;
    constexpr std::int32_t below = 5550;
    PlacePair(panel.lblLoggerTime3, panel.lblLoggerTime2, left, above);
    PlacePair(panel.lblSampleInterval3, panel.lblSampleInterval2, left + PairPitch, above);
    PlacePair(panel.lblWarmup3, panel.lblWarmup2, left + 2 * PairPitch, above);
    PlacePair(panel.lblLoggingState3, panel.lblLoggingState2, left + 3 * PairPitch, above);
    for (std::size_t i = 0; i < PulseChannels; ++i) {
        const auto right = static_cast<std::int32_t>(i) * PairPitch;
        PlacePair(panel.lblPulse3[i], panel.lblPulse2[i], left + right, below);
        PlacePair(panel.lblAlarm3[i], panel.lblAlarm2[i], left + 2 * PairPitch + right, below);
    }
}

void PlaceColumns(ClientPanel& panel) {
    for (std::size_t i = 0; i < BarColumns; ++i) {
        panel.fraMeter[i].Place =
            Shifted(FirstMeter, static_cast<std::int32_t>(i) * ColumnPitch, 0);
        panel.fraColumn[i].Place = FirstColumn;
        panel.lblValue[i].Place = {45, 240, 1090, 360};
        panel.lblUnits[i].Place = {45, 600, 1090, 240};
        panel.lblMax[i].Place = {45, 900, 1090, 225};
        panel.lblMin[i].Place = {45, 3265, 1090, 225};
        panel.lblHistory[i].Place = {45, 3600, 1090, 690};
        for (PanelControl* label : {&panel.lblValue[i], &panel.lblUnits[i], &panel.lblMax[i],
                                    &panel.lblMin[i], &panel.lblHistory[i]}) {
            label->Align = TextAlign::Centre;
        }
    }
}

// A device name and a pipe diameter are never shown together and share a place.
void PlaceFlowParameters(ClientPanel& panel) {
    panel.fraFlowMode.Place = Shifted(FirstMeter, FlowModeColumns * ColumnPitch, 0);
    panel.fraFlowMode.Place.Width = 3 * ColumnPitch - 10;
    const auto place = [](PanelControl& heading, PanelControl& value, std::int32_t line) {
        heading.Place = {120, 330 + line * FlowPairPitch, 3270, 255};
        value.Place = {120, 585 + line * FlowPairPitch, 3270, 390};
    };
    place(panel.lblFlowMode2, panel.lblFlowMode, 0);
    place(panel.lblOffset, panel.lblOffset2, 1);
    place(panel.lblFWT, panel.lblFWT2, 2);
    place(panel.lblPipeDiameter, panel.lblPipeDiameter2, 2);
    place(panel.lblSlope, panel.lblSlope2, 3);
    place(panel.lblRoughness, panel.lblRoughness2, 4);
}

void PlaceButtons(ClientPanel& panel, TwipsBox first, std::int32_t pitch) {
    for (PanelControl* button :
         {&panel.cmdSmall, &panel.cmdMedium, &panel.cmdWide, &panel.cmdMeter, &panel.cmdFlow}) {
        button->Place = first;
        first.Left += pitch;
    }
}

void ArrangeRows(ClientPanel& panel) {
    PlaceButtons(panel, {75, 105, 555, 510}, 630);
    std::int32_t top = RowTop;
    for (std::size_t i = 0; i < AllChannels; ++i, top += RowPitch) {
        if (i == AnalogChannels) {
            top += PulseGap;
        }
        panel.lblData[i].Place = {75, top, 1275, RowPitch};
        panel.lblData2[i].Place = {1365, top, 1830, RowPitch};
        panel.lblData[i].Align = panel.lblData2[i].Align = TextAlign::Left;
        panel.lblData2[i].Wraps = false;
    }
}

void ArrangeWide(ClientPanel& panel) {
    PlaceButtons(panel, {90, 45, 510, 330}, 555);
    panel.lblLoggerName2.Place = {3000, 45, 4200, 330};
    panel.lblLoggerTime2.Place = {7350, 45, 2600, 330};
    panel.lblRecords2.Place = {10050, 45, 2325, 330};
    panel.lblRecords2.Align = TextAlign::Right;
    for (std::size_t i = 0; i < AllChannels; ++i) {
        const auto left = 270 + static_cast<std::int32_t>(i) * WidePitch;
        panel.lblData[i].Place = {left + 15, 390, 1140, 225};
        panel.lblData2[i].Place = {left, 615, 1170, 525};
        panel.lblData[i].Align = panel.lblData2[i].Align = TextAlign::Centre;
        panel.lblData2[i].Wraps = true;
    }
}

void ArrangeBars(ClientPanel& panel) {
    PlaceButtons(panel, {75, 60, 555, 450}, 630);
    panel.lblLoggerName2.Place = {3330, 75, 3700, 420};
    panel.lblRecords2.Place = {7080, 75, 2340, 420};
    panel.lblRecords2.Align = TextAlign::Right;
    PlaceBands(panel);
}

void ShowControls(std::int16_t displayMode, ClientPanel& panel) {
    for (const ControlRow& row : ClientControls()) {
        if (row.Modes == 0) {
            continue;
        }
        const bool shown = (row.Modes >> static_cast<unsigned>(displayMode) & 1U) != 0;
        int index = 0;
        for (PanelControl& control : row.Of(panel)) {
            const bool absent =
                IsOfColumns(row) && displayMode == DisplayFlow && index >= FlowModeColumns;
            control.Visible = shown && !absent;
            ++index;
        }
    }
    if (displayMode == DisplayFlow) {
        panel.fraFlowMode.Visible = true;
    }
}

}  // namespace

bool IsDisplayMode(std::int16_t displayMode) {
    return displayMode >= DisplaySmall && displayMode <= DisplayFlow;
}

const ModeSize& SizeOfMode(std::int16_t displayMode) {
    return Sizes.at(static_cast<std::size_t>(displayMode));
}

void PlaceFixedControls(ClientPanel& panel) {
    PlaceFrames(panel);
    PlaceColumns(panel);
    PlaceFlowParameters(panel);
}

void ArrangeControls(std::int16_t displayMode, ClientPanel& panel) {
    panel.DisplayMode = displayMode;
    if (ShowsBars(displayMode)) {
        ArrangeBars(panel);
    } else if (displayMode == DisplayWide) {
        ArrangeWide(panel);
    } else {
        ArrangeRows(panel);
    }
    ShowControls(displayMode, panel);
}

ColumnPlaces PlacesOfColumn(const ClientPanel& panel, const ClientRecord& record, int column) {
    const TwipsBox& first = panel.fraMeter[0].Place;
    const TwipsBox& frame = panel.fraMeter[static_cast<std::size_t>(column)].Place;
    const TwipsBox bar{record.BarLeft, first.Top + record.BarTop, record.BarWidth,
                       record.BarHeight};
    return {Shifted(panel.fraColumn[0].Place, frame.Left, frame.Top),
            Shifted(bar, frame.Left - first.Left, 0)};
}

void FixBarGeometry(const ClientPanel& panel, ClientRecord& record) {
    const TwipsBox& column = panel.fraColumn[0].Place;
    record.BarTop = column.Top + 120;
    record.BarHeight = column.Height - 160;
    record.BarLeft = panel.fraMeter[0].Place.Left + column.Left + 40;
    record.BarWidth = column.Width - 85;
}
