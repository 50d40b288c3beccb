#ifndef ORVIA_SETUP_SETUP_LISTS_H
#define ORVIA_SETUP_SETUP_LISTS_H

#include <array>
#include <string_view>

// The items of the dialog's lists. Where a list stands for a code, the code is the position.

namespace setup_lists {

inline constexpr std::array<std::string_view, 16> AnalogUnits{
    "mA",   "Volts", "mV",     "Temp F", "Temp C", "degrees", "%",   "Inches",
    "Feet", "cm",    "Meters", "NTU",    "ppm",    "uS",      "MPH", "KPH"};

inline constexpr std::array<std::string_view, 7> PulseUnits{"Pulses", "Inches",  "cm",  "Cubic Ft",
                                                            "Liters", "Gallons", "Kgal"};

inline constexpr std::array<std::string_view, 4> IntervalUnits{"seconds", "minutes", "hours",
                                                               "days"};

inline constexpr std::array<std::string_view, 2> HalfDays{"A.M.", "P.M."};

inline constexpr std::array<std::string_view, 7> BaudRates{
    "Auto Baud Rate", "Fixed 9600",  "Fixed 19200", "Fixed 28800",
    "Fixed 38400",    "Fixed 57600", "Fixed 115200"};

inline constexpr std::array<std::string_view, 5> FlowUnits{
    "cfs - cubic feet per second", "gpm - gallons per minute", "mgd - million's of gallons per day",
    "cms - cubic meters per second", "lps - liters per second"};

inline constexpr std::array<std::string_view, 4> LengthUnits{"feet", "inches", "meters", "cm"};

inline constexpr std::array<std::string_view, 2> SlopeUnits{"decimal (rise/run)", "percent"};

inline constexpr std::array<std::string_view, 2> VelocityUnits{"fps - feet-per-sec",
                                                               "mps - meters-per-sec"};

inline constexpr std::string_view NoDevice = "- None -";

/// What counts is the number before the first blank.
inline constexpr std::array<std::string_view, 9> Roughness{
    "0.010 - Plastic, other smooth surfaces",
    "0.012 - Smooth, unpainted steel",
    "0.013 - Painted steel, coated cast iron",
    "0.013 - Clay drainage tile, smooth asphalt",
    "0.013 - Finished concrete",
    "0.014 - Vitrified clay sewer tile - most common",
    "0.014 - Uncoated cast iron",
    "0.017 - Unfinished concrete",
    "0.024 - Corrugated metal storm drain"};

}  // namespace setup_lists

#endif  // ORVIA_SETUP_SETUP_LISTS_H
