#pragma once

#include <optional>
#include <string>

#include "drivers/ScreenPalettes.h"
#include "drivers/SharedLibrary.h"
#include "platform/SettingsStore.h"

namespace oriolemark {

// The colour operations of a library that is opened at run time. If the library is not open, the
// colours stay as they are.
class LibraryColors : public ScreenColors {
 public:
  explicit LibraryColors(const std::string& name);

  bool IsOpen() const { return library_.IsOpen(); }
  const std::string& Name() const { return library_.Name(); }
  // The reason why it is not open, as text.
  const std::string& Reason() const { return library_.Reason(); }

  void TransClr(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) override;
  void TransMono(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) override;

 private:
  void Convert(const char* operation, std::span<const std::uint8_t> raw,
               std::span<std::uint32_t> colours);

  SharedLibrary library_;
};

// Colours from the library that the settings store names (section "Drivers", key "ColorLibrary").
// If the library cannot be used, the built-in palettes. Chosen at the first use.
class ChosenColors : public ScreenColors {
 public:
  // The store outlives this object.
  explicit ChosenColors(SettingsStore& store) : store_(store) {}

  void TransClr(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) override;
  void TransMono(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) override;

  std::string Meaning() override;

 private:
  ScreenColors& Chosen();

  SettingsStore& store_;
  std::optional<LibraryColors> library_;  // nothing if the settings name no library
  ScreenPalettes palettes_;
  bool chosen_ = false;
};

}  // namespace oriolemark
