#include "setup/setup_validators.h"

#include <limits>

#include "common/characters.h"
#include "common/fault.h"
#include "common/number_text.h"
#include "common/text.h"
#include "logger/float24.h"
#include "setup/setup_controls.h"

namespace {

constexpr double LargestFloat = 999999;

FieldCheck Refused() {
    return {};
}

FieldCheck RefusedWith(std::string_view text, std::string_view title = "Format Error") {
    return {.Accepted = false,
            .Text = std::nullopt,
            .Box = BoxContent{
                .Text = std::string(text), .Title = std::string(title), .Icon = BoxIcon::Stop}};
}

FieldCheck Accepted(std::string text) {
    return {.Accepted = true, .Text = std::move(text), .Box = std::nullopt};
}

std::optional<std::int32_t> NumberWithin(std::string_view text, int first, int last) {
    std::int32_t value = 0;
    if (!TextToLong(text, value) || value < first || value > last) {
        return std::nullopt;
    }
    return value;
}

double Held(double value) {
    return value >= FloatLimit ? LargestFloat : value <= -FloatLimit ? -LargestFloat : value;
}

bool IsWithin(int value, int first, int last) {
    return value >= first && value <= last;
}

std::int16_t LeadingInt16(std::string_view text) {
    const std::int32_t value = RoundToLong(LeadingNumber(text));
    if (!IsWithin(value, std::numeric_limits<std::int16_t>::min(),
                  std::numeric_limits<std::int16_t>::max())) {
        throw Fault("number too large");
    }
    return static_cast<std::int16_t>(value);
}

/// One number of a time for its validator: what no field of a time could hold is out of range.
int PartOrOutside(std::string_view text) {
    try {
        return LeadingInt16(text);
    } catch (const Fault&) {
        return std::numeric_limits<int>::max();
    }
}

/// The text of a time at its colons; a part that is missing is empty.
struct TimeTexts {
    std::string_view Hour;
    std::string_view Minute;
    std::string_view Second;
};

TimeTexts SplitTime(std::string_view text) {
    TimeTexts parts{text, {}, {}};
    const std::size_t first = text.find(':');
    if (first == std::string_view::npos) {
        return parts;
    }
    parts.Minute = text.substr(first + 1);
    const std::size_t second = parts.Minute.find(':');
    if (second != std::string_view::npos) {
        parts.Second = parts.Minute.substr(second + 1);
    }
    return parts;
}

}  // namespace

std::string Float24Text(double value) {
    return DoubleToText(config::DecodeFloat24(config::EncodeFloat24(value)));
}

FieldCheck CheckFloat(std::string_view text) {
    const std::optional<double> value = WholeNumber(text);
    return value ? Accepted(Float24Text(Held(*value))) : Refused();
}

FieldCheck CheckName(std::string_view text) {
    return Accepted(CutText(Trim(text), LongestName));
}

FieldCheck CheckUnit(std::string_view text) {
    return Accepted(CutText(Trim(text), LongestUnit));
}

std::optional<int> ListNumber(std::string_view text, int last) {
    return NumberWithin(text, 0, last);
}

FieldCheck CheckListNumber(std::string_view text, int last) {
    const std::optional<int> value = ListNumber(text, last);
    return value ? Accepted(IntegerToText(*value)) : Refused();
}

FieldCheck CheckRaw(std::string_view text) {
    return CheckListNumber(text, LargestU16);
}

FieldCheck CheckSampleInterval(std::string_view text) {
    const auto value = NumberWithin(text, 1, LargestU16);
    return value ? Accepted(IntegerToText(*value))
                 : RefusedWith("Error: sample interval must be between 1 and 65535.");
}

FieldCheck CheckException(std::string_view text) {
    const auto value = NumberWithin(text, 0, LargestU16);
    return value ? Accepted(IntegerToText(*value))
                 : RefusedWith("Error: exception level must be between 0 and 65535.");
}

FieldCheck CheckAlarm(std::string_view text) {
    const TimeTexts parts = SplitTime(text);
    const int hour = PartOrOutside(parts.Hour);
    const int minute = PartOrOutside(parts.Minute);
    const int second = PartOrOutside(parts.Second);
    if (!IsWithin(hour, 1, 12)) {
        return RefusedWith("Alarm hour must be between 1 and 12");
    }
    if (!IsWithin(minute, 0, 59)) {
        return RefusedWith("Alarm minute must be between 0 and 59");
    }
    if (!IsWithin(second, 0, 59)) {
        return RefusedWith("Alarm second must be between 0 and 59");
    }
    return Accepted(IntegerToText(hour) + ":" + TwoDigits(minute) + ":" + TwoDigits(second));
}

FieldCheck CheckRoughness(std::string_view text) {
    text = Trim(text);
    const std::optional<double> value = WholeNumber(text.substr(0, text.find(' ')));
    if (!value) {
        return Refused();
    }
    const double held = *value >= FloatLimit ? LargestFloat : *value;
    FieldCheck check =
        held > 0 ? Accepted("")
                 : RefusedWith("The roughness value must be greater than zero!", "Illegal Value");
    check.Text = Float24Text(held);
    return check;
}

std::optional<TimeParts> ReadTime(std::string_view text) {
    const TimeTexts parts = SplitTime(text);
    try {
        return TimeParts{LeadingInt16(parts.Hour), LeadingInt16(parts.Minute),
                         LeadingInt16(parts.Second)};
    } catch (const Fault&) {
        return std::nullopt;
    }
}

std::int32_t RoundToLong(double value) {
    const double rounded = RoundTiesToEven(value);
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
          rounded <= std::numeric_limits<std::int32_t>::max())) {
        throw Fault("number too large");
    }
    return static_cast<std::int32_t>(rounded);
}
