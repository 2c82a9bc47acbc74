#pragma once

#include <linux/usb/ch9.h>
#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>
#include <umockdev.h>

#include <algorithm>
#include <list>
#include <memory>
#include <string>

namespace oriolemark {

// An instrument as the kernel shows it: answers the requests of the USB file system, on a thread of
// its own. What a test sets, it sets between transfers.
class SimulatedUsbDevice {
 public:
  SimulatedUsbDevice(UMockdevTestbed* bed, std::size_t number) : bed_(bed) {
    const std::string place = "00" + std::to_string(number);
    node_ = "/dev/bus/usb/" + place + "/001";
    const std::string text = "P: /devices/usb" + std::to_string(number) + "\nN: bus/usb/" + place +
                             "/001\nE: DEVTYPE=usb_device\nE: SUBSYSTEM=usb\nE: DEVNAME=" + node_ +
                             "\nA: busnum=" + place +
                             "\nA: devnum=1\nA: speed=480\nA: bConfigurationValue=1\n"
                             "H: descriptors="
                             "12010002FF0000405854005000010000000109021900010100C032"
                             "0904000001FF0000000705820200020A\n";
    umockdev_testbed_add_from_string(bed_, text.c_str(), nullptr);
    path_ = "/sys/devices/usb" + std::to_string(number);
    umockdev_testbed_uevent(bed_, path_.c_str(), "add");
    handler_ = umockdev_ioctl_base_new();
    g_signal_connect(handler_, "handle-ioctl", G_CALLBACK(&HandleRequest), this);
    umockdev_testbed_attach_ioctl(bed_, node_.c_str(), handler_, nullptr);
  }
  ~SimulatedUsbDevice() {
    umockdev_testbed_detach_ioctl(bed_, node_.c_str(), nullptr);
    g_object_unref(handler_);
  }

  void Remove() {
    umockdev_testbed_uevent(bed_, path_.c_str(), "remove");
    umockdev_testbed_remove_device(bed_, path_.c_str());
  }

  std::string written;            // the bytes of commands
  std::string requests;           // the other control requests: request, value, index
  std::string reply;              // what waits
  std::string screen;             // what the bulk pipe gives
  int flowing = 1'000'000;        // bytes until the pipe pauses for one time-out
  bool silent = false;            // control requests get no answer
  int transfersLeft = 1'000'000;  // before it is unplugged
  bool replugged = false;         // it was, so that none but a new handle serves

 private:
  using Data = std::shared_ptr<UMockdevIoctlData>;
  struct Transfer {
    Data urb;
    Data buffer{};
    usbdevfs_urb& Urb() const { return *reinterpret_cast<usbdevfs_urb*>(urb->data); }
  };

  static Data Resolve(UMockdevIoctlData* data, std::size_t offset, std::size_t size) {
    return {umockdev_ioctl_data_resolve(data, offset, size, nullptr), &umockdev_ioctl_data_unref};
  }

  static gboolean HandleRequest(UMockdevIoctlBase*, UMockdevIoctlClient* client,
                                SimulatedUsbDevice* device) {
    const int error = device->Handle(umockdev_ioctl_client_get_request(client),
                                     umockdev_ioctl_client_get_arg(client));
    umockdev_ioctl_client_complete(client, error == 0 ? 0 : -1, error);
    return TRUE;
  }

  // The error number of the outcome, or 0.
  int Handle(unsigned long request, UMockdevIoctlData* argument) {
    if (request == USBDEVFS_REAPURBNDELAY) return Reap(argument);
    // The first request on each new handle.
    if (request == USBDEVFS_GET_CAPABILITIES) replugged = false;
    if (transfersLeft <= 0 || replugged) return ENODEV;
    if (request == USBDEVFS_SUBMITURB) return Submit(argument);
    if (request == USBDEVFS_DISCARDURB) return Discard(argument);
    return request == USBDEVFS_GET_CAPABILITIES ? ENOTTY : 0;
  }

  int Submit(UMockdevIoctlData* argument) {
    if (--transfersLeft <= 0) return ENODEV;
    Transfer transfer{.urb = Resolve(argument, 0, sizeof(usbdevfs_urb))};
    const auto size = static_cast<std::size_t>(transfer.Urb().buffer_length);
    transfer.buffer = Resolve(transfer.urb.get(), offsetof(usbdevfs_urb, buffer), size);
    const bool ended =
        transfer.Urb().type == USBDEVFS_URB_TYPE_CONTROL ? Control(transfer) : Bulk(transfer);
    (ended ? ready_ : pending_).push_back(transfer);
    return 0;
  }

  bool Control(Transfer& transfer) {
    const auto& setup = *reinterpret_cast<usb_ctrlrequest*>(transfer.buffer->data);
    unsigned char* const data = transfer.buffer->data + sizeof setup;
    usbdevfs_urb& urb = transfer.Urb();
    urb.status = 0;
    urb.actual_length = setup.wLength;
    if (silent) return false;
    if (setup.bRequestType == 0xC0 && setup.bRequest == 2) {
      data[0] = static_cast<unsigned char>(std::min<std::size_t>(reply.size(), 255));
    } else if (setup.bRequestType == 0xC0 && setup.bRequest == 3) {
      urb.actual_length = Give(reply, data, setup.wLength);
    } else if (setup.bRequest == 1) {
      written += static_cast<char>(setup.wValue);
    } else {
      requests += std::to_string(setup.bRequest) + ' ' + std::to_string(setup.wValue) + ' ' +
                  std::to_string(setup.wIndex) + ' ';
    }
    return true;
  }

  bool Bulk(Transfer& transfer) {
    usbdevfs_urb& urb = transfer.Urb();
    urb.status = 0;
    urb.actual_length = Give(screen, transfer.buffer->data, std::min(urb.buffer_length, flowing));
    flowing -= urb.actual_length;
    return urb.actual_length == urb.buffer_length;
  }

  static int Give(std::string& from, unsigned char* to, int count) {
    const int given = std::min(static_cast<int>(from.size()), count);
    std::copy_n(from.begin(), given, to);
    from.erase(0, static_cast<std::size_t>(given));
    return given;
  }

  int Discard(UMockdevIoctlData* argument) {
    const Data urb = Resolve(argument, 0, sizeof(usbdevfs_urb));
    const auto found = std::ranges::find_if(pending_, [&urb](const Transfer& transfer) {
      return transfer.urb->client_addr == urb->client_addr;
    });
    if (found == pending_.end()) return EINVAL;
    found->Urb().status = -ENOENT;
    ready_.splice(ready_.end(), pending_, found);
    if (pending_.empty()) flowing = 1'000'000;
    return 0;
  }

  int Reap(UMockdevIoctlData* argument) {
    if (ready_.empty()) return transfersLeft <= 0 ? ENODEV : EAGAIN;
    const Data pointer = Resolve(argument, 0, sizeof(gpointer));
    umockdev_ioctl_data_set_ptr(pointer.get(), 0, ready_.front().urb.get());
    ready_.pop_front();
    return 0;
  }

  UMockdevTestbed* bed_;
  std::string node_;
  UMockdevIoctlBase* handler_;
  std::string path_;
  std::list<Transfer> pending_;
  std::list<Transfer> ready_;
};

}  // namespace oriolemark
