#include "waveview/frmWaveSetting.h"

#include <algorithm>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/Rounding.h"
#include "waveview/frmWave.h"

namespace oriolemark {
namespace {

constexpr const char* kNoTarget = "None";
constexpr int kTreePicture = 1;
constexpr double kLowestRow = 255;

using Names = std::span<const char* const>;

constexpr const char* kChannelNames[] = {"CH1", "CH2"};
constexpr Names kBoth(kChannelNames);

// The sources of a record by its `Channels`. Without any, the box is disabled and keeps its list.
struct SourceRow {
  std::int32_t channels;
  Names names;
};

constexpr SourceRow kSources[] = {{1, kBoth.first(1)}, {2, kBoth.last(1)}, {3, kBoth}, {4, {}}};

void Fill(ComboBox& box, Names names) {
  box.SetItems({names.begin(), names.end()});
  box.SetListIndex(0);
}

}  // namespace

frmWaveSetting::frmWaveSetting(DataSheet& sheet, ViewOf viewOf)
    : TargetCombo(ComboStyle::ListOnly, [this] { TargetCombo_Click(); }),
      cmdOK([this] { cmdOK_Click(); }),
      cmdCancel([this] { Unload(); }),
      sheet_(sheet),
      viewOf_(std::move(viewOf)) {
  SetCaption("FFT");
}

void frmWaveSetting::Form_Load() {
  static constexpr const char* kScales[] = {"Vrms", "dBVrms"};
  static constexpr const char* kWindows[] = {"Rectangle", "Hanning", "Hamming", "Blackman"};
  TargetSlot = 0;
  Fill(SourceCombo, kBoth);
  SourceCombo.SetEnabled(false);
  std::vector<std::string> targets;
  for (int slot = 0; slot < sheet_.WaveCount; ++slot) {
    targets.push_back(sheet_.Waves[static_cast<std::size_t>(slot)].Name);
  }
  if (targets.empty()) targets.emplace_back(kNoTarget);
  TargetCombo.SetItems(std::move(targets));
  TargetCombo.SetListIndex(0);
  Fill(ScaleCombo, kScales);
  Fill(WindowCombo, kWindows);
  OptScreen.Select(0);
  TreeView.Clear();
  TreeView.Add(kNoNode, "FFT", kTreePicture);
}

// Of several waveforms with one name, the last one counts. The first slot that is not in use is
// looked at too: it may hold a waveform of before.
void frmWaveSetting::TargetCombo_Click() {
  const std::string& name = TargetCombo.Text();
  const int last = std::min(sheet_.WaveCount, kSheetSlots - 1);
  for (int slot = 0; slot <= last && name != kNoTarget; ++slot) {
    if (sheet_.Waves[static_cast<std::size_t>(slot)].Name == name) TakeTarget(slot);
  }
  cmdOK.SetEnabled(SourceCombo.Enabled());
}

void frmWaveSetting::TakeTarget(int slot) {
  const WaveRecord& record = sheet_.Waves[static_cast<std::size_t>(slot)];
  if (!record.HasData) {
    SourceCombo.SetEnabled(false);
    return;
  }
  TargetSlot = static_cast<std::int16_t>(slot);
  for (const auto& [channels, names] : kSources) {
    if (channels != record.Channels) continue;
    SourceCombo.SetEnabled(!names.empty());
    if (!names.empty()) Fill(SourceCombo, names);
  }
}

void frmWaveSetting::cmdOK_Click() {
  MakeRows();
  StoreSpectrum(sheet_.Waves[static_cast<std::size_t>(TargetSlot)]);
  DrawTarget();
  Unload();
}

void frmWaveSetting::MakeRows() {
  constexpr double kNumbers = 4294967296.0;  // that the generator has; makes a share below 1
  for (std::int32_t& row : SpectrumBuffer) {
    row = RoundToInt(static_cast<double>(random_()) / kNumbers * kLowestRow);
  }
}

// The sheet is not marked as modified, because its file does not keep the spectrum.
void frmWaveSetting::StoreSpectrum(WaveRecord& record) const {
  record.FFTOn = true;
  for (int i = 0; i < kSpectrumRows; ++i) {
    record.FFTData.Store(i, SpectrumBuffer[static_cast<std::size_t>(i)]);
  }
  record.FFTWindow = WindowCombo.Text();
  record.FFTCount = kSpectrumRows;
  record.FFTFull = OptScreen.IsSelected(0);
}

void frmWaveSetting::DrawTarget() {
  auto* view = dynamic_cast<frmWave*>(viewOf_(TargetSlot));
  if (view == nullptr) return;
  view->SetCaption(sheet_.Waves[static_cast<std::size_t>(TargetSlot)].Name);
  view->DrawOSC();
}

}  // namespace oriolemark
