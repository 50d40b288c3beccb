#ifndef ORVIA_SETUP_SETUP_CONTROLS_H
#define ORVIA_SETUP_SETUP_CONTROLS_H

#include <array>
#include <cstddef>
#include <string>

#include "logger/data_point.h"

// What the controls of the set-up dialog stand on, without the controls. A list whose items are
// numbers counted from 0 stands as its text, as it can be typed over; any other list stands as the
// index of its selected item.

/// Index of a list, or of a group of options, in which nothing is selected.
inline constexpr int NoSelection = -1;

/// Most characters of the fields that the logger holds.
inline constexpr std::size_t LongestName = 32;
inline constexpr std::size_t LongestUnit = 9;
inline constexpr std::size_t LongestTablePath = 128;

/// Last items of the lists of numbers: seconds, and decimal places.
inline constexpr int LastWarmup = 60;
inline constexpr int LastPrecision = 6;
/// How many analog channels make a logger that can show flow.
inline constexpr int FlowAnalogChannels = 3;

/// One row of the page of analog channels.
struct AnalogRow {
    bool chkEnable = false;
    std::string cmbEU;
    std::string txtHighEU;
    std::string txtLowEU;
    std::string txtHighRaw;
    std::string txtLowRaw;
    std::string txtTop;
    std::string txtBottom;
    std::string cmbPrecision;
    /// Control by control, texts as they stand.
    bool operator==(const AnalogRow&) const = default;
};

/// One panel of the page of digital channels.
struct PulsePanel {
    bool chkPulseEnable = false;
    std::string cmbPulseEU;
    std::string txtPulseUnit;
    std::string cmbPulsePrecision;
    /// Control by control, texts as they stand.
    bool operator==(const PulsePanel&) const = default;
};

/// One alarm of the general page.
struct AlarmControls {
    bool chkAlarm = false;
    std::string txtAlarm;  ///< "h:mm:ss" in 12 hours
    int cmbAlarm = 0;      ///< 0 "A.M.", 1 "P.M."
    /// Control by control, texts as they stand.
    bool operator==(const AlarmControls&) const = default;
};

// Values of `Timing`.
inline constexpr int TimingPeriodic = 0;     ///< optPeriodic
inline constexpr int TimingLogarithmic = 1;  ///< optLogarithmic
inline constexpr int TimingFast = 2;         ///< optFastMode

// Values of `FlowOption`.
inline constexpr int FlowNone = 0;      ///< optNoFlow
inline constexpr int FlowMannings = 1;  ///< optMannings
inline constexpr int FlowFlume = 2;     ///< optFlume
inline constexpr int FlowWeir = 3;      ///< optWeir
inline constexpr int FlowByTable = 4;   ///< optTable

/// All controls of the dialog that hold a value.
struct SetupControls {
    // General
    std::string txtName;
    std::string cmbWarmup;  ///< seconds
    int Timing = TimingPeriodic;
    std::string txtSampleInterval = "1";
    int cmbSampleInterval = 0;  ///< 0 seconds to 3 days
    bool chkException = false;
    std::string txtException;  ///< raw counts
    std::array<AlarmControls, 2> Alarms;
    bool chkSOD = false;
    bool chkWrap = false;
    int cmbBaud = NoSelection;  ///< 0 automatic, then the fixed rates

    std::array<AnalogRow, AnalogChannels> Analog;
    std::array<PulsePanel, PulseChannels> Pulse;

    // Flow Calculation
    int FlowOption = NoSelection;
    int cmbFlume = 0;  ///< 0 "- None -", then the number in the catalogue
    int cmbWeir = 0;
    std::string txtTableFile;
    int cmbFlowUnits = 0;
    std::string txtFlowTop;
    std::string txtOffset;
    int cmbOffsetUnits = 0;
    std::string cmbRoughness;
    std::string txtSlope;
    int cmbSlopeUnits = 0;
    std::string txtDiameter;
    int cmbDiameterUnits = 0;
    int cmbVelUnits = 0;
    std::string txtVelTop;

    /// Control by control, texts as they stand.
    bool operator==(const SetupControls&) const = default;
};

#endif  // ORVIA_SETUP_SETUP_CONTROLS_H
