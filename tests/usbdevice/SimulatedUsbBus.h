#pragma once

#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <umockdev.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <list>
#include <memory>
#include <string>

namespace oriolemark {

// An instrument as the kernel shows it: answers the requests of the USB file system, on a thread of
// its own. What a test sets, it sets between transfers.
class SimulatedUsbDevice {
 public:
  SimulatedUsbDevice(UMockdevTestbed* bed, int number) : bed_(bed) {
    const std::string place = "00" + std::to_string(number);
    node = "/dev/bus/usb/" + place + "/001";
    const std::string text = "P: /devices/usb" + std::to_string(number) + "\nN: bus/usb/" + place +
                             "/001\nE: DEVTYPE=usb_device\nE: SUBSYSTEM=usb\nE: DEVNAME=" + node +
                             "\nE: BUSNUM=" + place + "\nE: DEVNUM=001\nA: busnum=" + place +
                             "\nA: devnum=1\nA: speed=480\nA: bConfigurationValue=1\n"
                             "H: descriptors="
                             "12010002FF0000405854005000010000000109021900010100C032"
                             "0904000001FF0000000705820200020A\n";
    umockdev_testbed_add_from_string(bed_, text.c_str(), nullptr);
    path_ = "/sys/devices/usb" + std::to_string(number);
    handler_ = umockdev_ioctl_base_new();
    g_signal_connect(handler_, "handle-ioctl", G_CALLBACK(&SimulatedUsbDevice::HandleRequest),
                     this);
    umockdev_testbed_attach_ioctl(bed_, node.c_str(), handler_, nullptr);
    char* const root = umockdev_testbed_get_root_dir(bed_);
    file_ = root + node;
    // It must be the node that is forbidden to nobody, not the way to it or to this handler.
    chmod(root, 0755);
    chmod((std::string(root) + "/ioctl" + node).c_str(), 0777);
    g_free(root);
  }
  ~SimulatedUsbDevice() {
    umockdev_testbed_detach_ioctl(bed_, node.c_str(), nullptr);
    g_object_unref(handler_);
  }
  SimulatedUsbDevice(const SimulatedUsbDevice&) = delete;
  SimulatedUsbDevice& operator=(const SimulatedUsbDevice&) = delete;

  void Remove() { umockdev_testbed_uevent(bed_, path_.c_str(), "remove"); }

  // Between these two no one may open the node. Rights do not bind root, who is a nobody meanwhile.
  void Forbid() {
    chmod(file_.c_str(), 0);
    if (user_ == 0 && seteuid(65534) != 0) std::abort();
  }
  void Allow() {
    if (user_ == 0 && seteuid(0) != 0) std::abort();
    chmod(file_.c_str(), 0600);
  }

  std::string node;
  std::string written;              // the bytes of commands
  std::string requests;             // the other control requests: request, value, index
  std::string reply;                // what waits
  std::string screen;               // what the bulk pipe gives
  std::size_t flowing = 1'000'000;  // bytes until the pipe pauses for one time-out
  int stalls = 0;                   // bulk transfers that stall, until the halt is cleared
  bool silent = false;              // control requests get no answer
  bool busy = false;                // somebody else has claimed it
  int transfersLeft = 1'000'000;    // before it is unplugged
  int clearedHalts = 0;

 private:
  using Data = std::unique_ptr<UMockdevIoctlData, decltype(&umockdev_ioctl_data_unref)>;
  struct Transfer {
    Data urb;
    Data buffer;
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
    if (transfersLeft <= 0) return ENODEV;
    if (request == USBDEVFS_SUBMITURB) return Submit(argument);
    if (request == USBDEVFS_DISCARDURB) return Discard(argument);
    if (request == USBDEVFS_CLEAR_HALT) stalls = 0, ++clearedHalts;
    if (request == USBDEVFS_CLAIMINTERFACE || request == USBDEVFS_DISCONNECT_CLAIM) {
      return busy ? EBUSY : 0;
    }
    if (request == USBDEVFS_GET_CAPABILITIES) {
      std::memset(Resolve(argument, 0, sizeof(unsigned))->data, 0, sizeof(unsigned));
    }
    return 0;
  }

  int Submit(UMockdevIoctlData* argument) {
    if (--transfersLeft <= 0) {
      for (Transfer& transfer : pending_) transfer.Urb().status = -ESHUTDOWN;
      ready_.splice(ready_.end(), pending_);
      return ENODEV;
    }
    Data urb = Resolve(argument, 0, sizeof(usbdevfs_urb));
    const auto size = reinterpret_cast<usbdevfs_urb*>(urb->data)->buffer_length;
    Data buffer =
        Resolve(urb.get(), offsetof(usbdevfs_urb, buffer), static_cast<std::size_t>(size));
    std::list<Transfer> one;
    one.push_back({std::move(urb), std::move(buffer)});
    const bool control = one.front().Urb().type == USBDEVFS_URB_TYPE_CONTROL;
    const bool ended = control ? Control(one.front()) : Bulk(one.front());
    auto& queue = ended ? ready_ : pending_;
    queue.splice(queue.end(), one);
    return 0;
  }

  bool Control(Transfer& transfer) {
    const unsigned char* const setup = transfer.buffer->data;
    const auto word = [setup](int at) { return std::to_string(setup[at] + 256 * setup[at + 1]); };
    char* const data = reinterpret_cast<char*>(transfer.buffer->data) + 8;
    usbdevfs_urb& urb = transfer.Urb();
    const std::size_t wanted = static_cast<std::size_t>(urb.buffer_length) - 8;
    urb.status = 0;
    urb.actual_length = static_cast<int>(wanted);
    if (silent) return false;
    if (setup[0] == 0xC0 && setup[1] == 2) {
      data[0] = static_cast<char>(std::min<std::size_t>(reply.size(), 255));
    } else if (setup[0] == 0xC0 && setup[1] == 3) {
      urb.actual_length = static_cast<int>(Give(reply, data, wanted));
    } else if (setup[1] == 1) {
      written += static_cast<char>(setup[2]);
    } else if (setup[1] == 99) {
      urb.status = -EPIPE;
    } else {
      requests += std::to_string(setup[1]) + ' ' + word(2) + ' ' + word(4) + ' ';
    }
    return true;
  }

  bool Bulk(Transfer& transfer) {
    usbdevfs_urb& urb = transfer.Urb();
    urb.status = stalls > 0 ? -EPIPE : 0;
    urb.actual_length = 0;
    if (stalls > 0) return true;
    const auto wanted = static_cast<std::size_t>(urb.buffer_length);
    const std::size_t given =
        Give(screen, reinterpret_cast<char*>(transfer.buffer->data), std::min(wanted, flowing));
    urb.actual_length = static_cast<int>(given);
    flowing -= given;
    return given == wanted;
  }

  static std::size_t Give(std::string& from, char* to, std::size_t count) {
    const std::size_t given = std::min(from.size(), count);
    std::memcpy(to, from.data(), given);
    from.erase(0, given);
    return given;
  }

  int Discard(UMockdevIoctlData* argument) {
    const Data urb = Resolve(argument, 0, sizeof(usbdevfs_urb));
    for (auto at = pending_.begin(); at != pending_.end(); ++at) {
      if (at->urb->client_addr != urb->client_addr) continue;
      at->Urb().status = -ENOENT;
      ready_.splice(ready_.end(), pending_, at);
      if (pending_.empty()) flowing = 1'000'000;
      return 0;
    }
    return EINVAL;
  }

  int Reap(UMockdevIoctlData* argument) {
    if (ready_.empty()) return transfersLeft <= 0 ? ENODEV : EAGAIN;
    const Data pointer = Resolve(argument, 0, sizeof(gpointer));
    umockdev_ioctl_data_set_ptr(pointer.get(), 0, ready_.front().urb.get());
    ready_.pop_front();
    return 0;
  }

  UMockdevTestbed* bed_;
  UMockdevIoctlBase* handler_;
  std::string path_;
  std::string file_;
  const uid_t user_ = geteuid();
  std::list<Transfer> pending_;
  std::list<Transfer> ready_;
};

}  // namespace oriolemark
