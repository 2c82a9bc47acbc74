// A GPIB library under script. BY_FUNCTION, BY_VARIABLE or BY_REGISTRATION is how it gives its
// status words.
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
static int *boundSta = &ibsta, *boundErr = &iberr, *boundCount = &ibcnt;

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
#ifdef BY_REGISTRATION
int RegisterGpibGlobalsForThread(int* sta, int* err, int* count, long*) {
  boundSta = sta, boundErr = err, boundCount = count;
  return 0;
}
int UnregisterGpibGlobalsForThread() {
  boundSta = &ibsta, boundErr = &iberr, boundCount = &ibcnt;
  return 0;
}
#endif

static int End(const char* call, long count = 0, int flags = 0) {
  script.calls += std::string(call) + ' ';
  const bool failed = script.failing == call;
  *boundSta = failed ? 0x8100 : script.ibsta | flags;
  *boundErr = failed ? 6 : 0;
  *boundCount = static_cast<int>(count);
  return *boundSta;
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
