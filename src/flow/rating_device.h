#ifndef ORVIA_FLOW_RATING_DEVICE_H
#define ORVIA_FLOW_RATING_DEVICE_H

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Devices for which a rating can be worked out, each kind told as data: whoever asks for a device's
// dimensions walks the fields of its kind and needs to know no kind by name.

/// What a figure of a device is measured in.
enum class RatingUnits {
    Length,   ///< in the device's unit of length; limits and default in metres
    Flow,     ///< in the device's unit of flow (columns only)
    Degrees,  ///< an angle
    Percent,
    Ratio,  ///< a pure number: a side's run over its rise, a roughness
    Choice  ///< the position of one of the field's choices, from 0
};

/// One figure that a kind of device asks for.
struct RatingField {
    std::string_view Key;      ///< its name in files: small letters and hyphens
    std::string_view Caption;  ///< its name on the screen, without a colon
    RatingUnits Units = RatingUnits::Length;
    double Default = 0;
    double Least = 0;       ///< least value that is accepted
    double Greatest = 0;    ///< greatest value that is accepted
    bool Optional = false;  ///< 0 is accepted too and leaves the figure to the method
    std::string_view Hint;  ///< what is measured from where, in one sentence
    std::span<const std::string_view> Choices = {};
};

/// One column of the rows that a kind asks for (a section by points, one's own points).
struct RatingColumn {
    std::string_view Caption;
    RatingUnits Units = RatingUnits::Length;
};

inline constexpr std::size_t MostRatingColumns = 3;

/// One row; figures behind the kind's last column are 0.
using RatingRow = std::array<double, MostRatingColumns>;

/// Most rows that a device keeps.
inline constexpr std::size_t MostRatingRows = 1000;

/// Whom a kind of device stands with in a list.
enum class RatingGroup { ThinPlate, LongThroated, Flume, Channel, OwnPoints };

/// A kind of device.
struct RatingKind {
    std::string_view Key;  ///< its name in files: small letters and hyphens
    RatingGroup Group = RatingGroup::ThinPlate;
    std::string_view Caption;
    std::string_view Hint;  ///< where the head counts from and is measured, in one or two sentences
    std::span<const RatingField> Fields;
    std::span<const RatingColumn> Columns = {};  ///< none where the kind has no rows
};

/// Every kind, those of one group together.
[[nodiscard]] std::span<const RatingKind> RatingKinds();

/// The kind of that key, none if there is none.
[[nodiscard]] const RatingKind* FindRatingKind(std::string_view key);

/// Name of a group on the screen.
[[nodiscard]] std::string_view RatingGroupName(RatingGroup group);

/// One device: a kind and its figures as they were typed.
struct RatingDevice {
    const RatingKind* Kind = nullptr;  ///< one of RatingKinds(); never null in a device made here
    int LengthUnit = 0;                ///< of all its lengths: 0 feet, 1 inches, 2 metres, 3 cm
    int FlowUnit = 0;                  ///< of the flows in its rows; codes of FlowUnitName
    std::string Name;                  ///< in the operator's own words; may be empty
    std::vector<double> Values;        ///< one a field, in their order
    std::vector<RatingRow> Rows;
};

/// A device of that kind with its defaults, rounded to a figure that reads well in that unit.
[[nodiscard]] RatingDevice DefaultRatingDevice(const RatingKind& kind, int lengthUnit);

/// Position of the field of that key among the fields of a kind, nothing if it has none.
[[nodiscard]] std::optional<std::size_t> RatingFieldAt(const RatingKind& kind,
                                                       std::string_view key);

/// The field's value in metres, degrees, percent or as a pure number; 0 for a key that the kind
/// does not have.
[[nodiscard]] double RatingValue(const RatingDevice& device, std::string_view key);

/// Turns every length, those of the rows too, into another unit; figures keep 12 digits.
void ChangeRatingLengthUnit(RatingDevice& device, int lengthUnit);

/// The same for the flows of the rows.
void ChangeRatingFlowUnit(RatingDevice& device, int flowUnit);

/// The value of a field as text for a box that takes it; a choice gives its words.
[[nodiscard]] std::string RatingFieldText(const RatingDevice& device, std::size_t field);

/// Takes a typed text into a field, a comma as decimal mark too; an empty text of a figure that may
/// be left to the method counts as 0. False, with the value kept, if the text is no number or no
/// choice. What lies outside the limits is taken: RatingFieldFault tells of it.
[[nodiscard]] bool SetRatingFieldText(RatingDevice& device, std::size_t field,
                                      std::string_view text);

/// The limits of a field that is no choice: "0.0328 to 984 feet".
[[nodiscard]] std::string RatingFieldLimits(const RatingDevice& device, std::size_t field);

/// Why the value of a field is not accepted, in words ("Crest length has to lie within 0.0328 to
/// 984 feet."); empty if it is.
[[nodiscard]] std::string RatingFieldFault(const RatingDevice& device, std::size_t field);

/// The unit behind a figure: "feet", "degrees", "%", "CFS"; empty for pure numbers and choices.
[[nodiscard]] std::string RatingUnitText(const RatingDevice& device, RatingUnits units);

/// The rows as text: a row a line, figures separated by tabs.
[[nodiscard]] std::string RatingRowsText(const RatingDevice& device);

/// What reading rows met.
struct RatingRowsRead {
    int Taken = 0;       ///< rows taken
    int PassedOver = 0;  ///< lines that were no row: headings, too few figures
    int Beyond = 0;      ///< rows behind the last that a device keeps
};

/// Takes typed, pasted or comma-separated text as the device's rows. Blanks, tabs, semicolons and
/// commas separate; figures in quotes count, and so does a decimal comma where tabs or semicolons
/// separate. From the third on a column may be missing: 0, which leaves the figure to the row
/// before.
RatingRowsRead SetRatingRowsText(RatingDevice& device, std::string_view text);

#endif  // ORVIA_FLOW_RATING_DEVICE_H
