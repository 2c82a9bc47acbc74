#include "panel/PanelKeys.h"

#include "link/StringRES.h"

namespace oriolemark {

const std::array<PanelKey, 34> kPanelKeys{{
    {"VK_Acquire", kAcquire, "Acquire menu"},
    {"VK_Auto", kAuto, "Auto"},
    {"VK_CH_Off", kCHOff, "Channel off"},
    {"VK_CH1", kCH1, "Channel 1"},
    {"VK_CH2", kCH2, "Channel 2"},
    {"VK_Cursor", kCursor, "Cursor menu"},
    {"VK_Display", kDisplay, "Display menu"},
    {"VK_F1", kF1, "Soft key 1"},
    {"VK_F2", kF2, "Soft key 2"},
    {"VK_F3", kF3, "Soft key 3"},
    {"VK_F4", kF4, "Soft key 4"},
    {"VK_F5", kF5, "Soft key 5"},
    {"VK_H_Dec", kHScaleDec, "Horizontal scale down"},
    {"VK_H_Inc", kHScaleInc, "Horizontal scale up"},
    {"VK_H_Pos_Dec", kHPosDec, "Horizontal position down", KeyRepeat::WhileHeld},
    {"VK_H_Pos_Inc", kHPosInc, "Horizontal position up", KeyRepeat::WhileHeld},
    {"VK_Math", kMath, "Math menu"},
    {"VK_Measure", kMeasure, "Measure menu"},
    {"VK_P_V", kPromptV, "Vertical position to centre"},
    {"VK_P_H", kPromptH, "Horizontal position to centre"},
    {"VK_Ref", kRef, "Reference menu"},
    // The only control with two names.
    {"VK_Run_Stop", kRun, "Run and stop", KeyRepeat::Once, "VK_Run"},
    {"VK_Storage", kStorage, "Storage menu"},
    {"VK_TimeMenu", kMnuTime, "Time menu"},
    {"VK_Trig_50", kTrig50, "Trigger level to 50 per cent"},
    {"VK_Trig_Force", kForce, "Force trigger"},
    {"VK_Trig_Lvl_Dec", kTrigLvlDec, "Trigger level down", KeyRepeat::WhileHeld},
    {"VK_Trig_Lvl_Inc", kTrigLvlInc, "Trigger level up", KeyRepeat::WhileHeld},
    {"VK_Trig_Menu", kMnuTrig, "Trigger menu"},
    {"VK_Utility", kUtility, "Utility menu"},
    {"VK_V_Dec", kVScaleDec, "Vertical scale down"},
    {"VK_V_Inc", kVScaleInc, "Vertical scale up"},
    {"VK_V_Pos_Dec", kVPosDec, "Vertical position down", KeyRepeat::WhileHeld},
    {"VK_V_Pos_Inc", kVPosInc, "Vertical position up", KeyRepeat::WhileHeld},
}};

std::string CommandOf(const PanelKey& key) {
  return std::string(kKey) + key.keyword;
}

}  // namespace oriolemark
