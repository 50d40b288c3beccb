#include "archive/date_format.h"

#include <gtest/gtest.h>

namespace testing_support {
namespace {

/// A system that writes the same date whatever is asked.
class Writes final : public SystemClock {
 public:
    explicit Writes(std::string text) : text_(std::move(text)) {}
    LocalTime Now() const override { return {}; }
    std::string DateText(const LocalTime& time) const override {
        EXPECT_EQ(time.Year * 10'000 + time.Month * 100 + time.Day, 2033'04'05);
        return text_;
    }
    std::string TimeText(const LocalTime&) const override { return {}; }

 private:
    std::string text_;
};

struct DateCase {
    const char* Text;
    const char* Format;
};

class DateFormat : public testing::TestWithParam<DateCase> {};

TEST_P(DateFormat, IsFoundFromADate) {
    EXPECT_EQ(DateFormatOf(Writes(GetParam().Text)), GetParam().Format);
}

INSTANTIATE_TEST_SUITE_P(
    Systems, DateFormat,
    testing::Values(DateCase{"4/5/33", "M/d/yy"}, DateCase{"04/05/2033", "MM/dd/yyyy"},
                    DateCase{"05.04.33", "dd.MM.yy"}, DateCase{"5. 4. 2033", "d. M. yyyy"},
                    DateCase{"2033-04-05", "yyyy-MM-dd"}, DateCase{"33/4/5", "yy/M/d"},
                    DateCase{"5 Apr 2033", "yyyy-MM-dd"}, DateCase{"", "yyyy-MM-dd"},
                    DateCase{"4/33", "yyyy-MM-dd"}, DateCase{"4/5/34", "yyyy-MM-dd"},
                    DateCase{"\xd9\xa5/\xd9\xa4/\xd9\xa3\xd9\xa3", "yyyy-MM-dd"}));

}  // namespace
}  // namespace testing_support
