#include "flow/flow_definition.h"

#include <string>

#include "common/path_text.h"
#include "common/text.h"
#include "flow/flow_mode.h"
#include "flow/flow_table.h"

namespace {

constexpr std::string_view NoDevice = "- None -";

void TakeEquation(const FlowDeviceEntry& entry, LoggerState& state) {
    state.FlowEqOffset = entry.EqOffset;
    state.FlowEqExponent = entry.EqExponent;
    state.FlowEqMultiplier = entry.EqMultiplier;
}

/// The words that differ between the two kinds of device; the title does not.
struct DeviceWords {
    std::string_view Kind;
    std::string_view File;
};

void ResolveDevice(const std::string& tag, const FlowDeviceList& list, const DeviceWords& words,
                   std::string_view appPath, LoggerState& state, MessageBoxes& boxes) {
    if (config::FindFlowDevice(tag, list, appPath, state)) {
        return;
    }
    BoxContent box;
    box.Title = "Bad Flume Tag";
    box.Icon = BoxIcon::Stop;
    box.Text.append("Error: a programmed ").append(words.Kind).append(" with tag name \"");
    box.Text.append(tag).append("\"").append(LineBreak).append("was not found in file ");
    box.Text.append(words.File).append(", or referred to a missing or ").append(LineBreak);
    box.Text.append("bad table file.");
    boxes.Show(box);
}

void ResolveTable(std::string_view appPath, LoggerState& state, MessageBoxes& boxes) {
    if (!config::ReadFlowTable(state.TablePath, appPath, state.FlowTable) ||
        state.FlowTable.UpperBound() == 0) {
        BoxContent box;
        box.Title = "Missing or Empty Flow Table File";
        box.Icon = BoxIcon::Exclamation;
        box.Text.append("Error: missing or empty flow table file:").append(LineBreak);
        box.Text.append(LineBreak).append(state.TablePath);
        boxes.Show(box);
    }
    state.FlowDeviceName = BehindLastSeparator(state.TablePath);
}

}  // namespace

namespace config {

bool FindFlowDevice(std::string_view tag, const FlowDeviceList& list, std::string_view appPath,
                    LoggerState& state) {
    TakeEquation(FlowDeviceEntry{}, state);
    if (tag.empty()) {
        state.FlowDeviceName = NoDevice;
        return false;
    }
    bool found = false;
    for (const FlowDeviceEntry& entry : list) {
        if (entry.Tag != tag) {
            continue;
        }
        state.FlowDeviceName = entry.Name;
        if (entry.IsTable != 0) {
            return ReadFlowTable(entry.TableFile, appPath, state.FlowTable);
        }
        TakeEquation(entry, state);
        found = true;
    }
    return found;
}

void LoadFlowDefinition(LoggerState& state, const Catalogues& catalogues, std::string_view appPath,
                        MessageBoxes& boxes) {
    state.FlowTable.Reset();
    switch (state.FlowMode) {
        case NoFlowMode:
        case ManningMode:
            return;
        case FlumeMode:
            ResolveDevice(state.FlumeTag, catalogues.FlumeList, {"flume", "FLUMES.LST"}, appPath,
                          state, boxes);
            return;
        case WeirMode:
            ResolveDevice(state.WeirTag, catalogues.WeirList, {"weir", "WEIRS.LST"}, appPath, state,
                          boxes);
            return;
        default:
            ResolveTable(appPath, state, boxes);
    }
}

}  // namespace config
