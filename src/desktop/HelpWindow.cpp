#include "desktop/HelpWindow.h"

#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include "desktop/Bind.h"
#include "desktop/HelpBook.h"
#include "desktop/HelpFile.h"
#include "desktop/Icons.h"

namespace oriolemark {
namespace {

constexpr QSize kFirstSize(960, 680);
constexpr QSize kFrame(20, 50);  // space for the window's frame

}  // namespace

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName("HelpWindow");
  setWindowTitle("Oriolemark Help");
  setWindowIcon(PictureNamed("Oriolemark"));
  setAttribute(Qt::WA_DeleteOnClose, false);
  setAttribute(Qt::WA_QuitOnClose, false);
  Make<QVBoxLayout>(this).setContentsMargins(0, 0, 0, 0);
  auto& escape = Make<QShortcut>(QKeySequence(Qt::Key_Escape), this);
  connect(&escape, &QShortcut::activated, this, &QWidget::hide);
  resize(kFirstSize.boundedTo(screen()->availableSize() - kFrame));
}

HelpWindow::~HelpWindow() = default;

std::optional<std::string> HelpWindow::Open(const std::string& path, HelpCommand command,
                                            const std::string& topic) {
  auto file = std::make_unique<HelpFile>(QString::fromStdString(path));
  if (file->Failure()) return file->Failure()->toStdString();
  // The file is read again each time, in case it was replaced.
  book_ = std::make_unique<HelpBook>(std::move(file));
  layout()->addWidget(book_.get());
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  book_->Turn(command, QString::fromStdString(topic));
  raise();
  activateWindow();
  return std::nullopt;
}

}  // namespace oriolemark
