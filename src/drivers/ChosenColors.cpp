#include "drivers/ChosenColors.h"

#include <algorithm>

namespace oriolemark {
namespace {

using ConvertCall = void(const unsigned char*, int, unsigned int*);

constexpr const char* kColourOperation = "TransClr";
constexpr const char* kMonoOperation = "TransMono";

// The library's colours are 0x00BBGGRR.
std::uint32_t SwapRedAndBlue(std::uint32_t colour) {
  return (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
}

}  // namespace

LibraryColors::LibraryColors(const std::string& name)
    : library_({name}, {{kColourOperation}, {kMonoOperation}}) {}

void LibraryColors::TransClr(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) {
  Convert(kColourOperation, raw, colours);
}

void LibraryColors::TransMono(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) {
  Convert(kMonoOperation, raw, colours);
}

void LibraryColors::Convert(const char* operation, std::span<const std::uint8_t> raw,
                            std::span<std::uint32_t> colours) {
  const std::size_t count = std::min(raw.size(), colours.size());
  if (!IsOpen() || count == 0) return;
  // Colours that the library does not fill are black.
  std::fill_n(colours.begin(), count, 0);
  library_.Find<ConvertCall>(operation)(raw.data(), static_cast<int>(count), colours.data());
  const auto converted = colours.first(count);
  std::transform(converted.begin(), converted.end(), converted.begin(), SwapRedAndBlue);
}

void ChosenColors::TransClr(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) {
  Chosen().TransClr(raw, colours);
}

void ChosenColors::TransMono(std::span<const std::uint8_t> raw, std::span<std::uint32_t> colours) {
  Chosen().TransMono(raw, colours);
}

std::string ChosenColors::Meaning() {
  if (&Chosen() != &palettes_) return "Colour library: " + library_->Name();
  if (!library_) return {};
  return "Built-in colours. The library named in the settings cannot be used: " +
         library_->Reason();
}

ScreenColors& ChosenColors::Chosen() {
  if (!chosen_) {
    chosen_ = true;
    const std::string name = store_.Read("Drivers", "ColorLibrary").value_or("");
    if (!name.empty()) library_.emplace(name);
  }
  if (library_ && library_->IsOpen()) return *library_;
  return palettes_;
}

}  // namespace oriolemark
