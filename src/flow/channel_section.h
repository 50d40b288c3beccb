#ifndef ORVIA_FLOW_CHANNEL_SECTION_H
#define ORVIA_FLOW_CHANNEL_SECTION_H

#include <limits>
#include <vector>

// Cross-sections of channels and throats: what a depth of water above the lowest point fills. Any
// one unit of length; depths outside 0 to the height count as its ends.

/// A prismatic cross-section.
class ChannelSection {
 public:
    ChannelSection() = default;
    ChannelSection(const ChannelSection&) = delete;
    ChannelSection& operator=(const ChannelSection&) = delete;
    virtual ~ChannelSection() = default;

    [[nodiscard]] virtual double Area(double depth) const = 0;
    [[nodiscard]] virtual double Perimeter(double depth) const = 0;  ///< wetted
    [[nodiscard]] virtual double Width(double depth) const = 0;      ///< of the water's surface

    /// Where a closed section ends; infinite for an open one.
    [[nodiscard]] virtual double Height() const { return std::numeric_limits<double>::infinity(); }

    /// Depths between 0 and the height at which the sides bend.
    [[nodiscard]] virtual std::vector<double> Bends() const { return {}; }
};

/// A rectangle (slope 0), a trapezoid or a triangle (bottom 0), open above.
class TrapezoidSection : public ChannelSection {
 public:
    TrapezoidSection(double bottom, double slope) : bottom_(bottom), slope_(slope) {}

    [[nodiscard]] double Area(double depth) const override;
    [[nodiscard]] double Perimeter(double depth) const override;
    [[nodiscard]] double Width(double depth) const override;

 private:
    double bottom_;
    double slope_;  // run of a side over its rise
};

/// A round pipe.
class CircleSection : public ChannelSection {
 public:
    explicit CircleSection(double diameter) : diameter_(diameter) {}

    [[nodiscard]] double Area(double depth) const override;
    [[nodiscard]] double Perimeter(double depth) const override;
    [[nodiscard]] double Width(double depth) const override;
    [[nodiscard]] double Height() const override { return diameter_; }

 private:
    double diameter_;
};

/// A half circle with upright sides above it.
class USection : public ChannelSection {
 public:
    explicit USection(double diameter) : circle_(diameter), diameter_(diameter) {}

    [[nodiscard]] double Area(double depth) const override;
    [[nodiscard]] double Perimeter(double depth) const override;
    [[nodiscard]] double Width(double depth) const override;
    [[nodiscard]] std::vector<double> Bends() const override { return {diameter_ / 2}; }

 private:
    CircleSection circle_;
    double diameter_;
};

/// The standard egg, narrow end down: height 3, crown radius 1, sides of radius 3, invert of radius
/// 1/2, in thirds of the height.
class EggSection : public ChannelSection {
 public:
    explicit EggSection(double height) : height_(height) {}

    [[nodiscard]] double Area(double depth) const override;
    [[nodiscard]] double Perimeter(double depth) const override;
    [[nodiscard]] double Width(double depth) const override;
    [[nodiscard]] double Height() const override { return height_; }
    [[nodiscard]] std::vector<double> Bends() const override;

 private:
    double height_;
};

/// What a flat sill leaves of a round pipe; the depth counts from the sill.
class PipeAboveSill : public ChannelSection {
 public:
    PipeAboveSill(double diameter, double sill);

    [[nodiscard]] double Area(double depth) const override;
    [[nodiscard]] double Perimeter(double depth) const override;
    [[nodiscard]] double Width(double depth) const override;
    [[nodiscard]] double Height() const override { return pipe_.Height() - sill_; }

 private:
    CircleSection pipe_;
    double sill_;
    double filled_;   // area below the sill
    double covered_;  // perimeter below the sill
    double sillWidth_;
};

/// A trapezoid in a round pipe, on a sill: the walls of the trapezoid up to where they meet the
/// pipe, the pipe above. The depth counts from the sill.
class TrapezoidInPipe : public ChannelSection {
 public:
    TrapezoidInPipe(double diameter, double sill, double bottom, double slope);

    [[nodiscard]] double Area(double depth) const override;
    [[nodiscard]] double Perimeter(double depth) const override;
    [[nodiscard]] double Width(double depth) const override;
    [[nodiscard]] double Height() const override { return pipe_.Height(); }
    [[nodiscard]] std::vector<double> Bends() const override { return {meeting_}; }

 private:
    TrapezoidSection trapezoid_;
    PipeAboveSill pipe_;
    double meeting_;  // depth at which the walls meet the pipe
};

#endif  // ORVIA_FLOW_CHANNEL_SECTION_H
