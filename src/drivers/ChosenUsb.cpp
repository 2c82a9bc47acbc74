#include "drivers/ChosenUsb.h"

#include <utility>

#include "drivers/LibraryUsb.h"

namespace oriolemark {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLongestSilence{5000};
// The caller polls without a pause. A shorter pause here would only waste processor time.
constexpr milliseconds kEmptyPause{1};

}  // namespace

UsbTime MakeUsbTime(Waiting& waiting, std::function<unsigned()> eventsServed) {
  return {.now =
              [] {
                return std::chrono::duration_cast<milliseconds>(
                    std::chrono::steady_clock::now().time_since_epoch());
              },
          .sleep = [&waiting](milliseconds time) { waiting.Sleep(time); },
          .eventsServed = std::move(eventsServed)};
}

ChosenUsb::ChosenUsb(SettingsStore& store, UsbTime time) : store_(store), time_(std::move(time)) {}

int ChosenUsb::GetDeviceNum() {
  Asked asked = ReadSettings();
  if (!driver_ || !refusal_.empty() || asked != asked_) Choose(std::move(asked));
  return driver_->GetDeviceNum();
}

bool ChosenUsb::Write_USB(int device, std::uint8_t byte) {
  silence_.reset();
  gaveUp_ = false;
  return Driver().Write_USB(device, byte);
}

bool ChosenUsb::Read_USB(int device, int phase, int count, std::span<std::uint8_t> buffer) {
  const bool read = Driver().Read_USB(device, phase, count, buffer);
  const bool empty = read && phase == kUsbCountPhase && !buffer.empty() && buffer.front() == 0;
  if (!empty) silence_.reset();
  gaveUp_ = empty && SilentTooLong();
  if (empty && !gaveUp_) time_.sleep(kEmptyPause);
  return read && !gaveUp_;
}

bool ChosenUsb::Control_Command_Send(int device, int request, int value, int index) {
  return Driver().Control_Command_Send(device, request, value, index);
}

bool ChosenUsb::Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) {
  return Driver().Bulk_DataTransfer_Read(device, count, buffer);
}

std::string ChosenUsb::Meaning() {
  Driver();
  std::string text = builtIn_ == nullptr ? "USB library: " + asked_.library : "Built-in USB driver";
  if (!refusal_.empty()) text += ". " + Refusal();
  const std::string failure = Failure();
  if (!failure.empty()) text += ". Last failure: " + failure;
  return text;
}

std::string ChosenUsb::Problem() {
  const std::string failure = Failure();
  if (refusal_.empty() || failure.empty()) return failure;
  return failure + " " + Refusal() + ".";
}

std::string ChosenUsb::Refusal() const {
  return "The library named in the settings cannot be used: " + refusal_;
}

std::string ChosenUsb::Failure() const {
  if (gaveUp_) {
    return "The instrument has not answered for " + std::to_string(kLongestSilence.count() / 1000) +
           " s. Switch it off and on, then connect again.";
  }
  return builtIn_ != nullptr ? builtIn_->Problem() : "";
}

ChosenUsb::Asked ChosenUsb::ReadSettings() const {
  return {.library = store_.Read("Drivers", "UsbLibrary").value_or(""), .ids = ReadUsbIds(store_)};
}

void ChosenUsb::Choose(Asked asked) {
  asked_ = std::move(asked);
  refusal_.clear();
  silence_.reset();
  builtIn_ = nullptr;
  if (!asked_.library.empty()) {
    auto library = std::make_unique<LibraryUsb>(asked_.library);
    refusal_ = library->Reason();
    driver_ = std::move(library);
    if (refusal_.empty()) return;
  }
  auto builtIn = std::make_unique<LibusbDriver>(asked_.ids);
  builtIn_ = builtIn.get();
  driver_ = std::move(builtIn);
}

UsbDriver& ChosenUsb::Driver() {
  if (!driver_) Choose(ReadSettings());
  return *driver_;
}

bool ChosenUsb::SilentTooLong() {
  const Silence now{.since = time_.now(), .eventsServed = time_.eventsServed()};
  if (!silence_ || silence_->eventsServed != now.eventsServed) silence_ = now;
  if (now.since - silence_->since < kLongestSilence) return false;
  silence_.reset();
  return true;
}

}  // namespace oriolemark
