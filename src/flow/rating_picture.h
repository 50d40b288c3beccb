#ifndef ORVIA_FLOW_RATING_PICTURE_H
#define ORVIA_FLOW_RATING_PICTURE_H

#include <cstddef>
#include <string>
#include <vector>

#include "flow/rating_device.h"
#include "flow/rating_made.h"

// A rating in the words and figures in which it is shown, in the units of its device.

/// Figures side by side, a row a line.
struct RatingSheet {
    struct Row {
        std::vector<std::string> Cells;
        bool Marked = false;  ///< outside the method's range, or an outlier
        std::string Remark;   ///< what the mark says, in words
    };
    std::vector<std::string> Headings;
    std::vector<Row> Rows;
};

/// One figure over another.
struct RatingSpot {
    double Head = 0;
    double Flow = 0;
    bool Marked = false;
};

struct RatingPicture {
    std::string HeadTitle;  ///< "Head, feet"
    std::string FlowTitle;  ///< "Flow, CFS"
    std::vector<RatingSpot> Curve;
    std::vector<RatingSpot> Inside;  ///< the part of the curve where the method holds
    std::vector<RatingSpot> Below;   ///< the parts that are estimates; each meets the one inside
    std::vector<RatingSpot> Above;
    std::vector<RatingSpot> OwnPoints;
    std::vector<RatingSpot> Stops;  ///< of the cursor, one a row of the table
    RatingSheet Table;
    RatingSheet Residuals;  ///< without headings where there are none
};

[[nodiscard]] RatingPicture PictureOf(const RatingDevice& device, const Rating& rating);

/// A row of the table in one sentence: "Head 0.5 feet, flow 1.23 CFS."
[[nodiscard]] std::string StopText(const RatingPicture& picture, const RatingDevice& device,
                                   std::size_t stop);

/// The stop nearest to a head; 0 if there is none.
[[nodiscard]] std::size_t NearestStop(const RatingPicture& picture, double head);

/// Values to mark on a logarithmic axis from `first` to `last`: 1, 2 and 5 times the powers of ten,
/// on a long axis the powers alone. None unless 0 < first < last.
[[nodiscard]] std::vector<double> LogarithmicTicks(double first, double last);

/// A heading and the lines below it.
struct RatingChapter {
    std::string Heading;
    std::vector<std::string> Lines;
    bool Weighty = false;  ///< tells of something outside limits, or why there is no rating
};

/// What there is to say about a rating: remarks that weigh, range, uncertainty, equations, sources,
/// notes. Chapters without a line are left out.
[[nodiscard]] std::vector<RatingChapter> ChaptersOf(const RatingDevice& device,
                                                    const Rating& rating);

#endif  // ORVIA_FLOW_RATING_PICTURE_H
