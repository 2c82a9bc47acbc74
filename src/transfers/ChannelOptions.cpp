#include "transfers/ChannelOptions.h"

#include <algorithm>
#include <iterator>

namespace oriolemark {
namespace {

constexpr unsigned kCH1 = 1;
constexpr unsigned kCH2 = 2;
// The channels that each option reads.
constexpr unsigned kShown[] = {kCH1, kCH2, kCH1 | kCH2};

}  // namespace

void FollowChannels(OptionGroup& options, const CtrlSettings& settings) {
  const unsigned on =
      (settings.CH1Display == "ON" ? kCH1 : 0) | (settings.CH2Display == "ON" ? kCH2 : 0);
  const int count = std::min(options.Count(), static_cast<int>(std::size(kShown)));
  for (int index = 0; index < count; ++index) {
    const bool offered = (kShown[index] & ~on) == 0;
    options.SetOptionEnabled(index, offered);
    if (!offered) options.Deselect(index);
    // If only one channel is on, its option is selected.
    if (kShown[index] == on && on != (kCH1 | kCH2)) options.Select(index);
  }
  if (on == (kCH1 | kCH2) && options.Selected() == OptionGroup::kNone) options.Select(0);
}

}  // namespace oriolemark
