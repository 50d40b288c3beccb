// A table file of any bytes as a device for change, and the same bytes as typed rows: whatever is
// read makes a rating of finite figures or is refused, and the file of what was read reads back as
// the same device.

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "flow/rating_file.h"
#include "flow/rating_made.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void RequireFinite(const Rating& rating) {
    Require(rating.Made() || !rating.Remarks.empty());
    Require(rating.Points.UpperBound() <= MostRatingPoints);
    for (const FlowTablePoint& point : rating.Points) {
        Require(std::isfinite(point.Level) && std::isfinite(point.Flow));
    }
    Require(std::isfinite(rating.LeastHead + rating.GreatestHead + rating.LeastFlow +
                          rating.GreatestFlow + rating.Uncertainty));
    for (const RatingListingLine& line : ListRating(rating, 2, 3, 20)) {
        Require(std::isfinite(line.Head) && std::isfinite(line.Flow));
    }
}

void RequireSameBack(const RatingDevice& device) {
    const Rating rating = ComputeRating(device);
    RequireFinite(rating);
    std::istringstream file(RatingTableText(device, rating));
    const std::optional<RatingTableRead> back = ReadRatingTable(file);
    Require(back && back->FromHeadings && back->Device.Kind == device.Kind);
    Require(back->Device.LengthUnit == device.LengthUnit);
    Require(back->Device.FlowUnit == device.FlowUnit);
    Require(back->Device.Rows.size() == device.Rows.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::istringstream file(text);
    if (const std::optional<RatingTableRead> read = ReadRatingTable(file, size)) {
        RequireSameBack(read->Device);
    }
    for (const char* kind : {"points", "channel-section"}) {
        RatingDevice device = DefaultRatingDevice(*FindRatingKind(kind), 0);
        const RatingRowsRead rows = SetRatingRowsText(device, text);
        Require(static_cast<std::size_t>(rows.Taken) == device.Rows.size());
        Require(device.Rows.size() <= MostRatingRows);
        RequireSameBack(device);
    }
    return 0;
}
