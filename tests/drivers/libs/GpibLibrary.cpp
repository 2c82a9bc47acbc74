// A GPIB library under script. BY_FUNCTION or BY_VARIABLE is how it gives its status words.
#include <algorithm>

#include "Scripts.h"

static GpibScript script;

extern "C" {
GpibScript* Script() {
  return &script;
}

#ifdef BY_VARIABLE
int ibsta, iberr, ibcnt;
#else
static int ibsta, iberr, ibcnt;
#endif

#ifdef BY_FUNCTION
int ThreadIbsta() {
  return ibsta;
}
int ThreadIberr() {
  return iberr;
}
int ThreadIbcnt() {
  return ibcnt;
}
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
  const auto taken = std::min(static_cast<std::size_t>(count), script.reply.size());
  std::copy_n(script.reply.begin(), taken, static_cast<char*>(buffer));
  script.reply.erase(0, taken);
  return End("ibrd", static_cast<long>(taken), script.reply.empty() ? 0x2000 : 0);
}
int ibonl(int, int) {
  return End("ibonl");
}
}  // extern "C"
