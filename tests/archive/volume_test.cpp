#include "archive/volume.h"

#include <gtest/gtest.h>

#include "archive/series_maker.h"

namespace testing_support {
namespace {

std::string VolumeOf(const Series& series, VolumeUnit unit, const Period& period) {
    const auto volume = VolumesOf(SeriesValues(series), unit, Periods(period)).at(0);
    return volume ? VolumeText(volume->Volume) : "";
}

/// What runs through in a day at a level that shows as a cubic foot a second, by hand.
struct OneFoot {
    int FlowUnits;
    VolumeUnit Unit;
    const char* Constant;  ///< a whole day long
    const char* Triangle;  ///< rising to two feet till noon, falling till midnight: as much
    const char* Name;
};

class Hydrograph : public testing::TestWithParam<OneFoot> {
 protected:
    const Period Day{SomeDay, SomeDay + SecondsPerDay};
};

TEST_P(Hydrograph, ConstantFlowIsFlowTimesTime) {
    SeriesMaker maker(1, 0);
    maker.FlowIsLevel(GetParam().FlowUnits);
    for (int i = 0; i <= 96; ++i) {
        maker.Add(SomeDay + i * 900LL, {10});
    }
    EXPECT_EQ(VolumeOf(maker.Made, GetParam().Unit, Day), GetParam().Constant);
}

TEST_P(Hydrograph, TriangleIsHalfItsHeightTimesItsBase) {
    SeriesMaker maker(1, 0);
    maker.FlowIsLevel(GetParam().FlowUnits);
    maker.Logger().SampleInterval = "12 hours";
    for (const Moment hour : {-12, 0, 12, 24, 36}) {
        maker.Add(SomeDay + hour * SecondsPerHour, {hour == 12 ? 20 : 0});
    }
    EXPECT_EQ(VolumeOf(maker.Made, GetParam().Unit, Day), GetParam().Triangle);
    EXPECT_EQ(VolumeOf(maker.Made, GetParam().Unit, {SomeDay - 40'000, SomeDay + 120'000}),
              GetParam().Triangle);
}

// As shown a cubic foot a second is 448.8 GPM, 0.6463 MGD, 0.02832 CMS and 7.4805 x 3.7854 LPS. A
// cubic foot has 1728/231 gallons, an acre-foot 43,560 cubic feet.
INSTANTIATE_TEST_SUITE_P(
    Units, Hydrograph,
    testing::Values(
        OneFoot{0, VolumeUnit::CubicFeet, "86400.0", "86400.0", "CfsCubicFeet"},
        OneFoot{0, VolumeUnit::AcreFeet, "1.98347", "1.98347", "CfsAcreFeet"},
        OneFoot{0, VolumeUnit::Gallons, "646317", "646317", "CfsGallons"},
        OneFoot{0, VolumeUnit::MillionGallons, "0.646317", "0.646317", "CfsMillionGallons"},
        OneFoot{1, VolumeUnit::Gallons, "646272", "646272", "GpmGallons"},
        OneFoot{1, VolumeUnit::MillionGallons, "0.646272", "0.646272", "GpmMillionGallons"},
        OneFoot{1, VolumeUnit::CubicFeet, "86394.0", "86394.0", "GpmCubicFeet"},
        OneFoot{1, VolumeUnit::AcreFeet, "1.98333", "1.98333", "GpmAcreFeet"},
        OneFoot{2, VolumeUnit::MillionGallons, "0.646300", "0.646300", "MgdMillionGallons"},
        OneFoot{2, VolumeUnit::Gallons, "646300", "646300", "MgdGallons"},
        OneFoot{2, VolumeUnit::CubicFeet, "86397.7", "86397.7", "MgdCubicFeet"},
        OneFoot{3, VolumeUnit::CubicMeters, "2446.85", "2446.85", "CmsCubicMeters"},
        OneFoot{3, VolumeUnit::Liters, "2446848", "2446848", "CmsLiters"},
        OneFoot{4, VolumeUnit::Liters, "2446562", "2446562", "LpsLiters"},
        OneFoot{4, VolumeUnit::CubicMeters, "2446.56", "2446.56", "LpsCubicMeters"}),
    [](const auto& instance) { return std::string(instance.param.Name); });

class VolumeTest : public testing::Test {
 protected:
    VolumeTest() { maker.FlowIsLevel(0); }
    std::string Of(const Period& period) {
        return VolumeOf(maker.Made, VolumeUnit::CubicFeet, period);
    }
    SeriesMaker maker{1, 0};
    const Period Hour{SomeDay, SomeDay + SecondsPerHour};
};

TEST_F(VolumeTest, NothingIsKnownWithoutAPairOfRecordsOrWithoutFlow) {
    EXPECT_EQ(Of(Hour), "");
    maker.Add(SomeDay, {10});
    EXPECT_EQ(Of(Hour), "");
    maker.Add(SomeDay + 900, {10});
    EXPECT_EQ(Of(Hour), "900.000");
    EXPECT_EQ(Of({SomeDay + 900, SomeDay + 1800}), "");
    maker.Logger().FlowMode = 0;
    EXPECT_EQ(Of(Hour), "");
}

TEST_F(VolumeTest, NoFlowIsAVolumeOfNothing) {
    maker.Add(SomeDay, {0});
    maker.Add(SomeDay + 900, {0});
    EXPECT_EQ(Of(Hour), "0");
}

TEST_F(VolumeTest, NothingRunsInAGap) {
    for (const Moment at : {0, 900, 1800, 3600, 4500}) {
        maker.Add(SomeDay + at, {10});
    }
    const Period all{SomeDay, SomeDay + 4501};
    const auto volume =
        VolumesOf(SeriesValues(maker.Made), VolumeUnit::CubicFeet, Periods(all)).at(0);
    EXPECT_DOUBLE_EQ(volume.value().Volume, 2700);
    EXPECT_EQ(volume.value().Covered, 2700);
}

TEST_F(VolumeTest, NothingRunsWhereTheClockWasSetBack) {
    for (const Moment at : {0, 900, 1800, 600, 1500}) {
        maker.Add(SomeDay + at, {10});
    }
    EXPECT_EQ(Of(Hour), "2700.00");
}

TEST_F(VolumeTest, PairAcrossABoundIsCutThereInAStraightLine) {
    maker.Add(SomeDay - 300, {0});
    maker.Add(SomeDay + 600, {30});
    EXPECT_EQ(Of({SomeDay - SecondsPerDay, SomeDay}), "150.000");  // to 1 cfs in 300 s
    EXPECT_EQ(Of(Hour), "1200.00");                                // from 1 to 3 in 600 s
    EXPECT_EQ(Of({SomeDay - 300, SomeDay + 600}), "1350.00");
}

TEST_F(VolumeTest, PairsWithARecordThatHasNoFlowCountNothing) {
    maker.Change().FlowMode = 0;
    maker.Add(SomeDay, {10});
    maker.Add(SomeDay + 900, {10});
    maker.Add(SomeDay + 1800, {10}, 1);
    maker.Add(SomeDay + 2700, {10});
    EXPECT_EQ(Of(Hour), "900.000");
}

TEST(VolumeUnits, FitTheUnitOfTheFlow) {
    EXPECT_EQ(VolumeUnitsFor(0).front(), VolumeUnit::CubicFeet);
    EXPECT_EQ(VolumeUnitsFor(1).front(), VolumeUnit::Gallons);
    EXPECT_EQ(VolumeUnitsFor(2).front(), VolumeUnit::MillionGallons);
    EXPECT_EQ(VolumeUnitsFor(3).front(), VolumeUnit::CubicMeters);
    EXPECT_EQ(VolumeUnitsFor(4).front(), VolumeUnit::Liters);
    EXPECT_EQ(VolumeUnitsFor(99), VolumeUnitsFor(0));
    EXPECT_EQ(VolumeUnitsFor(1).size(), 4U);
    EXPECT_EQ(VolumeUnitsFor(4).size(), 2U);
}

TEST(VolumeText, HasSixDigitsOrAllWholeUnits) {
    EXPECT_EQ(VolumeText(0), "0");
    EXPECT_EQ(VolumeText(12.5), "12.5000");
    EXPECT_EQ(VolumeText(12'345'678.9), "12345679");
    EXPECT_EQ(VolumeText(0.00001234567), "1.23457E-05");
}

}  // namespace
}  // namespace testing_support
