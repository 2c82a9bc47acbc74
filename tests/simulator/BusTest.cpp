#include <dlfcn.h>

#include "Bench.h"
#include "Program.h"
#include "simulator/Screen.h"

namespace {

using namespace std::string_literals;

// The simulator at its socket, and the two libraries as a program loads them.
class Bus : public Program {
 protected:
  Bus() : Program("--socket") {}
  template <typename Result = int, typename... Arguments>
  static Result Call(const char* name, Arguments... arguments) {
    const bool usb = std::string_view(name).find('_') != std::string_view::npos;
    const auto path = std::filesystem::path(TX5000SIM_PATH).parent_path() /
                      (usb ? "../lib/libtx5000usb.so" : "../lib/libtx5000gpib.so");
    void* function = dlsym(dlopen(path.c_str(), RTLD_NOW), name);
    return reinterpret_cast<Result (*)(Arguments...)>(function)(arguments...);
  }
  static int Open(int address) { return Call("ibdev", 0, address, 0, /* 100 ms */ 9, 1, 0); }
  static int Put(int device, const std::string& text) {
    return Call("ibwrt", device, static_cast<const void*>(text.data()), long(text.size()));
  }
  // What one read gives, with what the status words tell behind it.
  static std::string Get(int device, std::size_t count) {
    std::string bytes(count, '?');
    const int sta = Call("ibrd", device, static_cast<void*>(bytes.data()), long(count));
    if (sta == 0x8000) return "dead";
    bytes.resize(std::size_t(Call<long>("ThreadIbcntl")));
    return bytes + (sta == 0xC100 ? "|TIMO" : sta == 0x2100 ? "|END" : "");
  }
  static bool PutUsb(std::string text) {
    return std::ranges::all_of(text += '\r', [](char c) {
      return Call<short>("Write_USB", 0, static_cast<unsigned char>(c)) != 0;
    });
  }
  static std::string GetUsb() {
    unsigned char buffer[256] = {};
    if (Call<short>("Read_USB", 0, 0, 1, +buffer) == 0) return "gone";
    const int count = buffer[0];
    EXPECT_TRUE(count == 255 || Call<short>("Read_USB", 0, 1, count + 1, +buffer) == 0);
    return Call<short>("Read_USB", 0, 1, count, +buffer) ? std::string(buffer, buffer + count) : "";
  }
};

TEST_F(Bus, GpibRepliesComeInPiecesAndADeadHandleStaysDead) {
  const int device = Open(7);
  EXPECT_TRUE(Put(device, "*IDN?") == 0x100 && Get(device, 5) == "TAVIK") << "no END yet";
  EXPECT_EQ(Get(device, 1024), " TECHNOLOGIES,TX-5102CA,S1009837,03.01.15\n|END");
  Put(device, ":DATA:CHANNEL1");
  for (int piece = 0; piece < 15; ++piece) EXPECT_EQ(Get(device, 200).size(), 200u);
  EXPECT_EQ(Get(device, 200), "\n|END");
  EXPECT_TRUE(Put(device, "*IDN?") && Call("ibclr", device) && Put(device, "*IDN?\r"));
  EXPECT_TRUE(Get(device, 9) == "|TIMO" && Call("ThreadIberr") == 6) << "cleared, not understood";
  EXPECT_TRUE(Put(Open(9), "*IDN?") == 0x8100 && Call("ThreadIberr") == 2) << "nobody is there";
  EXPECT_TRUE(Open(31) == -1 && Call("ThreadIberr") == 4);
  Call("ibonl", device, 0);
  EXPECT_TRUE(Put(device, "*IDN?") == 0x8000 && Get(device, 9) == "dead" && Open(7) != device);
}

TEST_F(Bus, FaultsSpoilWhatIsFetched) {
  const int device = Open(7);
  // Two reads over GPIB, then one over USB.
  for (const auto& text : {"no-lf;600|END;|TIMO;600"s, "nul;600\0\n|END;|TIMO;600\0\n"s,
                           "die;60|TIMO;|TIMO;"s, "double;600\n|END;600\n|END;600\n600\n"s,
                           "delay 150;|TIMO;600\n|END;"s, "vanish;|TIMO;|TIMO;gone"s}) {
    const auto row = Split(text);
    EXPECT_TRUE(Type("clear") == "ok" && Type("fault " + row[0]) == "ok");
    Put(device, ":DATA:WinMemSize:?");
    for (const auto& read : {row[1], row[2]}) EXPECT_EQ(Get(device, 99), read) << row[0];
    PutUsb(":DATA:WinMemSize:?");
    EXPECT_EQ(GetUsb(), row[3]) << row[0];
  }
  EXPECT_FALSE(std::filesystem::exists(link_));
}

TEST_F(Bus, UsbGivesCountedBlocksAndTheScreenThatTheSamplesTellOf) {
  EXPECT_TRUE(PutUsb(":DISPLAY:MENU STATUS:OFF\r:STOP\r:HARD_COPY\r:DATA:CHANNEL1"));
  std::string block;
  for (std::string piece = GetUsb(); !piece.empty(); piece = GetUsb()) block += piece;
  ASSERT_EQ(block.size(), 3001u);
  std::vector<unsigned char> screen(tx5000::kScreenBytes);
  const auto control = [](int request, int value, int index) {
    return Call<short>("Control_Command_Send", 0, request, value, index, 0);
  };
  const auto bulk = [&] { return Call<short>("Bulk_DataTransfer_Read", 0, 76800, screen.data()); };
  EXPECT_TRUE(control(8, 0, 80) && !control(7, 0, 9) && !bulk()) << "no count yet";
  EXPECT_TRUE(control(8, 0, 80) && control(9, 11264, 1) && !control(7, 1, 9)) << "one too far";
  ASSERT_TRUE(control(8, 0, 80) && control(9, 11264, 1) && control(7, 0, 9) && bulk() && !bulk());
  for (std::size_t i = 0; i < 600; ++i) {
    const auto row = tx5000::kTraceTop - 26 + std::stoul(block.substr(i * 5 + 2, 2), nullptr, 16);
    EXPECT_EQ(screen[row * 320 + tx5000::kTraceLeft + i / 2], tx5000::kChannel1Ink) << i;
  }
}

TEST_F(Bus, AKilledInstrumentFailsEachCallUntilItIsBack) {
  const int device = Open(7);
  EXPECT_TRUE(Put(device, ":DATA:CHANNEL1") && Get(device, 200).size() == 200 && PutUsb("*IDN?"));
  End(SIGKILL);
  EXPECT_EQ(Get(device, 200), "|TIMO");
  EXPECT_TRUE(Put(device, "*IDN?") == 0x8100 && GetUsb() == "gone" && !PutUsb("*IDN?"));
  Start();
  EXPECT_TRUE(Put(device, ":TRIGGER:STATUS:?") && Get(device, 9) == "RUN\n|END" && GetUsb() == "");
}

}  // namespace
