#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <numeric>
#include <set>

#include "drivers/ChosenColors.h"
#include "drivers/ChosenUsb.h"
#include "drivers/LibraryGpib.h"
#include "drivers/QtSettingsStore.h"
#include "libs/Script.h"
#include "support/FileFolder.h"
#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

using Texts = std::vector<std::string>;

const std::string kLibraries = TEST_LIBRARIES;  // their folder, with its slash

struct DriversTest : ::testing::Test {
  // The library that gives its status words by function or by variable.
  LibraryScript& Use(const std::string& key, const std::string& name) {
    const std::string path = kLibraries + "by_" + name + ".so";
    store.Write("Drivers", key, path);
    held.emplace_back(Texts{path}, Exports{{"Script"}});
    return *held.back().Find<LibraryScript*()>("Script")() = {};
  }

  std::vector<SharedLibrary> held;
  MemoryStore store;
  VirtualClock clock;
  RecordingPrompts prompts{clock};
  LibraryGpib gpibDriver{store};
  int eventsServed = 0;
  Milliseconds now{0};
  ChosenUsb usbDriver{store,
                      {[this] { return now; }, [this](auto time) { now += time; },
                       [this] { return eventsServed; }}};
  FakeSerialPort port{clock};
  const LinkSettings settings{.UsbDevice = 2};
  ScopeLink link{port, gpibDriver, usbDriver, settings, clock.waiting, prompts};
  GPIBFunc& gpib = link.gpib;
  USB_FUNC& usb = link.usb;
};

TEST_F(DriversTest, GpibLibraryThatDoesNotServeFailsEachCallAndSaysWhy) {
  const FileFolder place;
  const std::string kCutShort = place.folder + "/cut_short.so";
  place.Put(kCutShort, place.Bytes(kLibraries + "by_function.so").substr(0, 1000));
  const std::pair<std::string, std::string> rows[] = {
      {"", "libgpib.so.0: not found; libni4882.so: not found; libgpibapi.so: not found"},
      {"/nowhere/lib.so", "/nowhere/lib.so: not found"},
      {kCutShort, kCutShort + ": incomplete file"},
      {"libm.so.6", "libm.so.6: lacks ibdev, ibclr, ibwrt, ibrd, ibonl, ThreadIbsta or ibsta"}};
  for (const auto& [name, reason] : rows) {
    store.Write("Drivers", "GpibLibrary", name);
    EXPECT_NE(gpibDriver.Meaning().find(reason), std::string::npos) << gpibDriver.Meaning();
    gpib.GPIBInit();
    EXPECT_EQ(gpib.GPIBRead(), "");
    const std::string cause = "\n\n" + gpibDriver.Meaning();
    EXPECT_EQ(prompts.Told(),
              (Texts{"Unable to open GPIB IO device\ribsta = &H8000\riberr = 0" + cause,
                     "Unable to read from device\ribsta = &H8000\riberr = 0 <EDVR>" + cause}));
  }
}

TEST_F(DriversTest, EachConnectLooksForTheLibraryThatIsAskedForThen) {
  const LibraryScript& first = Use("GpibLibrary", "function");
  gpib.GPIBInit();
  const LibraryScript& second = Use("GpibLibrary", "variable");
  EXPECT_EQ(gpibDriver.Meaning(), "GPIB library: " + kLibraries + "by_variable.so");
  gpib.GPIBSend("a");
  gpibDriver.ibwrt(0, "");
  gpib.GPIBInit();
  EXPECT_EQ(first.calls, "ibdev ibclr ibwrt ");
  EXPECT_EQ(second.calls, "ibdev ibclr ");
}

TEST_F(DriversTest, StatusWordsComeWholeHoweverTheLibraryGivesThem) {
  for (const char* name : {"function", "variable"}) {
    LibraryScript& script = Use("GpibLibrary", name);
    gpib.GPIBInit();
    for (int bit = 0; bit < 32; ++bit) {
      script.ibsta = static_cast<int>(1U << bit);
      gpibDriver.ibwrt(0, "abc");
      EXPECT_EQ(gpibDriver.Status().ibsta, bit < 16 ? 1 << bit : 0) << name << bit;
      EXPECT_EQ(gpibDriver.Status().ibcnt, 3) << name;
    }
    for (const std::string call : {"ibdev", "ibclr", "ibwrt", "ibrd"}) {
      script = {.failing = call, .reply = "1\n"};
      gpib.GPIBInit();
      if (call != "ibdev") gpib.GPIBSend("?"), gpib.GPIBRead();
      const Texts shown = prompts.Told();
      ASSERT_EQ(shown.size(), 1U) << name << call;
      EXPECT_NE(shown[0].find("ibsta = &H8100\riberr = 6"), std::string::npos) << shown[0];
      EXPECT_NE(shown[0].find("\n\nThe instrument did not answer"), std::string::npos);
    }
  }
}

TEST_F(DriversTest, RepliesOfEverySizeComeThroughBothLibraries) {
  LibraryScript& gpibScript = Use("GpibLibrary", "function");
  LibraryScript& usbScript = Use("UsbLibrary", "variable");
  gpib.GPIBInit();
  const auto progress = [](std::size_t) {};
  for (const std::size_t size : {1, 2, 254, 255, 256, 1024, 1025, 100000}) {
    const std::string line(size - 1, 'x');
    gpibScript.reply = line + "\n";
    EXPECT_EQ(gpib.GPIBRead(), size <= 1024 ? line : "") << size;
    gpibScript.reply = usbScript.reply = line + "\n";
    EXPECT_EQ(gpib.ReadBlock(progress), line);
    EXPECT_EQ(usb.ReadBlock(progress), line);
  }
  EXPECT_EQ(prompts.Told(), Texts{});
}

TEST_F(DriversTest, UsbLibraryIsUsedIfItServesAndEachFailureComesThrough) {
  LibraryScript& script = Use("UsbLibrary", "variable");
  EXPECT_EQ(usbDriver.GetDeviceNum(), 3);
  for (const std::string operation : {"Write_USB", "count", "fetch"}) {
    script = {.failing = operation, .reply = "1\n"};
    usb.USBSend("A");
    usb.USBRead();
    EXPECT_EQ(script.calls, operation == "Write_USB" ? "A" : "A\r");
    EXPECT_EQ(prompts.Told(), Texts{"Can't Connect to USB Device"});
  }
  store.Write("Drivers", "UsbLibrary", "libm.so.6");
  EXPECT_EQ(usbDriver.GetDeviceNum(), 0);
  EXPECT_TRUE(usbDriver.Meaning().starts_with(
      "Built-in USB driver. The library named in the settings cannot be used: libm.so.6: lacks "));
}

TEST_F(DriversTest, TheNextConnectUsesTheUsbLibraryThatTheOptionsName) {
  const LibraryScript& script = Use("UsbLibrary", "variable");
  store.values.clear();
  Preferences preferences;
  ChosenColors colors(store);
  frmOptions options({preferences, store, prompts, port, gpibDriver, usbDriver, colors});
  options.Load();
  options.UsbLibraryText.SetText(held[0].Name());
  options.cmdOK.Click();
  usb.USBSend("A");
  EXPECT_EQ(script.calls, "A\r");
}

TEST_F(DriversTest, UsbScreenIsSelectedCountedAddressedAndReadUntilOneFails) {
  LibraryScript& script = Use("UsbLibrary", "variable");
  std::vector<std::uint8_t> buffer(76801 + 16, 1);
  // The call that fails, and the calls until then.
  for (const auto& row : Rows("8 | 2 8 0 80 0 || bulk | 2 8 0 80 0 2 9 11264 1 0 2 7 16 9 0 2")) {
    EXPECT_EQ(buffer, std::vector<std::uint8_t>(buffer.size(), 1));
    script = {.failing = row[0]};
    usb.USBReadScreen(16, buffer, 76800);
    EXPECT_EQ(script.calls, row[1] + " ");
  }
  script = {};
  usb.USBReadScreen(16, buffer, 76800);
  const std::set<std::uint8_t> screen(buffer.begin() + 16, buffer.end() - 1);
  EXPECT_EQ(screen, std::set<std::uint8_t>{7});
  EXPECT_EQ(buffer[15] + buffer.back(), 2);
  EXPECT_TRUE(prompts.shown.empty());
  EXPECT_FALSE(usbDriver.Bulk_DataTransfer_Read(0, 5, std::span(buffer).first(4)));
}

TEST_F(DriversTest, SilentInstrumentEndsAWaitThatServesNoEventsAfterFiveSeconds) {
  Use("UsbLibrary", "variable");
  usb.USBSend("?");
  EXPECT_EQ(usb.USBRead() + usb.USBRead(), "");
  EXPECT_EQ(now, Milliseconds(10000));
  EXPECT_EQ(prompts.Told(),
            Texts(2,
                  "Can't Connect to USB Device\n\nThe instrument has not answered for 5 s. "
                  "Switch it off and on, then connect again."));
  std::array<std::uint8_t, 1> count{};
  for (int turn = 0; turn < 3; ++turn) {
    ++eventsServed;
    EXPECT_TRUE(usbDriver.Read_USB(0, 0, 1, count));
    now += Milliseconds(4990);
    EXPECT_TRUE(usbDriver.Read_USB(0, 0, 1, count));
  }
}

TEST_F(DriversTest, UsbIdsAreHexadecimalAndAMalformedOneIsTheDefault) {
  const UsbIds standard = ReadUsbIds(store);
  for (const char* text : {"", "0x", "12345", "12 ", "-1", "xyz", "0x1G"}) {
    store.Write("Drivers", "UsbVendorId", text);
    EXPECT_EQ(ReadUsbIds(store), standard) << text;
  }
  store.Write("Drivers", "UsbVendorId", "0xAbCd");
  store.Write("Drivers", "UsbProductId", "12");
  EXPECT_EQ(ReadUsbIds(store), (UsbIds{.vendor = 0xABCD, .product = 0x12}));
}

TEST_F(DriversTest, ColoursComeFromTwoPalettes) {
  std::array<std::uint8_t, 256> raw{};
  std::iota(raw.begin(), raw.end(), std::uint8_t{0});
  std::array<std::uint32_t, 256> colours{};
  ChosenColors palettes(store);
  palettes.TransClr(raw, colours);
  EXPECT_EQ(std::set(colours.begin(), colours.end()).size(), 256U);
  const std::array seen{colours[0], colours[3], colours[0x1C], colours[0xE0], colours[0xFF]};
  EXPECT_EQ(seen, (std::array{0U, 0xFFU, 0xFF00U, 0xFF0000U, 0xFFFFFFU}));
  palettes.TransMono(raw, std::span(colours).first(2));
  EXPECT_EQ(colours[1], 0xFFFFFFU);
  EXPECT_EQ(colours[2], 0xAAU) << "what lies behind keeps its colour";
}

TEST_F(DriversTest, ColoursComeFromTheNamedLibraryIfItHasBothOperations) {
  const std::array<std::uint8_t, 3> raw{1, 2, 3};
  // The library, the colours of the first and the last byte, the plain colour, and the source.
  const std::tuple<const char*, std::uint32_t, std::uint32_t, std::uint32_t, const char*> rows[] = {
      {"by_function.so", 0x40201, 0, 0x0000FF, "Colour library: "},
      {"by_variable.so", 0x55, 0xFF, 0xFFFFFF, "Built-in colours. The library named "}};
  for (const auto& [name, first, last, mono, meaning] : rows) {
    SCOPED_TRACE(name);
    store.Write("Drivers", "ColorLibrary", kLibraries + name);
    ChosenColors chosen(store);
    EXPECT_TRUE(chosen.Meaning().starts_with(meaning)) << chosen.Meaning();
    std::array<std::uint32_t, 3> colours{7, 7, 7};
    chosen.TransClr(raw, colours);
    EXPECT_EQ(std::pair(colours[0], colours[2]), std::pair(first, last));
    chosen.TransMono(raw, colours);
    EXPECT_EQ(colours[1], mono);
  }
}

TEST(SettingsStore, KeepsTextsAsTheyAreAndReadsWhatAHandHasWritten) {
  const FileFolder home;
  const std::string file = home.folder + "/Oriolemark/Oriolemark.ini";
  qputenv("XDG_CONFIG_HOME", home.folder.c_str());
  const std::string path = "/tmp/\xC3\xBC a,b;\"c\".cfx";
  QtSettingsStore().Write("Recent Ctrl", "RecentFile1", path);
  EXPECT_EQ(QtSettingsStore().Read("Recent Ctrl", "RecentFile1"), path);
  EXPECT_NE(home.Bytes(file).find("[Recent%20Ctrl]\nRecentFile1="), std::string::npos);
  home.Put(file, "[General]\nStartupLoadSheet=True\n\n[IO%20Settings]\nBaudRate=1,2\n");
  EXPECT_EQ(QtSettingsStore().Read("General", "StartupLoadSheet"), "True");
  EXPECT_EQ(QtSettingsStore().Read("IO Settings", "BaudRate"), "1,2");
  // A text of a size that no program has written counts as none, and goes at the next write.
  const std::string longest(8192, 'x');
  home.Put(file, "[Settings]\nA=" + longest + "\nB=" + longest + "x\n");
  QtSettingsStore store;
  EXPECT_EQ(store.Read("Settings", "A"), longest);
  EXPECT_EQ(store.Read("Settings", "B"), std::nullopt);
  store.Write("Settings", "C", "1");
  EXPECT_LT(std::filesystem::file_size(file), 9000U);
  // A pipe in the file's place would never be read to its end.
  std::filesystem::remove(file);
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  QtSettingsStore memory;
  memory.Write("Settings", "C", "2");
  EXPECT_EQ(memory.Read("Settings", "C"), "2");
}

}  // namespace
}  // namespace oriolemark
