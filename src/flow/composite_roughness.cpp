#include "flow/composite_roughness.h"

#include <algorithm>
#include <cmath>

namespace {

double Conveyance(double area, double perimeter, double roughness) {
    return perimeter > 0 && area > 0 && roughness > 0
               ? area * std::pow(area / perimeter, 2.0 / 3) / roughness
               : 0;
}

/// Lotter's conveyance: neighbouring parts of one roughness flow together.
double SumOfConveyances(std::span<const RoughPart> parts) {
    double sum = 0;
    RoughPart together;
    for (const RoughPart& part : parts) {
        if (part.Roughness != together.Roughness) {
            sum += Conveyance(together.Area, together.Perimeter, together.Roughness);
            together = {0, part.Roughness, 0};
        }
        together.Area += part.Area;
        together.Perimeter += part.Perimeter;
    }
    return sum + Conveyance(together.Area, together.Perimeter, together.Roughness);
}

}  // namespace

double ComposedRoughness(std::span<const RoughPart> parts, Composing composing) {
    const double power = composing == Composing::Forces ? 2 : 1.5;
    double perimeter = 0;
    double sum = 0;
    for (const RoughPart& part : parts) {
        perimeter += part.Perimeter;
        sum += part.Perimeter * std::pow(part.Roughness, power);
    }
    return perimeter > 0 ? std::pow(sum / perimeter, 1 / power) : 0;
}

double ManningFlow(double area, std::span<const RoughPart> parts, double slope,
                   Composing composing) {
    if (composing == Composing::Conveyances) {
        return SumOfConveyances(parts) * std::sqrt(slope);
    }
    double perimeter = 0;
    for (const RoughPart& part : parts) {
        perimeter += part.Perimeter;
    }
    return Conveyance(area, perimeter, ComposedRoughness(parts, composing)) * std::sqrt(slope);
}

PointSection::PointSection(const std::vector<RatingRow>& rows, double roughness) {
    if (rows.size() < 2) {
        return;
    }
    double lowest = rows.front()[1];
    double highest = lowest;
    for (const RatingRow& row : rows) {
        lowest = std::min(lowest, row[1]);
        highest = std::max(highest, row[1]);
    }
    // A section may be told from either bank.
    const bool backward = rows.back()[0] < rows.front()[0];
    for (std::size_t i = 0; i + 1 < rows.size(); ++i) {
        roughness = rows[i][2] > 0 ? rows[i][2] : roughness;
        const RatingRow& from = backward ? rows[i + 1] : rows[i];
        const RatingRow& to = backward ? rows[i] : rows[i + 1];
        stretches_.push_back({from[0], from[1] - lowest, to[0], to[1] - lowest, roughness});
        overhangs_ = overhangs_ || to[0] < from[0];
    }
    closed_ =
        rows.size() > 3 && rows.front()[0] == rows.back()[0] && rows.front()[1] == rows.back()[1];
    depth_ = closed_ ? highest - lowest : std::min(rows.front()[1], rows.back()[1]) - lowest;
}

bool PointSection::SeveralRoughnesses() const {
    return std::any_of(stretches_.begin(), stretches_.end(), [&](const Stretch& stretch) {
        return stretch.Roughness != stretches_.front().Roughness;
    });
}

std::vector<double> PointSection::Bends() const {
    std::vector<double> bends;
    bends.reserve(stretches_.size() + 1);
    for (const Stretch& stretch : stretches_) {
        bends.push_back(stretch.FromY);
        bends.push_back(stretch.ToY);
    }
    return bends;
}

std::vector<RoughPart> PointSection::Parts(double depth) const {
    std::vector<RoughPart> parts;
    parts.reserve(stretches_.size());
    for (const Stretch& stretch : stretches_) {
        const double low = std::min(stretch.FromY, stretch.ToY);
        const double rise = std::max(stretch.FromY, stretch.ToY) - low;
        if (low >= depth) {
            continue;
        }
        const double wet = rise > 0 ? std::min(1.0, (depth - low) / rise) : 1;
        const double run = (stretch.ToX - stretch.FromX) * wet;
        parts.push_back(
            {std::hypot(run, rise * wet), stretch.Roughness, run * (depth - low - rise * wet / 2)});
    }
    return parts;
}

double PointSection::Area(double depth) const {
    double area = 0;
    for (const RoughPart& part : Parts(depth)) {
        area += part.Area;
    }
    // A closed section told the other way round has its area with the other sign.
    return closed_ ? std::fabs(area) : area;
}

double PointSection::Flow(double depth, double slope, Composing composing) const {
    const std::vector<RoughPart> parts = Parts(depth);
    double area = 0;
    for (const RoughPart& part : parts) {
        area += part.Area;
    }
    return ManningFlow(closed_ ? std::fabs(area) : area, parts, slope, composing);
}
