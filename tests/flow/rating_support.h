#ifndef ORVIA_TESTS_FLOW_RATING_SUPPORT_H
#define ORVIA_TESTS_FLOW_RATING_SUPPORT_H

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "flow/rating_device.h"
#include "flow/rating_made.h"

enum RatingLengthUnits { InFeet, InInches, InMeters, InCentimeters };

/// A device of that kind with its defaults, but for the figures given.
inline RatingDevice DeviceOf(
    std::string_view kind, std::initializer_list<std::pair<std::string_view, double>> figures = {},
    int unit = InFeet) {
    const RatingKind* found = FindRatingKind(kind);
    if (found == nullptr) {
        throw std::runtime_error("no such kind: " + std::string(kind));
    }
    RatingDevice device = DefaultRatingDevice(*found, unit);
    for (const auto& [key, value] : figures) {
        const auto at = RatingFieldAt(*found, key);
        if (!at) {
            throw std::runtime_error("no such figure: " + std::string(key));
        }
        device.Values[*at] = value;
    }
    return device;
}

/// A device of own points or of a section by points.
inline RatingDevice RowsOf(std::string_view kind, std::string_view rows,
                           std::initializer_list<std::pair<std::string_view, double>> figures = {},
                           int unit = InFeet) {
    RatingDevice device = DeviceOf(kind, figures, unit);
    EXPECT_EQ(SetRatingRowsText(device, rows).PassedOver, 0);
    return device;
}

/// A device that makes a rating out of any kind's defaults.
inline RatingDevice SomeDevice(const RatingKind& kind, int unit = InFeet) {
    RatingDevice device = DefaultRatingDevice(kind, unit);
    if (kind.Key == "channel-section") {
        (void)SetRatingRowsText(device, "0 2 0.035\n4 1 0.03\n5 0 0.02\n8 0 0.02\n9 1 0.03\n14 2");
    }
    if (kind.Key == "points") {
        (void)SetRatingRowsText(device, "0.1 0.12\n0.2 0.36\n0.4 1.1\n0.6 2.13\n0.8 3.42\n1 4.95");
    }
    return device;
}

/// Whether a remark of that weight has these words in it.
inline bool Remarks(const Rating& rating, RatingWeight weight, std::string_view words) {
    for (const RatingRemark& remark : rating.Remarks) {
        if (remark.Weight == weight && remark.Text.find(words) != std::string::npos) {
            return true;
        }
    }
    return false;
}

inline bool RemarksOf(const Rating& rating, RatingWeight weight) {
    return Remarks(rating, weight, "");
}

#endif  // ORVIA_TESTS_FLOW_RATING_SUPPORT_H
