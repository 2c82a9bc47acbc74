#pragma once

#include <string>

namespace oriolemark {

// The instrument's settings as texts in its own form, with the values of a new control file.
struct CtrlSettings {
  std::string RunStop = "RUN";
  std::string CH1Display = "ON";
  std::string CH1VoltDiv = "1.00V";
  std::string CH1Offset = "0.00div";
  std::string CH1Coupling = "AC";
  std::string CH1BWLimit = "OFF";
  std::string CH1Probe = "1X";
  std::string CH1Invert = "OFF";
  std::string CH2Display = "OFF";
  std::string CH2VoltDiv = "1.00V";
  std::string CH2Offset = "0.00div";
  std::string CH2Coupling = "AC";
  std::string CH2BWLimit = "OFF";
  std::string CH2Probe = "1X";
  std::string CH2Invert = "OFF";
  std::string TimeDiv = "10.00us";
  std::string TimeDelay = "0.0000s";
  std::string Holdoff = "100ns";
  std::string MemorySize = "4000";
  std::string MemOffset;  // a new control file does not set it
  std::string TimeFormat = "Y-T";
  std::string TrigMethod = "EDGE";
  std::string TrigSlope = "RISING";
  std::string TrigSource = "CH1";
  std::string TrigMode = "AUTO";
  std::string TrigCoupling = "DC";
  std::string PulseMode = "+LESS THAN";
  std::string PulseWidth = "1us";
  std::string VideoPolarity = "POSITIVE";
  std::string VideoSync = "LINE";  // not one of the offered values, on purpose
  std::string VideoStandard;       // a new control file does not set it
  std::string LineNumber = "1";
  std::string TrigLevel = "0.00div";
  std::string SamplingMode = "EQU_TIME";
  std::string Acquisition = "NORMAL";
  std::string Averages = "16";
  std::string Intensity = "3%";
  std::string AntiAliasing = "OFF";
  std::string DisplayType = "VECT";
  std::string Persist = "OFF";
  std::string Grid = "FULL";
};

}  // namespace oriolemark
