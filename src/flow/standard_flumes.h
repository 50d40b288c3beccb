#ifndef ORVIA_FLOW_STANDARD_FLUMES_H
#define ORVIA_FLOW_STANDARD_FLUMES_H

#include <array>
#include <cstddef>
#include <string_view>

// Flumes of standard dimensions, rated by measurement: heads in feet and flows in cubic feet per
// second. docs/flow-devices.md names the sources.

/// Q = C H^n for one size, and where it holds.
struct FlumeLaw {
    double Multiplier = 0;
    double Exponent = 0;
    double LeastHead = 0;
    double GreatestHead = 0;
    double Submergence = 0;  ///< percent of the head that the water below may reach; 0: not known
};

inline constexpr std::array<std::string_view, 22> ParshallSizeNames = {
    "1 in",  "2 in",  "3 in",  "6 in",  "9 in",  "1 ft", "1.5 ft", "2 ft",
    "3 ft",  "4 ft",  "5 ft",  "6 ft",  "7 ft",  "8 ft", "10 ft",  "12 ft",
    "15 ft", "20 ft", "25 ft", "30 ft", "40 ft", "50 ft"};

/// The law of a Parshall flume by its position among the names.
[[nodiscard]] FlumeLaw ParshallLaw(std::size_t size);

/// Parshall's law for throats of 10 to 50 ft: C = 3.6875 W + 2.5, with the exponent 1.6.
[[nodiscard]] constexpr double LargeParshallMultiplier(double feet) {
    return 3.6875 * feet + 2.5;
}

inline constexpr std::array<std::string_view, 16> CutthroatSizeNames = {
    "1.5 ft long, 1 in", "1.5 ft long, 2 in", "1.5 ft long, 4 in",  "1.5 ft long, 8 in",
    "3 ft long, 2 in",   "3 ft long, 4 in",   "3 ft long, 8 in",    "3 ft long, 16 in",
    "4.5 ft long, 3 in", "4.5 ft long, 6 in", "4.5 ft long, 12 in", "4.5 ft long, 24 in",
    "9 ft long, 12 in",  "9 ft long, 24 in",  "9 ft long, 48 in",   "9 ft long, 72 in"};

/// The law of a cutthroat flume by its position among the names.
[[nodiscard]] FlumeLaw CutthroatLaw(std::size_t size);

enum class HFlumeKind { Hs, H, Hl };

inline constexpr std::array<std::string_view, 4> HsFlumeSizeNames = {"0.4 ft", "0.6 ft", "0.8 ft",
                                                                     "1 ft"};
inline constexpr std::array<std::string_view, 8> HFlumeSizeNames = {
    "0.5 ft", "0.75 ft", "1 ft", "1.5 ft", "2 ft", "2.5 ft", "3 ft", "4.5 ft"};
inline constexpr std::array<std::string_view, 5> HlFlumeSizeNames = {"2 ft", "2.5 ft", "3 ft",
                                                                     "3.5 ft", "4 ft"};

/// log Q = A + B log h + C (log h)^2 to the base 10, in metres and cubic metres per second.
struct HFlumeLaw {
    double Depth = 0;  ///< feet
    double A = 0;
    double B = 0;
    double C = 0;
    double ScaledFrom = 0;  ///< depth in feet of the flume whose law it takes, 0 if it has its own
};

/// The law of an H flume by its position among the names of its kind. Of the HL flumes only that of
/// 4 ft has a law of its own; the others take it by Froude's law of similarity.
[[nodiscard]] HFlumeLaw LawOfHFlume(HFlumeKind kind, std::size_t size);

/// Flow in cfs at a head in feet above 0.
[[nodiscard]] double HFlumeFlow(const HFlumeLaw& law, double head);

/// Least head of the H flumes' laws, feet.
inline constexpr double LeastHFlumeHead = 0.02;

#endif  // ORVIA_FLOW_STANDARD_FLUMES_H
