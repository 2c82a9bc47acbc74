#pragma once

#include "controller/records/CtrlSettings.h"
#include "platform/OptionGroup.h"

namespace oriolemark {

// Keeps a view's three channel options ("CH1", "CH2", "CH1&CH2") in line with the channels that are
// on: with a single channel on, the view is forced onto it.
void FollowChannels(OptionGroup& options, const CtrlSettings& settings);

}  // namespace oriolemark
