#include "transfers/ChannelOptions.h"

#include <gtest/gtest.h>

#include "support/Tables.h"

namespace oriolemark {
namespace {

TEST(ChannelOptions, FollowTheChannelsThatAreOn) {
  // The option that was chosen, the channels that are on, which options are on offer then, and
  // which is chosen. A view has the options CH1, CH2 and both, or the first two alone.
  for (const auto& row : Rows(R"(
- | ON | ON | 11 | 0 || 1 | ON | ON | 11 | 1 || 1 | ON | OFF | 10 | 0 || - | OFF | ON | 01 | 1
0 | OFF | ON | 01 | 1 || 1 | OFF | OFF | 00 | - || 0 | on | ON | 01 | 1 || - | ON | ON | 111 | 0
2 | ON | ON | 111 | 2 || 2 | ON | OFF | 100 | 0 || 2 | OFF | ON | 010 | 1 || 2 | OFF | OFF | 000 | -
)")) {
    SCOPED_TRACE(testing::PrintToString(row));
    OptionGroup options(static_cast<int>(row[3].size()));
    if (!row[0].empty()) options.Select(std::stoi(row[0]));
    CtrlSettings settings;
    settings.CH1Display = row[1];
    settings.CH2Display = row[2];
    FollowChannels(options, settings);
    std::string offered;
    for (int i = 0; i < options.Count(); ++i) offered += options.OptionEnabled(i) ? '1' : '0';
    EXPECT_EQ(offered, row[3]);
    EXPECT_EQ(options.Selected(), row[4].empty() ? OptionGroup::kNone : std::stoi(row[4]));
  }
}

}  // namespace
}  // namespace oriolemark
