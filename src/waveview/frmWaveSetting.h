#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <random>

#include "datasheet/records/DataSheet.h"
#include "platform/Button.h"
#include "platform/ComboBox.h"
#include "platform/OptionGroup.h"
#include "platform/TreeView.h"

namespace oriolemark {

// The modal dialog "FFT". OK gives a waveform that was read a spectrum trace, which its view shows
// from then on. There is no transform yet: the rows of the trace are random, and no choice but the
// target has an influence on them.
class frmWaveSetting : public Form {
 public:
  static constexpr int kSpectrumRows = 1024;

  // Returns the view of a wave slot with its tag set, and creates it if it is missing.
  using ViewOf = std::function<ItemView*(int slot)>;

  frmWaveSetting(DataSheet& sheet, ViewOf viewOf);

  oriolemark::TreeView TreeView;               // one node, "FFT"
  ComboBox SourceCombo{ComboStyle::ListOnly};  // disabled while the target cannot have a spectrum
  ComboBox TargetCombo;                        // the names of the waveforms, or "None"
  ComboBox ScaleCombo{ComboStyle::ListOnly};   // nothing reads it
  ComboBox WindowCombo{ComboStyle::ListOnly};  // the record keeps its text
  OptionGroup OptScreen{2};                    // "Full Screen", "Split"
  Button cmdOK;
  Button cmdCancel;
  // For the picture of a spectrum and its tabs. Both are empty, so no window shows them.
  Control TabWave;
  Control picFFT;

  std::int16_t TargetSlot = 0;  // of the waveform that was matched last, 0 before
  std::array<std::int32_t, kSpectrumRows> SpectrumBuffer{};

  void Form_Load() override;

 private:
  void TargetCombo_Click();
  void TakeTarget(int slot);
  void cmdOK_Click();
  void MakeRows();
  void StoreSpectrum(WaveRecord& record) const;
  void DrawTarget();

  DataSheet& sheet_;
  ViewOf viewOf_;
  std::mt19937 random_;  // not seeded: each run of the program has the same sequence of traces
};

}  // namespace oriolemark
