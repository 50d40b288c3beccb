#include <array>

#include "flow/rating_device.h"
#include "flow/standard_flumes.h"

// What each kind of device asks for. Limits keep out what cannot be meant; whether a figure is
// inside the limits of its method is told by the rating.

namespace {

constexpr double Foot = 0.3048;
constexpr double Inch = Foot / 12;

using Units = RatingUnits;

constexpr RatingField GreatestHeadField = {
    "greatest-head",
    "Greatest head",
    Units::Length,
    0,
    0.01,
    100,
    true,
    "How far the table goes; left empty, as far as the method holds."};

constexpr RatingField ChannelWidthField = {
    "channel-width",
    "Channel width",
    Units::Length,
    0,
    0.03,
    1000,
    true,
    "Width of the channel before the plate; left empty, so wide that its walls do not matter."};

constexpr RatingField CrestHeightField = {
    "crest-height",
    "Crest above bed",
    Units::Length,
    0,
    0.01,
    100,
    true,
    "From the channel's bed to the lowest point of the opening; left empty, so deep that it does "
    "not matter."};

constexpr RatingField CrestField = {
    "crest",       "Crest length",
    Units::Length, 2 * Foot,
    0.01,          300,
    false,         "Length of the level crest, along the water's edge."};

constexpr RatingField NotchFields[] = {{"angle", "Angle of the notch", Units::Degrees, 60, 10, 150,
                                        false, "The full angle between the two sides."},
                                       CrestHeightField,
                                       ChannelWidthField,
                                       GreatestHeadField};

constexpr RatingField RectangularWeirFields[] = {
    CrestField,
    ChannelWidthField,
    {"crest-height", "Crest above bed", Units::Length, 2 * Foot, 0.01, 100, false,
     "From the channel's bed to the crest."},
    GreatestHeadField};

constexpr std::array<std::string_view, 3> ContractionChoices = {"at both ends", "at one end",
                                                                "none (suppressed)"};

constexpr RatingField FrancisFields[] = {
    CrestField,
    {"contractions", "End contractions", Units::Choice, 0, 0, 2, false,
     "Where the crest ends short of the walls.", ContractionChoices},
    GreatestHeadField};

constexpr RatingField CipollettiFields[] = {CrestField, CrestHeightField, ChannelWidthField,
                                            GreatestHeadField};

constexpr std::array<std::string_view, 2> SutroChoices = {"both sides curved", "one side curved"};

constexpr RatingField SutroFields[] = {
    {"base-height", "Height of the base", Units::Length, 0.1 * Foot, 0.001, 10, false,
     "Height of the rectangle below the curved sides."},
    {"base-width", "Width of the base", Units::Length, Foot, 0.01, 30, false,
     "Width of the rectangle below the curved sides."},
    {"opening-height", "Height of the opening", Units::Length, Foot, 0.01, 30, false,
     "From the crest to the top of the curved sides; the table ends there."},
    {"sides", "Sides", Units::Choice, 0, 0, 1, false, "", SutroChoices},
    CrestHeightField,
    ChannelWidthField};

// Long-throated devices: throat, sill, approach channel, surface.

constexpr RatingField SillField = {
    "sill",
    "Sill height",
    Units::Length,
    0,
    0,
    30,
    false,
    "Floor of the throat above the bed at the gauge; 0 if the throat only narrows the sides."};

constexpr RatingField RaisedSillField = {
    "sill",
    "Sill height",
    Units::Length,
    Foot,
    0,
    30,
    false,
    "Floor of the throat above the bed at the gauge; 0 if the throat only narrows the sides."};

constexpr RatingField ThroatLengthField = {"throat-length",
                                           "Throat length",
                                           Units::Length,
                                           3 * Foot,
                                           0.01,
                                           100,
                                           false,
                                           "Length of the level throat, along the flow."};

constexpr RatingField ApproachWidthField = {"approach-width",
                                            "Approach bed width",
                                            Units::Length,
                                            4 * Foot,
                                            0,
                                            1000,
                                            false,
                                            "Width of the channel's bed at the gauge."};

constexpr RatingField ApproachSlopeField = {
    "approach-slope",
    "Approach side slope",
    Units::Ratio,
    0,
    0,
    20,
    false,
    "Run of the channel's sides over their rise at the gauge; 0 if they are upright."};

constexpr RatingField GaugeField = {
    "gauge-distance",
    "Gauge to narrowing",
    Units::Length,
    0,
    0.001,
    100,
    true,
    "From the gauge to where the channel begins to narrow or rise."};

constexpr RatingField NarrowingField = {
    "narrowing-length",
    "Length of the narrowing",
    Units::Length,
    0,
    0.001,
    100,
    true,
    "From where the channel begins to narrow or rise to the throat."};

constexpr RatingField RoughnessHeightField = {
    "roughness-height",
    "Roughness height",
    Units::Length,
    0.00015,
    0.000001,
    0.01,
    false,
    "Of the throat's surface: plastic or metal 0.00003 to 0.00015 m, smooth concrete 0.0002 to "
    "0.0004 m."};

constexpr RatingField ExitRampField = {
    "exit-slope",
    "Downstream ramp",
    Units::Ratio,
    0,
    0,
    20,
    false,
    "Run over drop of the ramp behind the throat; 0 for an abrupt end. Only the modular limit "
    "depends on it."};

constexpr std::array<std::string_view, 2> BoundaryChoices = {"drag (Clemmens)",
                                                             "thickness (ISO 4359)"};

constexpr RatingField BoundaryField = {
    "boundary",
    "Boundary layer",
    Units::Choice,
    0,
    0,
    1,
    false,
    "What the surface takes of the head: by the drag in the throat (Bos, Replogle and Clemmens), "
    "or by the layer's displacement thickness (ISO 4359).",
    BoundaryChoices};

constexpr RatingField RectangularThroatFields[] = {
    {"throat-width", "Throat width", Units::Length, 2 * Foot, 0.01, 300, false,
     "Width between the throat's upright sides."},
    SillField,
    ThroatLengthField,
    ApproachWidthField,
    ApproachSlopeField,
    GaugeField,
    NarrowingField,
    RoughnessHeightField,
    ExitRampField,
    BoundaryField,
    GreatestHeadField};

constexpr RatingField ThroatSideField = {
    "throat-slope", "Throat side slope",
    Units::Ratio,   1,
    0.01,           20,
    false,          "Run of the throat's sides over their rise."};

constexpr RatingField TrapezoidalThroatFields[] = {
    {"throat-width", "Throat bottom width", Units::Length, 2 * Foot, 0.01, 300, false,
     "Width of the throat's floor."},
    ThroatSideField,
    RaisedSillField,
    ThroatLengthField,
    {"approach-width", "Approach bed width", Units::Length, 2 * Foot, 0, 1000, false,
     "Width of the channel's bed at the gauge."},
    {"approach-slope", "Approach side slope", Units::Ratio, 1, 0, 20, false,
     "Run of the channel's sides over their rise at the gauge; 0 if they are upright."},
    GaugeField,
    NarrowingField,
    RoughnessHeightField,
    ExitRampField,
    BoundaryField,
    GreatestHeadField};

constexpr RatingField TriangularThroatFields[] = {
    ThroatSideField,    SillField,     ThroatLengthField, ApproachWidthField,
    ApproachSlopeField, GaugeField,    NarrowingField,    RoughnessHeightField,
    ExitRampField,      BoundaryField, GreatestHeadField};

constexpr RatingField UThroatFields[] = {
    {"throat-diameter", "Throat diameter", Units::Length, 1.5 * Foot, 0.01, 300, false,
     "Diameter of the throat's round floor, and width between its upright sides."},
    SillField,
    ThroatLengthField,
    ApproachWidthField,
    ApproachSlopeField,
    GaugeField,
    NarrowingField,
    RoughnessHeightField,
    ExitRampField,
    BoundaryField,
    GreatestHeadField};

constexpr RatingField PipeField = {
    "pipe-diameter", "Pipe diameter", Units::Length, Foot, 0.02, 30, false, "Inside diameter."};

constexpr RatingField PipeThroatLengthField = {"throat-length",
                                               "Throat length",
                                               Units::Length,
                                               Foot,
                                               0.01,
                                               100,
                                               false,
                                               "Length of the level throat, along the flow."};

constexpr RatingField PipeSillFields[] = {
    PipeField,
    {"sill", "Sill height", Units::Length, 0.3 * Foot, 0.001, 30, false,
     "Top of the flat sill above the pipe's invert."},
    PipeThroatLengthField,
    GaugeField,
    NarrowingField,
    RoughnessHeightField,
    ExitRampField,
    BoundaryField,
    GreatestHeadField};

constexpr RatingField PalmerBowlusFields[] = {
    PipeField,
    {"throat-width", "Throat bottom width", Units::Length, 5 * Inch, 0.005, 30, false,
     "Measured width of the throat's floor; proportions differ by maker."},
    {"throat-slope", "Throat side slope", Units::Ratio, 0.5, 0, 20, false,
     "Run of the throat's sides over their rise, measured."},
    {"sill", "Sill height", Units::Length, 2 * Inch, 0, 30, false,
     "Floor of the throat above the pipe's invert, measured."},
    PipeThroatLengthField,
    GaugeField,
    NarrowingField,
    RoughnessHeightField,
    ExitRampField,
    BoundaryField,
    GreatestHeadField};

constexpr RatingField BroadCrestedFields[] = {
    {"crest", "Width", Units::Length, 4 * Foot, 0.01, 300, false,
     "Width between the channel's upright walls, all of which the crest takes."},
    {"sill", "Crest height", Units::Length, 2 * Foot, 0.01, 30, false,
     "Crest above the bed upstream."},
    {"throat-length", "Crest length", Units::Length, 3 * Foot, 0.01, 100, false,
     "Length of the level crest, along the flow."},
    GreatestHeadField};

constexpr RatingField ParshallFields[] = {
    {"size", "Throat width", Units::Choice, 3, 0, ParshallSizeNames.size() - 1.0, false, "",
     ParshallSizeNames},
    GreatestHeadField};

constexpr RatingField CutthroatFields[] = {
    {"size", "Length and throat width", Units::Choice, 5, 0, CutthroatSizeNames.size() - 1.0, false,
     "", CutthroatSizeNames},
    GreatestHeadField};

constexpr RatingField HsFlumeFields[] = {{"size", "Depth", Units::Choice, 3, 0,
                                          HsFlumeSizeNames.size() - 1.0, false, "",
                                          HsFlumeSizeNames}};
constexpr RatingField HFlumeFields[] = {{"size", "Depth", Units::Choice, 2, 0,
                                         HFlumeSizeNames.size() - 1.0, false, "", HFlumeSizeNames}};
constexpr RatingField HlFlumeFields[] = {{"size", "Depth", Units::Choice, 4, 0,
                                          HlFlumeSizeNames.size() - 1.0, false, "",
                                          HlFlumeSizeNames}};

// Channels by Manning's equation.

constexpr RatingField SlopeField = {
    "slope", "Slope", Units::Percent, 0.1,
    0.0001,  100,     false,          "Fall of the bed over its length, where the flow is even."};

constexpr RatingField RoughnessField = {
    "roughness", "Roughness of the bed", Units::Ratio, 0.014, 0.001, 1, false, "Manning's n."};

constexpr RatingField OnlyRoughnessField = {"roughness", "Roughness", Units::Ratio, 0.014,
                                            0.001,       1,           false,        "Manning's n."};

constexpr RatingField WallRoughnessField = {
    "wall-roughness",
    "Roughness of the sides",
    Units::Ratio,
    0,
    0.001,
    1,
    true,
    "Manning's n of the sides; left empty, that of the bed."};

constexpr RatingField DepthField = {"depth", "Depth", Units::Length, 2 * Foot,
                                    0.01,    100,     false,         "From the bed to the brim."};

constexpr RatingField BedWidthField = {"width", "Bed width", Units::Length, 2 * Foot,
                                       0.01,    1000,        false,         "Width of the bed."};

constexpr RatingField SideSlopeField = {
    "side-slope", "Side slope", Units::Ratio, 1.5,
    0.01,         50,           false,        "Run of the sides over their rise."};

constexpr RatingField RectangularChannelFields[] = {BedWidthField, DepthField, SlopeField,
                                                    RoughnessField, WallRoughnessField};
constexpr RatingField TrapezoidalChannelFields[] = {
    BedWidthField, SideSlopeField, DepthField, SlopeField, RoughnessField, WallRoughnessField};
constexpr RatingField TriangularChannelFields[] = {SideSlopeField, DepthField, SlopeField,
                                                   OnlyRoughnessField};
constexpr RatingField PipeChannelFields[] = {PipeField, SlopeField, OnlyRoughnessField};
constexpr RatingField EggChannelFields[] = {
    {"height", "Height", Units::Length, 3 * Foot, 0.02, 30, false,
     "Inside height; the width is two thirds of it."},
    SlopeField,
    OnlyRoughnessField};

constexpr std::array<std::string_view, 3> ComposeChoices = {
    "one velocity (Einstein)", "sum of forces (Pavlovskii)", "sum of conveyances (Lotter)"};

constexpr RatingField SectionFields[] = {
    SlopeField,
    OnlyRoughnessField,
    {"composing", "Composed by", Units::Choice, 0, 0, 2, false,
     "How the roughnesses of the rows make one flow.", ComposeChoices},
    GreatestHeadField};

constexpr RatingColumn SectionColumns[] = {
    {"Distance", Units::Length}, {"Elevation", Units::Length}, {"Roughness", Units::Ratio}};

constexpr std::array<std::string_view, 3> CurveChoices = {
    "straight lines", "straight lines in logarithms", "power law with offset"};

constexpr RatingField PointsFields[] = {
    {"curve", "Between the points", Units::Choice, 0, 0, 2, false, "", CurveChoices}};

constexpr RatingColumn PointsColumns[] = {{"Level", Units::Length}, {"Flow", Units::Flow}};

using Group = RatingGroup;

constexpr RatingKind Kinds[] = {
    {"v-notch", Group::ThinPlate, "V-notch weir",
     "Head above the bottom of the notch, four times the greatest head or more upstream.",
     NotchFields},
    {"rectangular-weir", Group::ThinPlate, "Rectangular weir",
     "Head above the crest, four times the greatest head or more upstream. With the crest as long "
     "as the channel is wide it is a full-width weir.",
     RectangularWeirFields},
    {"standard-weir", Group::ThinPlate, "Rectangular weir, standard (Francis)",
     "Head above the crest. Fully contracted or suppressed, with a deep, slow approach.",
     FrancisFields},
    {"cipolletti", Group::ThinPlate, "Cipolletti weir",
     "Head above the crest. Sides lean outward 1 in 4.", CipollettiFields},
    {"sutro", Group::ThinPlate, "Proportional (Sutro) weir",
     "Head above the crest of the rectangular base.", SutroFields},
    {"throat-rectangular", Group::LongThroated, "Throat, rectangular",
     "Head above the throat's floor, in the approach channel.", RectangularThroatFields},
    {"throat-trapezoidal", Group::LongThroated, "Throat, trapezoidal",
     "Head above the throat's floor, in the approach channel.", TrapezoidalThroatFields},
    {"throat-triangular", Group::LongThroated, "Throat, triangular",
     "Head above the bottom of the throat, in the approach channel.", TriangularThroatFields},
    {"throat-u", Group::LongThroated, "Throat, U-shaped",
     "Head above the bottom of the throat, in the approach channel.", UThroatFields},
    {"pipe-sill", Group::LongThroated, "Flat sill in a pipe",
     "Head above the sill, in the pipe upstream.", PipeSillFields},
    {"palmer-bowlus", Group::LongThroated, "Trapezoid in a pipe (Palmer-Bowlus)",
     "Head above the throat's floor, in the pipe upstream.", PalmerBowlusFields},
    {"broad-crested", Group::LongThroated, "Broad-crested weir with a square edge",
     "Head above the crest, in the channel upstream.", BroadCrestedFields},
    {"parshall", Group::Flume, "Parshall flume",
     "Head above the level floor, two thirds of the converging wall upstream of the throat.",
     ParshallFields},
    {"hs-flume", Group::Flume, "HS flume", "Head as the standard drawings show it.", HsFlumeFields},
    {"h-flume", Group::Flume, "H flume", "Head as the standard drawings show it.", HFlumeFields},
    {"hl-flume", Group::Flume, "HL flume", "Head as the standard drawings show it.", HlFlumeFields},
    {"cutthroat", Group::Flume, "Cutthroat flume",
     "Head above the floor, two ninths of the flume's length upstream of the throat.",
     CutthroatFields},
    {"channel-rectangular", Group::Channel, "Rectangular channel",
     "Level above the bed, where the flow is even.", RectangularChannelFields},
    {"channel-trapezoidal", Group::Channel, "Trapezoidal channel",
     "Level above the bed, where the flow is even.", TrapezoidalChannelFields},
    {"channel-triangular", Group::Channel, "Triangular channel",
     "Level above the lowest line, where the flow is even.", TriangularChannelFields},
    {"channel-circular", Group::Channel, "Round pipe", "Level above the invert.",
     PipeChannelFields},
    {"channel-egg", Group::Channel, "Egg-shaped pipe",
     "Level above the invert; the standard shape, narrow end down.", EggChannelFields},
    {"channel-section", Group::Channel, "Cross-section by points",
     "Level above the lowest point. The roughness of a row holds up to the next row; a section "
     "whose last point is its first is closed.",
     SectionFields, SectionColumns},
    {"points", Group::OwnPoints, "Own points", "Level as the points have it.", PointsFields,
     PointsColumns},
};

}  // namespace

std::span<const RatingKind> RatingKinds() {
    return Kinds;
}

const RatingKind* FindRatingKind(std::string_view key) {
    for (const RatingKind& kind : Kinds) {
        if (kind.Key == key) {
            return &kind;
        }
    }
    return nullptr;
}

std::string_view RatingGroupName(RatingGroup group) {
    switch (group) {
        case RatingGroup::ThinPlate:
            return "Thin-plate weirs";
        case RatingGroup::LongThroated:
            return "Long-throated flumes and broad-crested weirs";
        case RatingGroup::Flume:
            return "Standard flumes";
        case RatingGroup::Channel:
            return "Channels and pipes (Manning)";
        case RatingGroup::OwnPoints:
            break;
    }
    return "Own points";
}
