#include "desktop/Program.h"

#include <QApplication>
#include <QFileInfo>
#include <QScreen>

#include "desktop/Bind.h"
#include "desktop/CtrlDialogWindow.h"
#include "desktop/DataWindow.h"
#include "desktop/Dialogs.h"
#include "desktop/FftWindow.h"
#include "desktop/HelpKey.h"
#include "desktop/HelpWindow.h"
#include "desktop/Icons.h"
#include "desktop/KeyWindow.h"
#include "desktop/MainWindow.h"
#include "desktop/MeasureWindow.h"
#include "desktop/OptionsWindow.h"
#include "desktop/OutlinedStyle.h"
#include "desktop/PagePrinter.h"
#include "desktop/PanelWindow.h"
#include "desktop/PassFailedWindow.h"
#include "desktop/QtPrompts.h"
#include "desktop/WaveWindow.h"
#include "drivers/ChosenColors.h"
#include "drivers/ChosenUsb.h"
#include "drivers/LibraryGpib.h"
#include "drivers/PictureText.h"
#include "drivers/ProgramFiles.h"
#include "drivers/QtEventSource.h"
#include "drivers/QtSerialPort.h"
#include "drivers/QtSettingsStore.h"
#include "drivers/SystemDate.h"

// The linker drops a library's pictures unless they are referenced. The macro must be outside every
// namespace.
static void LoadPictures() {
  Q_INIT_RESOURCE(resources);
}

namespace oriolemark {
namespace {

void PrepareApplication(QApplication& application) {
  LoadPictures();
  // The application owns its style.
  QApplication::setStyle(std::make_unique<OutlinedStyle>().release());
  application.setApplicationName(kApplicationTitle);
  application.setApplicationVersion(ORIOLEMARK_VERSION);
  // The name of the menu entry, without its extension: some desktops look there for the icon.
  application.setDesktopFileName("oriolemark");
  application.setWindowIcon(PictureNamed(kApplicationTitle));
  // The program decides when it ends, not the toolkit.
  application.setQuitOnLastWindowClosed(false);
}

// As absolute paths, because the list of recent files keeps them.
std::vector<std::string> Absolute(std::vector<std::string> files) {
  for (std::string& file : files) {
    file = QFileInfo(QString::fromLocal8Bit(file)).absoluteFilePath().toStdString();
  }
  return files;
}

void ShowPointer(const ScreenPointer& pointer) {
  while (QApplication::overrideCursor() != nullptr) QApplication::restoreOverrideCursor();
  if (pointer.Shape() == PointerShape::Hourglass) QApplication::setOverrideCursor(Qt::WaitCursor);
}

// A window that is built when its form is first loaded. Most are not needed at the start.
template <typename Window>
class Late {
 public:
  template <typename WindowForm, typename... Rest>
  explicit Late(WindowForm& form, Rest... rest) : form_(form) {
    form.onLoading = [this, &form, rest...] {
      if (!window_) window_ = std::make_unique<Window>(form, rest...);
    };
  }
  ~Late() { form_.onLoading = {}; }
  Late(const Late&) = delete;
  Late& operator=(const Late&) = delete;

 private:
  Form& form_;
  std::unique_ptr<Window> window_;
};

}  // namespace

// Each part uses the ones above it. The windows are destroyed first.
struct Program::Parts {
  QtEventSource events;
  Waiting waiting{events};
  QtSettingsStore store;
  PagePrinter printer{waiting};
  QtPrompts prompts{waiting, store, printer};
  QtSerialPort serial{[this](int number) {
    return store.Read("Drivers", "COM" + std::to_string(number)).value_or(std::string());
  }};
  LibraryGpib gpib{store};
  ChosenUsb usb{store, MakeUsbTime(waiting, [this] { return events.Turns(); })};
  ChosenColors colors{store};
  HelpWindow help{nullptr};
  MainModule module{Platform{
      events, waiting, prompts, store, serial, gpib, usb, colors, SystemShortDate, MakeRasterCanvas,
      ORIOLEMARK_VERSION, help, HelpFilePath(), SyncToDisk, HandOverFilePath(),
      [this] { return printer.MakeReport(); }, RecoveredFolder(), SystemTimeStamp}};
  SplashWindow splash{module.splash};
  MainWindow main{module.main, module.browser, module.controller};
  Late<AboutWindow> about{module.about, &main};
  Late<DocTypeWindow> newDoc{module.newDoc, "frmNewDoc", &main};
  Late<DocTypeWindow> openDoc{module.openDoc, "frmOpenDoc", &main};
  Late<OptionsWindow> options{module.options, &main};
  Late<CtrlDialogWindow> ctrlDialog{module.controller.dialog, &main};
  Late<PassFailedWindow> passFailed{module.passFailed, &main};
  Late<FftWindow> waveSetting{module.waveSetting, &main};
  Late<KeyWindow> keys{module.keys, &main};
  Late<PanelWindow> panel{module.panel, &main};
  Late<ProgressWindow> progress{module.progress, &main};
  HelpKey helpKey{help, [this](const std::string& topic) {
                    module.main.ShowHelp(HelpCommand::Context, topic);
                  }};
};

Program::Program(QApplication& application, const std::vector<std::string>& files) {
  PrepareApplication(application);
  parts_ = std::make_unique<Parts>();
  const QSize screen = QGuiApplication::primaryScreen()->size();
  parts_->module.progress.screenWidth = PixelsToUnits(screen.width());
  parts_->module.progress.screenHeight = PixelsToUnits(screen.height());
  parts_->module.main.FilesAtStart = Absolute(files);
  parts_->module.pointer.onChanged = [this] { ShowPointer(parts_->module.pointer); };
  parts_->module.onWaveView = [this](frmWave& view) {
    parts_->main.AddInner(Make<WaveWindow>(view));
  };
  parts_->module.onMeasureView = [this](frmMeasure& view) {
    parts_->main.AddInner(Make<MeasureWindow>(view));
  };
  parts_->module.onDataView = [this](frmData& view) {
    parts_->main.AddInner(Make<DataWindow>(view));
  };
}

Program::~Program() = default;

MainModule& Program::Module() {
  return parts_->module;
}

int Program::Run() {
  parts_->module.Main();
  return 0;
}

}  // namespace oriolemark
