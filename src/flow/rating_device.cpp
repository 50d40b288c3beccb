#include "flow/rating_device.h"

#include <algorithm>
#include <cmath>

#include "common/number_text.h"
#include "common/text.h"
#include "flow/rating_method.h"
#include "flow/unit_names.h"

namespace {

constexpr int DefaultDigits = 2;
constexpr int ChangedDigits = 12;

bool IsLength(const RatingField& field) {
    return field.Units == RatingUnits::Length;
}

/// A value of a field in the units of its limits.
double InLimitUnits(const RatingDevice& device, const RatingField& field, double value) {
    return IsLength(field) ? LengthToMeters(value, device.LengthUnit) : value;
}

double Changed(double length, int from, int to) {
    return RoundTo(MetersToLength(LengthToMeters(length, from), to), ChangedDigits);
}

std::string LimitText(const RatingDevice& device, const RatingField& field, double limit) {
    return DoubleToText(RoundTo(IsLength(field) ? MetersToLength(limit, device.LengthUnit) : limit,
                                DefaultDigits + 1));
}

}  // namespace

RatingDevice DefaultRatingDevice(const RatingKind& kind, int lengthUnit) {
    RatingDevice device;
    device.Kind = &kind;
    device.LengthUnit = lengthUnit;
    device.Values.reserve(kind.Fields.size());
    for (const RatingField& field : kind.Fields) {
        device.Values.push_back(
            IsLength(field) ? RoundTo(MetersToLength(field.Default, lengthUnit), DefaultDigits)
                            : field.Default);
    }
    return device;
}

std::optional<std::size_t> RatingFieldAt(const RatingKind& kind, std::string_view key) {
    for (std::size_t i = 0; i < kind.Fields.size(); ++i) {
        if (kind.Fields[i].Key == key) {
            return i;
        }
    }
    return std::nullopt;
}

double RatingValue(const RatingDevice& device, std::string_view key) {
    const std::optional<std::size_t> at = RatingFieldAt(*device.Kind, key);
    return at && *at < device.Values.size()
               ? InLimitUnits(device, device.Kind->Fields[*at], device.Values[*at])
               : 0;
}

void ChangeRatingLengthUnit(RatingDevice& device, int lengthUnit) {
    for (std::size_t i = 0; i < device.Values.size() && i < device.Kind->Fields.size(); ++i) {
        if (IsLength(device.Kind->Fields[i])) {
            device.Values[i] = Changed(device.Values[i], device.LengthUnit, lengthUnit);
        }
    }
    for (std::size_t i = 0; i < device.Kind->Columns.size(); ++i) {
        if (device.Kind->Columns[i].Units == RatingUnits::Length) {
            for (RatingRow& row : device.Rows) {
                row[i] = Changed(row[i], device.LengthUnit, lengthUnit);
            }
        }
    }
    device.LengthUnit = lengthUnit;
}

void ChangeRatingFlowUnit(RatingDevice& device, int flowUnit) {
    for (std::size_t i = 0; i < device.Kind->Columns.size(); ++i) {
        if (device.Kind->Columns[i].Units == RatingUnits::Flow) {
            for (RatingRow& row : device.Rows) {
                row[i] =
                    RoundTo(CfsToFlow(FlowToCfs(row[i], device.FlowUnit), flowUnit), ChangedDigits);
            }
        }
    }
    device.FlowUnit = flowUnit;
}

std::string RatingFieldText(const RatingDevice& device, std::size_t field) {
    const RatingField& told = device.Kind->Fields[field];
    const double value = device.Values[field];
    if (told.Units == RatingUnits::Choice) {
        return value >= 0 && value < static_cast<double>(told.Choices.size())
                   ? std::string(told.Choices[static_cast<std::size_t>(value)])
                   : std::string();
    }
    return told.Optional && value == 0 ? std::string() : DoubleToText(value);
}

bool SetRatingFieldText(RatingDevice& device, std::size_t field, std::string_view text) {
    const RatingField& told = device.Kind->Fields[field];
    if (told.Units == RatingUnits::Choice) {
        const auto choice = std::find(told.Choices.begin(), told.Choices.end(), Trim(text));
        if (choice == told.Choices.end()) {
            return false;
        }
        device.Values[field] = static_cast<double>(choice - told.Choices.begin());
        return true;
    }
    if (told.Optional && Trim(text).empty()) {
        device.Values[field] = 0;
        return true;
    }
    std::string plain(text);
    std::replace(plain.begin(), plain.end(), ',', '.');
    const std::optional<double> value = WholeNumber(plain);
    if (value) {
        device.Values[field] = *value;
    }
    return value.has_value();
}

std::string RatingFieldLimits(const RatingDevice& device, std::size_t field) {
    const RatingField& told = device.Kind->Fields[field];
    const std::string unit = RatingUnitText(device, told.Units);
    return LimitText(device, told, told.Least) + " to " + LimitText(device, told, told.Greatest) +
           (unit.empty() ? "" : " ") + unit;
}

std::string RatingFieldFault(const RatingDevice& device, std::size_t field) {
    const RatingField& told = device.Kind->Fields[field];
    const double typed = device.Values[field];
    const double value = InLimitUnits(device, told, typed);
    // The unit's own rounding must not refuse a limit that was typed as it is shown.
    constexpr double Slack = 0.006;
    const bool inside = value >= told.Least * (1 - Slack) && value <= told.Greatest * (1 + Slack);
    const bool whole = told.Units != RatingUnits::Choice || value == std::floor(value);
    if ((inside && whole) || (told.Optional && typed == 0)) {
        return {};
    }
    std::string text(told.Caption);
    if (told.Units == RatingUnits::Choice) {
        return text + " has to be one of the choices.";
    }
    return text + " has to lie within " + RatingFieldLimits(device, field) + ".";
}

std::string RatingUnitText(const RatingDevice& device, RatingUnits units) {
    switch (units) {
        case RatingUnits::Length:
            return ToLower(config::LengthUnitName(device.LengthUnit, true));
        case RatingUnits::Flow:
            return config::FlowUnitName(device.FlowUnit);
        case RatingUnits::Degrees:
            return "degrees";
        case RatingUnits::Percent:
            return "%";
        case RatingUnits::Ratio:
        case RatingUnits::Choice:
            break;
    }
    return {};
}
