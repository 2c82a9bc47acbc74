// The built-in USB driver against instruments on a simulated bus. To be run by umockdev-wrapper.

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <thread>

#include "SimulatedUsbBus.h"
#include "drivers/LibusbDriver.h"

namespace oriolemark {
namespace {

constexpr int kScreenSize = 76800;
constexpr UsbIds kIds{.vendor = 0x5458, .product = 0x5000};

struct UsbDeviceTest : ::testing::Test {
  SimulatedUsbDevice& Plug() { return devices.emplace_back(bed.get(), devices.size() + 1); }

  // The drivers hear of a change some time after it.
  static void AwaitOnBus(int count) {
    LibusbDriver watcher(kIds);
    for (int tick = 0; tick < 500 && watcher.GetDeviceNum() != count; ++tick) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ(watcher.GetDeviceNum(), count);
  }

  std::unique_ptr<UMockdevTestbed, decltype(&g_object_unref)> bed{umockdev_testbed_new(),
                                                                  &g_object_unref};
  std::deque<SimulatedUsbDevice> devices;
  LibusbDriver driver{kIds};
  std::array<std::uint8_t, 257> buffer{};
  std::vector<std::uint8_t> screen = std::vector<std::uint8_t>(kScreenSize, 1);
};

TEST_F(UsbDeviceTest, InstrumentsAreCountedByTheirIdsAndNumberedByTheirPlaces) {
  EXPECT_EQ(driver.GetDeviceNum(), 0);
  EXPECT_FALSE(driver.Write_USB(0, 'a'));
  for (const int count : {1, 2, 3}) {
    Plug();
    EXPECT_EQ(LibusbDriver(kIds).GetDeviceNum(), count);
  }
  LibusbDriver all(kIds);
  for (const int device : {2, 0, 1, 2, -1, 3}) {
    EXPECT_EQ(all.Write_USB(device, static_cast<std::uint8_t>('0' + device)),
              device >= 0 && device < 3);
  }
  EXPECT_EQ(devices[0].written + devices[1].written + devices[2].written, "0122");
}

TEST_F(UsbDeviceTest, CommandsAndRepliesOfEverySizeComeThroughAndSilenceIsOvercome) {
  SimulatedUsbDevice& device = Plug();
  for (const char c : std::string("*IDN?\r")) {
    EXPECT_TRUE(driver.Write_USB(0, static_cast<std::uint8_t>(c)));
  }
  EXPECT_EQ(device.written, "*IDN?\r");
  driver.Control_Command_Send(0, 9, 0x2C00, 1);
  EXPECT_EQ(device.requests, "9 11264 1 ");
  for (const std::size_t size : {0, 1, 254, 255, 256, 1000}) {
    const std::string reply = device.reply = std::string(size, 'x');
    std::string read;
    while (driver.Read_USB(0, 0, 1, buffer) && buffer[0] > 0) {
      const int count = buffer[0];
      ASSERT_TRUE(driver.Read_USB(0, 1, count, buffer));
      read.append(buffer.begin(), buffer.begin() + count);
    }
    EXPECT_EQ(read, reply);
  }
  EXPECT_FALSE(driver.Read_USB(0, 1, 258, buffer));
  device.silent = true;
  EXPECT_FALSE(driver.Write_USB(0, 'a'));
  EXPECT_EQ(driver.Problem(), "The instrument does not answer. Switch it off and on.");
  device.silent = false;
  EXPECT_TRUE(driver.Write_USB(0, 'b'));
  EXPECT_EQ(device.written, "*IDN?\rb");
}

TEST_F(UsbDeviceTest, ScreenComesWholeThroughAPause) {
  SimulatedUsbDevice& device = Plug();
  std::string picture;
  for (int i = 0; i < kScreenSize; ++i) picture += static_cast<char>(i * 7 % 251);
  for (const int flowing : {1'000'000, 20000}) {
    device.screen = picture;
    device.flowing = flowing;
    EXPECT_TRUE(driver.Bulk_DataTransfer_Read(0, kScreenSize, screen)) << driver.Problem();
    EXPECT_EQ(std::string(screen.begin(), screen.end()), picture) << flowing;
  }
  device.screen = "short";
  EXPECT_FALSE(driver.Bulk_DataTransfer_Read(0, kScreenSize, screen));
  EXPECT_EQ(std::string(screen.begin(), screen.end()), picture) << "the last picture stays";
}

TEST_F(UsbDeviceTest, UnpluggedInstrumentFailsEachOperationAndAnswersWhenItIsBack) {
  SimulatedUsbDevice& device = Plug();
  const std::vector<std::function<bool()>> operations{
      [&] { return driver.Write_USB(0, 'a'); }, [&] { return driver.Read_USB(0, 0, 1, buffer); },
      [&] { return driver.Read_USB(0, 1, 1, buffer); },
      [&] { return driver.Control_Command_Send(0, 8, 0, 80); },
      [&] { return driver.Bulk_DataTransfer_Read(0, kScreenSize, screen); }};
  for (const auto& operation : operations) {
    device.reply = std::string(10, 'x');
    device.screen = std::string(kScreenSize, 'y');
    device.transfersLeft = 1'000'000;
    EXPECT_TRUE(operation()) << driver.Problem();
    device.screen = std::string(kScreenSize, 'z');
    device.transfersLeft = 3;
    for (int i = 1; i < 3; ++i) operation();
    EXPECT_FALSE(operation());
    EXPECT_EQ(
        driver.Problem(),
        "The instrument was not found on USB. Switch it on and plug it in. The program looks for "
        "the ids 5458:5000. lsusb lists the ids on the bus.");
    EXPECT_NE(screen[kScreenSize - 1], 'z');
  }
  device.Remove();
  AwaitOnBus(0);
  EXPECT_EQ(driver.GetDeviceNum(), 0);
}

TEST_F(UsbDeviceTest, InstrumentThatIsPluggedInAgainAnswersAtOnceAndIsNotTakenForItsNeighbour) {
  SimulatedUsbDevice& device = Plug();
  EXPECT_TRUE(driver.Read_USB(0, 0, 1, buffer));
  device.replugged = true;
  EXPECT_TRUE(driver.Read_USB(0, 0, 1, buffer)) << driver.Problem();
  device.replugged = true;
  EXPECT_TRUE(driver.Write_USB(0, 'a')) << driver.Problem();
  device.replugged = true;
  EXPECT_FALSE(driver.Bulk_DataTransfer_Read(0, 1, screen)) << "nothing was selected there";
  EXPECT_TRUE(driver.Write_USB(0, 'b')) << driver.Problem();
  EXPECT_EQ(device.written, "ab");
  device.transfersLeft = 0;
  device.Remove();
  SimulatedUsbDevice& elsewhere = Plug();
  AwaitOnBus(1);
  EXPECT_TRUE(driver.Write_USB(0, 'c')) << driver.Problem();
  EXPECT_EQ(elsewhere.written, "c");
  Plug();
  AwaitOnBus(2);
  EXPECT_TRUE(driver.Write_USB(1, 'd'));
  EXPECT_TRUE(driver.Write_USB(0, 'e'));
  elsewhere.transfersLeft = 0;
  elsewhere.Remove();
  AwaitOnBus(1);
  EXPECT_FALSE(driver.Write_USB(0, 'f'));
  EXPECT_EQ(driver.GetDeviceNum(), 1);
  EXPECT_TRUE(driver.Write_USB(0, 'g')) << "by its number, as it was looked for anew";
  EXPECT_EQ(elsewhere.written + devices[2].written, "cedg");
}

}  // namespace
}  // namespace oriolemark
