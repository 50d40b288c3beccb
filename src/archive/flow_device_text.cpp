#include "archive/flow_device_text.h"

#include "common/number_text.h"
#include "flow/flow_mode.h"
#include "flow/unit_names.h"

namespace {

std::string LengthText(double value, int unit) {
    return DoubleToText(value) + " " + config::LengthUnitName(unit, value != 1);
}

std::string ManningText(const LoggerRecord& logger) {
    return "Manning's Equation, Roughness " + DoubleToText(logger.ManningsN) + ", Slope " +
           DoubleToText(logger.ManningsS) + (logger.ManningsSType == 1 ? " %" : "") +
           ", Pipe Diameter " + LengthText(logger.ManningsD, logger.ManningsDType);
}

std::string DeviceText(const LoggerRecord& logger) {
    switch (logger.FlowMode) {
        case ManningMode:
            return ManningText(logger);
        case FlumeMode:
            return "Flume, " + logger.FlowDeviceName;
        case WeirMode:
            return "Weir, " + logger.FlowDeviceName;
        default:
            return "Table Method, " + logger.FlowDeviceName;
    }
}

}  // namespace

std::string FlowDeviceText(const LoggerRecord& logger) {
    if (logger.FlowMode == NoFlowMode) {
        return {};
    }
    return DeviceText(logger) + ", Level Offset " +
           LengthText(logger.LevelOffset, logger.LevelOffsetType);
}
