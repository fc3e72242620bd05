#include "quillmarsh/sample/pace.h"

#include <gtest/gtest.h>

#include "tests/sample/sample_stores.h"

namespace quillmarsh {
namespace {

constexpr std::int64_t kPatterns = 20;

Pace PaceOf(const Size& size) { return {PlanOf(size.years, size.transactions), kPatterns}; }

class PaceOfSize : public ::testing::TestWithParam<Size> {};

INSTANTIATE_TEST_SUITE_P(Sizes, PaceOfSize, ::testing::ValuesIn(kSizes));

TEST_P(PaceOfSize, SpreadsEveryRhythmOverTheMonths) {
  const Pace pace = PaceOf(GetParam());
  for (std::size_t i = 0; i < Rhythms().size(); ++i) {
    std::int64_t times = 0;
    for (const Month& month : pace.Months()) {
      times += pace.Occurrences(i, month.index);
    }
    EXPECT_EQ(times, pace.Occurrences(i)) << "rhythm " << i;
  }
}

TEST_P(PaceOfSize, LetsEveryRhythmHappen) {
  const Pace pace = PaceOf(GetParam());
  for (std::size_t i = 0; i < Rhythms().size(); ++i) {
    EXPECT_GE(pace.Occurrences(i), 1) << "rhythm " << i;
  }
}

TEST_P(PaceOfSize, ReachesAllRecordsInTheLastMonth) {
  const Pace pace = PaceOf(GetParam());
  EXPECT_EQ(pace.RecordsUpTo(pace.Months().back()), GetParam().transactions - kPatterns);
}

TEST(Pace, EndsItsLastMonthToday) {
  const Pace pace = PaceOf({3, 5000});
  EXPECT_EQ(pace.Months().size(), 36U);
  EXPECT_EQ(pace.FirstDay(), static_cast<std::int32_t>(vetlo::DateSerial(2023, 4, 1).days));
  EXPECT_EQ(pace.LastDay(), static_cast<std::int32_t>(vetlo::DateSerial(2026, 3, 14).days));
}

TEST(Pace, KeepsAYearlyRhythmInItsMonth) {
  const Pace pace = PaceOf({3, 5000});
  for (std::size_t i = 0; i < Rhythms().size(); ++i) {
    if (Rhythms()[i].yearly != 1) {
      continue;
    }
    for (const Month& month : pace.Months()) {
      EXPECT_EQ(pace.Occurrences(i, month.index), month.month == Rhythms()[i].anchor ? 1 : 0);
    }
  }
}

TEST(Pace, PaysSalariesTwiceAMonth) {
  const Pace pace = PaceOf({3, 5000});
  ASSERT_EQ(Rhythms()[0].action, Action::kSalary);
  for (const Month& month : pace.Months()) {
    EXPECT_EQ(pace.Occurrences(0, month.index), 2);
  }
}

TEST(Pace, AsksTodaysPricesInTheLastMonthAndLessBefore) {
  const Pace pace = PaceOf({20, 5000});
  EXPECT_EQ(pace.PriceLevel(239), 1000);
  EXPECT_LT(pace.PriceLevel(0), pace.PriceLevel(120));
}

TEST(Pace, SpendsLessAtATimeWhereItSpendsOften) {
  EXPECT_LT(PaceOf({3, 50000}).EverydayScale(), PaceOf({3, 5000}).EverydayScale());
}

}  // namespace
}  // namespace quillmarsh
