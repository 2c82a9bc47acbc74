#pragma once

// The keywords of the protocol, each with its leading colon. Upper and lower case matter. A command
// joins keywords: std::string(kDisplay) + kMenuStatus + kOff.
namespace oriolemark {

inline constexpr const char kQuery[] = ":?";        // ends a query
inline constexpr const char kIdentify[] = "*IDN?";  // the only query that does not end in kQuery

// Roots of settings.
inline constexpr const char kChannel1[] = ":CHANNEL1";
inline constexpr const char kChannel2[] = ":CHANNEL2";
inline constexpr const char kTimeBase[] = ":TimeBase";
inline constexpr const char kTrigger[] = ":TRIGGER";
inline constexpr const char kAcquire[] = ":ACQUIRE";
inline constexpr const char kDisplay[] = ":DISPLAY";
inline constexpr const char kData[] = ":DATA";
inline constexpr const char kMeasure[] = ":MEASURE";
inline constexpr const char kKey[] = ":KEY";

// Settings of a channel, beside kDisplay.
inline constexpr const char kRange[] = ":RANGE";
inline constexpr const char kOffset[] = ":OFFSET";
inline constexpr const char kCoupling[] = ":COUPLING";
inline constexpr const char kBWLimit[] = ":BWLimit";
inline constexpr const char kProbe[] = ":PROBE";
inline constexpr const char kInvert[] = ":INVERT";

// Settings of the time base, beside kRange.
inline constexpr const char kTriggerDelay[] = ":TRIGGER DELAY";
inline constexpr const char kHoldoff[] = ":Holdoff";
inline constexpr const char kFormat[] = ":FORMAT";
inline constexpr const char kScan[] = ":SCAN";

// Settings of the trigger, beside kCoupling.
inline constexpr const char kStatus[] = ":STATUS";
inline constexpr const char kMethod[] = ":METHOD";
inline constexpr const char kSource[] = ":Source";
inline constexpr const char kSlope[] = ":SLOPE";
inline constexpr const char kMode[] = ":MODE";
inline constexpr const char kPolarity[] = ":POLARITY";
inline constexpr const char kSync[] = ":SYNC";
inline constexpr const char kLineNum[] = ":LINE_NUM";
inline constexpr const char kVideoStandard[] = ":VIDEO STANDARD";
inline constexpr const char kLevel[] = ":LEVEL";
inline constexpr const char kPulseMode[] = ":PULSE MODE";
inline constexpr const char kPulseWidth[] = ":PULSE WIDTH";

// Settings of the acquisition.
inline constexpr const char kSampling[] = ":SAMPLING";
inline constexpr const char kAcquisition[] = ":ACQUISITION";
inline constexpr const char kAverages[] = ":AVERAGES";
inline constexpr const char kIntensity[] = ":INTENSITY";
inline constexpr const char kAntiAliasing[] = ":ANTI-ALIASING";

// Settings of the display.
inline constexpr const char kMenuStatus[] = ":MENU STATUS";
inline constexpr const char kType[] = ":TYPE";
inline constexpr const char kPersist[] = ":PERSIST";
inline constexpr const char kGrid[] = ":GRID";

// Values.
inline constexpr const char kOn[] = ":ON";
inline constexpr const char kOff[] = ":OFF";
inline constexpr const char kDC[] = ":DC";
inline constexpr const char kAC[] = ":AC";
inline constexpr const char kHF[] = ":HF";
inline constexpr const char kLF[] = ":LF";
inline constexpr const char k1X[] = ":1X";
inline constexpr const char k10X[] = ":10X";
inline constexpr const char k100X[] = ":100X";
inline constexpr const char k1000X[] = ":1000X";
inline constexpr const char kYT[] = ":Y-T";
inline constexpr const char kXY[] = ":X-Y";
inline constexpr const char kEdge[] = ":EDGE";
inline constexpr const char kPulse[] = ":PULSE";
inline constexpr const char kVideo[] = ":VIDEO";
inline constexpr const char kCH1[] = ":CH1";
inline constexpr const char kCH2[] = ":CH2";
inline constexpr const char kExt[] = ":EXT";
inline constexpr const char kExt5[] = ":EXT5";
inline constexpr const char kRising[] = ":RISING";
inline constexpr const char kFalling[] = ":FALLING";
inline constexpr const char kAuto[] = ":AUTO";  // trigger mode, command and key
inline constexpr const char kNormal[] = ":NORMAL";
inline constexpr const char kSingle[] = ":SINGLE";
inline constexpr const char kNegative[] = ":NEGATIVE";
inline constexpr const char kPositive[] = ":POSITIVE";
inline constexpr const char kAllLine[] = ":ALL LINE";
inline constexpr const char kLineNumber[] = ":LINE Number";
inline constexpr const char kOddField[] = ":ODD FIELD";
inline constexpr const char kEvenField[] = ":EVEN FIELD";
inline constexpr const char kNTSC[] = ":NTSC";
inline constexpr const char kPalSecam[] = ":PAL/SECAM";
inline constexpr const char kPlusLessThan[] = ":+LESS THAN";
inline constexpr const char kPlusMoreThan[] = ":+MORE THAN";
inline constexpr const char kPlusEqual[] = ":+EQUAL";
inline constexpr const char kMinusLessThan[] = ":-LESS THAN";
inline constexpr const char kMinusMoreThan[] = ":-MORE THAN";
inline constexpr const char kMinusEqual[] = ":-EQUAL";
inline constexpr const char kEquTime[] = ":EQU_TIME";
inline constexpr const char kRealTime[] = ":REAL_TIME";
inline constexpr const char kEnvelope[] = ":ENVELOPE";
inline constexpr const char kAverage[] = ":AVERAGE";
inline constexpr const char kAnalog[] = ":ANALOG";
inline constexpr const char kVect[] = ":VECT";
inline constexpr const char kDot[] = ":DOT";
inline constexpr const char kFull[] = ":FULL";
inline constexpr const char kHalf[] = ":HALF";
inline constexpr const char kNone[] = ":NONE";

// Commands that carry no value.
inline constexpr const char kRun[] = ":RUN";  // and the key
inline constexpr const char kStop[] = ":STOP";
inline constexpr const char kTrig50[] = ":TRIG%50";  // and the key
inline constexpr const char kForceTrig[] = ":ForceTrig";
inline constexpr const char kHardCopy[] = ":HARD_COPY";

// Memory.
inline constexpr const char kSysMemSize[] = ":SysMemSize";
inline constexpr const char kWinMemSize[] = ":WinMemSize";
inline constexpr const char kRollingStartPos[] = ":RollingStartPos";
inline constexpr const char kRollingEraseWidth[] = ":RollingEraseWidth";
inline constexpr const char kEnvelopeMax[] = ":EnvelopeMax";
inline constexpr const char kEnvelopeMin[] = ":EnvelopeMin";

// Measures.
inline constexpr const char kCurrentSource[] = ":CURRENT_SRC";
inline constexpr const char kFreq[] = ":Freq";
inline constexpr const char kVpp[] = ":Vpp";
inline constexpr const char kVmax[] = ":Vmax";
inline constexpr const char kVmin[] = ":Vmin";
inline constexpr const char kVtop[] = ":Vtop";
inline constexpr const char kVavg[] = ":Vavg";
inline constexpr const char kVbase[] = ":Vbase";
inline constexpr const char kVrms[] = ":Vrms";
inline constexpr const char kVamp[] = ":Vamp";
inline constexpr const char kPlusDuty[] = ":+Duty";
inline constexpr const char kMinusDuty[] = ":-Duty";
inline constexpr const char kPeriod[] = ":Period";
inline constexpr const char kRiseTime[] = ":RiseTime";
inline constexpr const char kFallTime[] = ":FallTime";
inline constexpr const char kPlusWidth[] = ":+Width";
inline constexpr const char kMinusWidth[] = ":-Width";
inline constexpr const char kVovr[] = ":Vovr";
inline constexpr const char kVpre[] = ":Vpre";

// Keys, beside kAcquire, kAuto, kCH1, kCH2, kDisplay, kMeasure, kRun and kTrig50.
inline constexpr const char kLock[] = ":LOCK";
inline constexpr const char kEnable[] = ":ENABLE";
inline constexpr const char kCHOff[] = ":CH_OFF";
inline constexpr const char kCursor[] = ":CURSOR";
inline constexpr const char kF1[] = ":F1";
inline constexpr const char kF2[] = ":F2";
inline constexpr const char kF3[] = ":F3";
inline constexpr const char kF4[] = ":F4";
inline constexpr const char kF5[] = ":F5";
inline constexpr const char kHScaleDec[] = ":H_SCALE_DEC";
inline constexpr const char kHScaleInc[] = ":H_SCALE_INC";
inline constexpr const char kHPosDec[] = ":H_POS_DEC";
inline constexpr const char kHPosInc[] = ":H_POS_INC";
inline constexpr const char kMath[] = ":Math";
inline constexpr const char kPromptV[] = ":PROMPT_V";
inline constexpr const char kPromptH[] = ":PROMPT_H";
inline constexpr const char kRef[] = ":REF";
inline constexpr const char kStorage[] = ":STORAGE";
inline constexpr const char kMnuTime[] = ":MNU_TIME";
inline constexpr const char kForce[] = ":FORCE";
inline constexpr const char kTrigLvlDec[] = ":TRIG_LVL_DEC";
inline constexpr const char kTrigLvlInc[] = ":TRIG_LVL_INC";
inline constexpr const char kMnuTrig[] = ":MNU_TRIG";
inline constexpr const char kUtility[] = ":UTILITY";
inline constexpr const char kVScaleDec[] = ":V_SCALE_DEC";
inline constexpr const char kVScaleInc[] = ":V_SCALE_INC";
inline constexpr const char kVPosDec[] = ":V_POS_DEC";
inline constexpr const char kVPosInc[] = ":V_POS_INC";

}  // namespace oriolemark
