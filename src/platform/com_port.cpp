#include "platform/com_port.h"

#include "common/fault.h"
#include "common/number_text.h"

namespace {

// The system's errors, by their numbers.
constexpr std::uint32_t FileNotFound = 2;
constexpr std::uint32_t PathNotFound = 3;
constexpr std::uint32_t AccessDenied = 5;
constexpr std::uint32_t BadUnit = 20;
constexpr std::uint32_t GeneralFailure = 31;  // a driver whose adapter was pulled out
constexpr std::uint32_t SharingViolation = 32;
constexpr std::uint32_t DeviceDoesNotExist = 55;
constexpr std::uint32_t Busy = 170;
constexpr std::uint32_t NoSuchDevice = 433;
constexpr std::uint32_t DeviceNotConnected = 1167;

std::uint8_t ParityCode(LineParity parity) {
    switch (parity) {
        case LineParity::Odd:
            return 1;
        case LineParity::Even:
            return 2;
        case LineParity::Mark:
            return 3;
        case LineParity::Space:
            return 4;
        default:
            return 0;
    }
}

std::uint8_t StopBitsCode(LineStopBits bits) {
    switch (bits) {
        case LineStopBits::OneAndHalf:
            return 1;
        case LineStopBits::Two:
            return 2;
        default:
            return 0;
    }
}

}  // namespace

std::string ComPortName(int number) {
    std::string name = "COM" + IntegerToText(number);
    if (number < FirstPort || number > LastPort) {
        throw Fault("there is no port " + name);
    }
    return name;
}

std::string ComPortPath(int number) {
    return "\\\\.\\" + ComPortName(number);
}

ComLineCodes ComLineCodesOf(const LineSettings& settings) {
    return {.BaudRate = static_cast<std::uint32_t>(settings.BaudRate),
            .DataBits = static_cast<std::uint8_t>(settings.DataBits),
            .Parity = ParityCode(settings.Parity),
            .StopBits = StopBitsCode(settings.StopBits)};
}

ComRefusal ComRefusalOf(std::uint32_t error) {
    switch (error) {
        case FileNotFound:
        case PathNotFound:
        case BadUnit:
        case GeneralFailure:
        case DeviceDoesNotExist:
        case NoSuchDevice:
        case DeviceNotConnected:
            return ComRefusal::Missing;
        case AccessDenied:
        case SharingViolation:
        case Busy:
            return ComRefusal::InUse;
        default:
            return ComRefusal::Other;
    }
}
