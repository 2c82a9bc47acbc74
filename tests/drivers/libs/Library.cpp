// A library for GPIB and USB under script. BY_FUNCTION is how it gives its status words of GPIB, or
// else as variables.
#include <algorithm>

#include "Script.h"

static LibraryScript script;

static long Take(void* buffer, long count) {
  const auto taken = std::min(static_cast<std::size_t>(count), script.reply.size());
  std::copy_n(script.reply.begin(), taken, static_cast<char*>(buffer));
  script.reply.erase(0, taken);
  return static_cast<long>(taken);
}

extern "C" {
LibraryScript* Script() {
  return &script;
}

#ifdef BY_FUNCTION
static int ibsta, iberr, ibcnt;
int ThreadIbsta() {
  return ibsta;
}
int ThreadIberr() {
  return iberr;
}
int ThreadIbcnt() {
  return ibcnt;
}
#else
int ibsta, iberr, ibcnt;
#endif

static int End(const char* call, long count = 0, int flags = 0) {
  script.calls += std::string(call) + ' ';
  const bool failed = script.failing == call;
  iberr = failed ? 6 : 0;
  ibcnt = static_cast<int>(count);
  return ibsta = failed ? 0x8100 : script.ibsta | flags;
}
int ibdev(int, int, int, int, int, int) {
  return End("ibdev");
}
int ibclr(int) {
  return End("ibclr");
}
int ibwrt(int, const void*, long count) {
  return End("ibwrt", count);
}
int ibrd(int, void* buffer, long count) {
  const long taken = Take(buffer, count);
  return End("ibrd", taken, script.reply.empty() ? 0x2000 : 0);
}
int ibonl(int, int) {
  return End("ibonl");
}

short GetDeviceNum() {
  return 3;
}
short Write_USB(int, unsigned char byte) {
  script.calls += static_cast<char>(byte);
  return script.failing != "Write_USB";
}
short Read_USB(int, int phase, int count, unsigned char* buffer) {
  if (phase == 0) {
    buffer[0] = static_cast<unsigned char>(std::min<std::size_t>(script.reply.size(), 255));
    return script.failing != "count";
  }
  Take(buffer, count);
  return script.failing != "fetch";
}
short Control_Command_Send(int device, int request, int value, int index, int length) {
  for (const int number : {device, request, value, index, length}) {
    script.calls += std::to_string(number) + ' ';
  }
  return script.failing != std::to_string(request);
}
short Bulk_DataTransfer_Read(int device, int count, unsigned char* address) {
  script.calls += std::to_string(device) + ' ';
  std::fill_n(address, count, static_cast<unsigned char>(7));
  return script.failing != "bulk";
}

void TransClr(const unsigned char* raw, int count, unsigned int* colours) {
  for (int i = 0; i + 1 < count; ++i) colours[i] = 0x10203U + raw[i];
}
#ifdef BY_FUNCTION
void TransMono(const unsigned char*, int count, unsigned int* colours) {
  std::fill_n(colours, count, 0xFF0000U);
}
#endif
}  // extern "C"
