#include "drivers/LibraryUsb.h"

#include <algorithm>

namespace oriolemark {
namespace {

using CountCall = short();
using WriteCall = short(int, unsigned char);
using ReadCall = short(int, int, int, unsigned char*);
using ControlCall = short(int, int, int, int, int);
using BulkCall = short(int, int, unsigned char*);

constexpr int kNoData = 0;

}  // namespace

LibraryUsb::LibraryUsb(const std::string& name)
    : library_({name}, {{"GetDeviceNum"},
                        {"Write_USB"},
                        {"Read_USB"},
                        {"Control_Command_Send"},
                        {"Bulk_DataTransfer_Read"}}) {}

template <typename Call>
bool LibraryUsb::Fetch(int count, std::span<std::uint8_t> buffer, Call call) {
  constexpr std::size_t kRoomForPackets = 64 * 1024;
  if (count < 0 || static_cast<std::size_t>(count) > buffer.size()) return false;
  fetched_.resize(std::max(fetched_.size(), buffer.size() + kRoomForPackets));
  std::copy(buffer.begin(), buffer.end(), fetched_.begin());
  if (call(fetched_.data()) == 0) return false;
  std::copy_n(fetched_.begin(), count, buffer.begin());
  return true;
}

int LibraryUsb::GetDeviceNum() {
  return IsOpen() ? std::max<int>(0, library_.Find<CountCall>("GetDeviceNum")()) : 0;
}

bool LibraryUsb::Write_USB(int device, std::uint8_t byte) {
  return IsOpen() && library_.Find<WriteCall>("Write_USB")(device, byte) != 0;
}

bool LibraryUsb::Read_USB(int device, int phase, int count, std::span<std::uint8_t> buffer) {
  return IsOpen() && Fetch(count, buffer, [&](std::uint8_t* to) {
           return library_.Find<ReadCall>("Read_USB")(device, phase, count, to);
         });
}

bool LibraryUsb::Bulk_DataTransfer_Read(int device, int count, std::span<std::uint8_t> buffer) {
  return IsOpen() && Fetch(count, buffer, [&](std::uint8_t* to) {
           return library_.Find<BulkCall>("Bulk_DataTransfer_Read")(device, count, to);
         });
}

bool LibraryUsb::Control_Command_Send(int device, int request, int value, int index) {
  return IsOpen() && library_.Find<ControlCall>("Control_Command_Send")(device, request, value,
                                                                        index, kNoData) != 0;
}

}  // namespace oriolemark
