#pragma once

#include "controller/records/CtrlSettings.h"
#include "platform/OptionGroup.h"

namespace oriolemark {

// Keeps a view's channel options in line with the channels that are on. The options are "CH1",
// "CH2" and, where there are three, "CH1&CH2". With a single channel on, the view is forced onto
// it.
void FollowChannels(OptionGroup& options, const CtrlSettings& settings);

}  // namespace oriolemark
