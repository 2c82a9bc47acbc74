#pragma once

#include "controller/records/CtrlSettings.h"
#include "platform/OptionGroup.h"

namespace oriolemark {

// Adapts a view's channel options to the channels that are on. The options are "CH1", "CH2" and, if
// there is a third, "CH1&CH2". If only one channel is on, its option is selected.
void FollowChannels(OptionGroup& options, const CtrlSettings& settings);

}  // namespace oriolemark
