#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/Calendar.h"
#include "platform/Canvas.h"
#include "platform/EventSource.h"
#include "platform/Files.h"
#include "platform/GpibDriver.h"
#include "platform/ScreenColors.h"
#include "platform/SerialPort.h"
#include "platform/SettingsStore.h"
#include "platform/UsbDriver.h"
#include "platform/Waiting.h"

namespace oriolemark {

// The devices of one session.
struct Devices {
  std::unique_ptr<SerialPort> serial;
  std::unique_ptr<GpibDriver> gpib;
  std::unique_ptr<UsbDriver> usb;
  std::unique_ptr<ScreenColors> colors;
};

// The parts of the system that a call uses.
struct Desk {
  EventSource& events;
  SettingsStore& settings;  // those of the program with windows; never written
  // Makes the drivers, which open nothing yet.
  std::function<Devices(Waiting& waiting, SettingsStore& settings)> makeDevices;
  ShortDate today;
  std::function<std::string()> now;  // ISO 8601
  std::function<std::unique_ptr<Canvas>()> makeCanvas;
  // The bytes of a PNG file. The pixels are rows from the top, each 0x..RRGGBB.
  std::function<std::optional<std::string>(std::span<const std::uint32_t> pixels, int width)>
      encodePng;
  SyncFile syncFile;
  std::function<bool(const std::string& path)> fileExists;
  // Writes and flushes. Returns false if the bytes cannot be written.
  std::function<bool(std::string_view bytes)> print;
  std::function<void(std::string_view bytes)> printError;
  bool showsProgress = false;  // errors go to a terminal
  std::string version;         // major.minor.revision
};

}  // namespace oriolemark
