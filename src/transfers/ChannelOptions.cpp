#include "transfers/ChannelOptions.h"

namespace oriolemark {
namespace {

constexpr int kCH1 = 0;
constexpr int kCH2 = 1;
constexpr int kBoth = 2;

void Refuse(OptionGroup& options, int index) {
  options.SetOptionEnabled(index, false);
  options.Deselect(index);
}

}  // namespace

void FollowChannels(OptionGroup& options, const CtrlSettings& settings) {
  const bool ch1On = settings.CH1Display == "ON";
  const bool ch2On = settings.CH2Display == "ON";
  if (ch1On && ch2On) {
    for (int index = 0; index < options.Count(); ++index) options.SetOptionEnabled(index, true);
    if (options.Selected() == OptionGroup::kNone) options.Select(kCH1);
    return;
  }
  if (ch1On) {
    options.SetOptionEnabled(kCH1, true);
    options.Select(kCH1);
  } else {
    Refuse(options, kCH1);
    Refuse(options, kBoth);
  }
  if (ch2On) {
    options.SetOptionEnabled(kCH2, true);
    if (!options.IsSelected(kCH1)) options.Select(kCH2);
  } else {
    Refuse(options, kCH2);
    Refuse(options, kBoth);
  }
}

}  // namespace oriolemark
