#include "client/client_panel.h"
#include "common/number_text.h"

#include <type_traits>

namespace {

using enum ControlKind;
using enum ControlNaming;

template <auto Member>
std::span<PanelControl> Of(ClientPanel& panel) {
    auto& member = panel.*Member;
    if constexpr (std::is_same_v<decltype(member), PanelControl&>) {
        return {&member, 1};
    } else {
        return member;
    }
}

using P = ClientPanel;

// Display modes that show a control, as a bit for each.
constexpr std::uint8_t TallLists = 0b00011;
constexpr std::uint8_t ListModes = 0b00111;
constexpr std::uint8_t BarModes = 0b11000;
constexpr std::uint8_t WideAndBars = 0b11100;
constexpr std::uint8_t EveryMode = 0b11111;
constexpr std::uint8_t OtherRule = 0;

constexpr bool Popup = true;
constexpr bool NoPopup = false;

constexpr ControlRow Rows[] = {
    {"cmdSmall", Of<&P::cmdSmall>, Single, Button, EveryMode, Popup, "", "Small view"},
    {"cmdMedium", Of<&P::cmdMedium>, Single, Button, EveryMode, Popup, "", "Medium view"},
    {"cmdWide", Of<&P::cmdWide>, Single, Button, EveryMode, Popup, "", "Wide view"},
    {"cmdMeter", Of<&P::cmdMeter>, Single, Button, EveryMode, Popup, "", "Bar graph view"},
    {"cmdFlow", Of<&P::cmdFlow>, Single, Button, EveryMode, NoPopup, "", "Flow view"},
    {"fraLoggerName", Of<&P::fraLoggerName>, Single, Frame, TallLists, Popup, "", ""},
    {"fraLoggerTime", Of<&P::fraLoggerTime>, Single, Frame, TallLists, Popup, "", ""},
    {"fraSampleInterval", Of<&P::fraSampleInterval>, Single, Frame, TallLists, Popup, "", ""},
    {"fraWarmupTime", Of<&P::fraWarmupTime>, Single, Frame, TallLists, Popup, "", ""},
    {"fraLoggingState", Of<&P::fraLoggingState>, Single, Frame, TallLists, Popup, "", ""},
    {"fraRecords", Of<&P::fraRecords>, Single, Frame, TallLists, Popup, "", ""},
    {"fraAlarm", Of<&P::fraAlarm>, Numbered, Frame, TallLists, Popup, "", ""},
    {"lblLoggerName", Of<&P::lblLoggerName>, Single, Text, TallLists, Popup, "fraLoggerName",
     "Logger name"},
    {"lblLoggerTime", Of<&P::lblLoggerTime>, Single, Text, TallLists, Popup, "fraLoggerTime",
     "Logger time"},
    {"lblSampleInterval", Of<&P::lblSampleInterval>, Single, Text, TallLists, Popup,
     "fraSampleInterval", "Sample interval"},
    {"lblWarmup", Of<&P::lblWarmup>, Single, Text, TallLists, Popup, "fraWarmupTime",
     "Warmup time"},
    {"lblLoggingState", Of<&P::lblLoggingState>, Single, Text, TallLists, Popup, "fraLoggingState",
     "Logging state"},
    {"lblRecords", Of<&P::lblRecords>, Single, Text, TallLists, Popup, "fraRecords",
     "Number of records"},
    {"lblAlarm", Of<&P::lblAlarm>, Indexed, Text, TallLists, Popup, "fraAlarm", "Alarm # time"},
    {"lblLoggerName2", Of<&P::lblLoggerName2>, Single, Text, WideAndBars, Popup, "",
     "Logger name beside the buttons"},
    {"lblRecords2", Of<&P::lblRecords2>, Single, Text, WideAndBars, Popup, "",
     "Number of records beside the buttons"},
    {"lblLoggerTime3", Of<&P::lblLoggerTime3>, Single, Heading, BarModes, Popup, "", ""},
    {"lblLoggerTime2", Of<&P::lblLoggerTime2>, Single, Text, WideAndBars, Popup, "",
     "Logger time beside the readings"},
    {"lblSampleInterval3", Of<&P::lblSampleInterval3>, Single, Heading, BarModes, Popup, "", ""},
    {"lblSampleInterval2", Of<&P::lblSampleInterval2>, Single, Text, BarModes, Popup, "",
     "Sample interval above the bars"},
    {"lblWarmup3", Of<&P::lblWarmup3>, Single, Heading, BarModes, Popup, "", ""},
    {"lblWarmup2", Of<&P::lblWarmup2>, Single, Text, BarModes, Popup, "",
     "Warmup time above the bars"},
    {"lblLoggingState3", Of<&P::lblLoggingState3>, Single, Heading, BarModes, Popup, "", ""},
    {"lblLoggingState2", Of<&P::lblLoggingState2>, Single, Text, BarModes, Popup, "",
     "Logging state above the bars"},
    {"lblData", Of<&P::lblData>, Indexed, Heading, ListModes, Popup, "", ""},
    {"lblData2", Of<&P::lblData2>, Indexed, Figure, ListModes, Popup, "", "Channel # reading"},
    {"fraFlowMode", Of<&P::fraFlowMode>, Single, Frame, OtherRule, NoPopup, "", ""},
    {"lblFlowMode2", Of<&P::lblFlowMode2>, Single, Heading, OtherRule, NoPopup, "fraFlowMode", ""},
    {"lblFlowMode", Of<&P::lblFlowMode>, Single, Text, OtherRule, NoPopup, "fraFlowMode",
     "Flow mode"},
    {"lblFWT", Of<&P::lblFWT>, Single, Caption, OtherRule, NoPopup, "fraFlowMode",
     "Kind of flow device"},
    {"lblFWT2", Of<&P::lblFWT2>, Single, Text, OtherRule, NoPopup, "fraFlowMode",
     "Flow device or table"},
    {"lblOffset", Of<&P::lblOffset>, Single, Heading, OtherRule, NoPopup, "fraFlowMode", ""},
    {"lblOffset2", Of<&P::lblOffset2>, Single, Text, OtherRule, NoPopup, "fraFlowMode",
     "Level offset"},
    {"lblPipeDiameter", Of<&P::lblPipeDiameter>, Single, Heading, OtherRule, NoPopup, "fraFlowMode",
     ""},
    {"lblPipeDiameter2", Of<&P::lblPipeDiameter2>, Single, Text, OtherRule, NoPopup, "fraFlowMode",
     "Pipe diameter"},
    {"lblSlope", Of<&P::lblSlope>, Single, Heading, OtherRule, NoPopup, "fraFlowMode", ""},
    {"lblSlope2", Of<&P::lblSlope2>, Single, Text, OtherRule, NoPopup, "fraFlowMode", "Pipe slope"},
    {"lblRoughness", Of<&P::lblRoughness>, Single, Heading, OtherRule, NoPopup, "fraFlowMode", ""},
    {"lblRoughness2", Of<&P::lblRoughness2>, Single, Text, OtherRule, NoPopup, "fraFlowMode",
     "Pipe roughness"},
    {"fraMeter", Of<&P::fraMeter>, Indexed, Frame, BarModes, Popup, "", ""},
    {"fraColumn", Of<&P::fraColumn>, Indexed, Column, BarModes, Popup, "fraMeter", "Column # bar"},
    {"lblValue", Of<&P::lblValue>, Indexed, Figure, BarModes, Popup, "fraMeter",
     "Column # reading"},
    {"lblUnits", Of<&P::lblUnits>, Indexed, Note, BarModes, Popup, "fraMeter", "Column # units"},
    {"lblMax", Of<&P::lblMax>, Indexed, Note, BarModes, Popup, "fraMeter", "Column # top of scale"},
    {"lblMin", Of<&P::lblMin>, Indexed, Note, BarModes, Popup, "fraMeter",
     "Column # foot of scale"},
    {"lblHistory", Of<&P::lblHistory>, Indexed, Note, BarModes, Popup, "fraMeter",
     "Column # older readings"},
    {"lblPulse3", Of<&P::lblPulse3>, Indexed, Heading, BarModes, Popup, "", ""},
    {"lblPulse2", Of<&P::lblPulse2>, Indexed, Text, BarModes, Popup, "",
     "Pulse count # below the bars"},
    {"lblAlarm3", Of<&P::lblAlarm3>, Indexed, Heading, BarModes, Popup, "", ""},
    {"lblAlarm2", Of<&P::lblAlarm2>, Indexed, Text, BarModes, Popup, "",
     "Alarm # time below the bars"},
};

void CaptionInformation(ClientPanel& panel) {
    panel.fraLoggerName.Text = "Logger Name";
    panel.fraLoggerTime.Text = panel.lblLoggerTime3.Text = "Logger Time";
    panel.fraSampleInterval.Text = panel.lblSampleInterval3.Text = "Sample Interval";
    panel.fraWarmupTime.Text = panel.lblWarmup3.Text = "Warmup Time";
    panel.fraLoggingState.Text = panel.lblLoggingState3.Text = "Logging State";
    panel.fraRecords.Text = "Records";
    for (std::size_t alarm = 0; alarm < panel.fraAlarm.size(); ++alarm) {
        panel.fraAlarm[alarm].Text = panel.lblAlarm3[alarm].Text =
            "Alarm " + IntegerToText(static_cast<int>(alarm + 1));
    }
}

void CaptionReadings(ClientPanel& panel) {
    for (std::size_t channel = 0; channel < AnalogChannels; ++channel) {
        panel.lblData[channel].Text = "Channel " + IntegerToText(static_cast<int>(channel + 1));
    }
    for (std::size_t pulse = 0; pulse < PulseChannels; ++pulse) {
        const std::string number = IntegerToText(static_cast<int>(pulse + 1));
        panel.lblData[AnalogChannels + pulse].Text = "Pulse Chan " + number;
        // Operators and their handbooks know the word in this spelling.
        panel.lblPulse3[pulse].Text = "Pusle Chan " + number;
    }
    for (std::size_t column = 0; column < BarColumns; ++column) {
        panel.fraMeter[column].Text = "meter";
        panel.lblMax[column].Text = panel.lblMin[column].Text = "0.000";
    }
}

void CaptionFlow(ClientPanel& panel) {
    panel.fraFlowMode.Text = "Flow Parameters";
    panel.lblFlowMode2.Text = "Flow Mode:";
    panel.lblPipeDiameter.Text = "Pipe Diameter:";
    panel.lblSlope.Text = "Slope:";
    panel.lblRoughness.Text = "Roughness:";
    panel.lblOffset.Text = "Level Offset:";
}

}  // namespace

std::span<const ControlRow> ClientControls() {
    return Rows;
}

std::string ControlName(const ControlRow& row, int index) {
    switch (row.Naming) {
        case Indexed:
            return std::string(row.Name) + "(" + IntegerToText(index) + ")";
        case Numbered:
            return std::string(row.Name) + IntegerToText(index + 1);
        default:
            return std::string(row.Name);
    }
}

bool IsOfColumns(const ControlRow& row) {
    return row.Name == "fraMeter" || row.Container == "fraMeter";
}

std::string ControlDescription(const ControlRow& row, int index, std::int16_t displayMode) {
    std::string words(row.Shows);
    const std::size_t mark = words.find('#');
    if (mark == std::string::npos) {
        return words;
    }
    // In the flow mode "Column #" gives way to what these two show instead of a channel.
    if (IsOfColumns(row) && displayMode == DisplayFlow && index == FlowColumn) {
        return words.replace(0, mark + 1, "Flow");
    }
    if (IsOfColumns(row) && displayMode == DisplayFlow && index == VelocityColumn) {
        return words.replace(0, mark + 1, "Velocity");
    }
    // The ten readings of the list modes are one array; its last two are the pulse channels.
    if (row.Name == "lblData2" && index >= AnalogChannels) {
        return "Pulse channel " + IntegerToText(index - AnalogChannels + 1) + " reading";
    }
    return words.replace(mark, 1, IntegerToText(index + 1));
}

ClientPanel DesignPanel() {
    ClientPanel panel;
    CaptionInformation(panel);
    CaptionReadings(panel);
    CaptionFlow(panel);
    return panel;
}
