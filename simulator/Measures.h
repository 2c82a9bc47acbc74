#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "simulator/Acquisition.h"
#include "simulator/Settings.h"

namespace tx5000 {

// The reply to a measure query such as ":MEASURE:Vpp", of the trace that a block of this record
// shows, as far as it is on the screen: "Vpp=3.200V". A limit that the true value lies beyond comes
// with ">" or "<" in place of the equal sign, for instance if the trace leaves the screen. "Vpp
// ****" means that there is nothing to measure. Ratios are in percent and have no unit. Returns
// nothing if the command is none of the 18.
std::optional<std::string> AnswerMeasure(std::string_view command, const Settings& settings,
                                         const Inputs& inputs, const Record& record,
                                         Channel channel);

}  // namespace tx5000
