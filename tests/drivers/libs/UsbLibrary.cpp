// A USB library under script.

#include <algorithm>

#include "Scripts.h"

static UsbScript script;

extern "C" {

UsbScript* Script() {
  return &script;
}
short GetDeviceNum() {
  return 3;
}
short Write_USB(int, unsigned char byte) {
  script.written += static_cast<char>(byte);
  return script.failing != "Write_USB";
}
short Read_USB(int, int phase, int count, unsigned char* buffer) {
  if (phase == 0) {
    buffer[0] = static_cast<unsigned char>(std::min<std::size_t>(script.reply.size(), 255));
    return script.failing != "count";
  }
  const auto taken = std::min(static_cast<std::size_t>(count), script.reply.size());
  std::copy_n(script.reply.begin(), taken, buffer);
  script.reply.erase(0, taken);
  return script.failing != "fetch";
}
short Control_Command_Send(int, int request, int value, int index, int length) {
  for (const int number : {request, value, index, length}) {
    script.controls += std::to_string(number) + ' ';
  }
  return 1;
}
short Bulk_DataTransfer_Read(int, int count, unsigned char* address) {
  std::fill_n(address, count, static_cast<unsigned char>(7));
  return script.failing != "bulk";
}

}  // extern "C"
