#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QHelpLink>
#include <QLineEdit>
#include <QMessageBox>
#include <QPageSize>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QSettings>
#include <QTextBrowser>
#include <QTreeWidget>

#include "desktop/Bind.h"
#include "desktop/HelpFile.h"
#include "desktop/HelpWindow.h"
#include "desktop/PagePrinter.h"
#include "desktop/QtPrompts.h"
#include "desktop/RunWindows.h"
#include "drivers/QtEventSource.h"
#include "drivers/QtSettingsStore.h"
#include "output/Bitmap.h"
#include "support/FileFolder.h"
#include "tour/PrintedPage.h"

namespace oriolemark {
namespace {

// By keys alone to the first row that begins with this, and Enter.
void Edit(const QString& to) {
  auto& tree = The<QTreeWidget>("CtrlTreeView");
  tree.setFocus();
  Press({Qt::Key_Home, Qt::Key_Asterisk});
  for (int i = 0; i < 50 && !tree.currentItem()->text(0).startsWith(to); ++i) Press({Qt::Key_Down});
  Press({Qt::Key_Return});
}

TEST_F(Windows, ASettingIsEditedByKeysAlone) {
  QProcess instrument;
  instrument.start(TX5000SIM_PATH, {"--link", home_.filePath("tx5000")});
  ASSERT_TRUE(instrument.waitForReadyRead(5000));
  QSettings ini(home_.filePath("Oriolemark/Oriolemark.ini"), QSettings::IniFormat);
  ini.setValue("IO Settings/ScopeIOType", 2);
  ini.setValue("Drivers/COM1", home_.filePath("tx5000"));
  ini.sync();
  Run({[](MainModule& module) { module.main.mnuToolsConnect.Click(); },
       [](MainModule&) { Edit("Run|Stop"); },
       [](MainModule& module) {
         EXPECT_EQ(Focus(), Shown("Combo"));
         Press({Qt::Key_Down, Qt::Key_Tab, Qt::Key_Escape});
         EXPECT_EQ(module.settings.RunStop, "RUN");
         Edit("Holdoff");
       },
       [](MainModule&) {
         EXPECT_EQ(Focus(), Shown("inputTxt")) << "the value, whatever had the focus before";
         Press({Qt::Key_7, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return});
       },
       [](MainModule& module) {
         EXPECT_EQ(module.settings.Holdoff, "0.007ms") << "the key that had the focus, not OK";
         Edit("Method");
       },
       Later(Keys({Qt::Key_V, Qt::Key_Return})),
       [](MainModule& module) {
         EXPECT_EQ(Focus(), Shown("CtrlTreeView"));
         const QTreeWidgetItem* item = The<QTreeWidget>("CtrlTreeView").currentItem();
         EXPECT_EQ(item->text(0), "Method [VIDEO]") << "in the tree built anew";
         EXPECT_TRUE(item->parent()->isExpanded());
         module.controlDocument.CtrlChanged = false;  // no question at the end
       }},
      16);
  instrument.write("quit\n");
  EXPECT_TRUE(instrument.waitForFinished(5000));
}

struct PromptsTest : testing::Test, Application {
  // The user acts once the box or dialog is up.
  static void Then(const std::function<void(QWidget&)>& act) {
    QTimer::singleShot(50, [act] { act(*QApplication::activeModalWidget()); });
  }
  // The name that a new dialog gives when the user has gone down its filters and typed this.
  // Nothing typed cancels it.
  std::string Save(const QString& typed, int filter = 0) {
    Then([=, this](QWidget& dialog) {
      began = dynamic_cast<QFileDialog&>(dialog).directory().absolutePath();
      for (int down = 0; down < filter; ++down)
        QTest::keyClick(dialog.findChild<QComboBox*>("fileTypeCombo"), Qt::Key_Down);
      dialog.findChild<QLineEdit*>("fileNameEdit")->setText(typed);
      QTest::keyClick(&dialog, typed.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
    });
    QtSettingsStore anew;
    return QtPrompts(waiting, anew, printer)
        .AskFileName({.action = FileAction::Save,
                      .title = "Save",
                      .filter = "Control Files (*.cfx)|*.cfx|Text Files (*.txt)|*.txt|"
                                "All Files (*.*)|*.*"});
  }

  QString began;  // the folder that the dialog began in
  QtEventSource events;
  Waiting waiting{events};
  const QTemporaryDir home;
  const bool atHome = qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
  QtSettingsStore store;
  PagePrinter printer{waiting};
  QtPrompts prompts{waiting, store, printer};
};

TEST_F(PromptsTest, ANameGetsTheFiltersExtensionAndTheFolderOfTheLastFileUnlessItHasGone) {
  auto folder = std::make_unique<QTemporaryDir>();
  const QString path = folder->filePath("name");
  const char* const endings[] = {".cfx", ".txt", ""};
  for (int filter = 0; filter < 3; ++filter) {
    EXPECT_EQ(Save(filter == 0 ? path : "name", filter), path.toStdString() + endings[filter]);
    EXPECT_EQ(began, filter == 0 ? QDir::homePath() : folder->path());
    EXPECT_EQ(Save({}), "") << "and changes nothing";
  }
  folder.reset();
  Save({});
  EXPECT_EQ(began, QDir::homePath());
}

TEST_F(PromptsTest, AMessageOfAMegabyteIsShownInPart) {
  Then([](QWidget& box) {
    EXPECT_LT(box.property("text").toString().size(), 3000);
    EXPECT_LT(box.width(), 1300);
    QTest::keyClick(&box, Qt::Key_Escape);
  });
  prompts.Show({.text = "Save?", .systemText = std::string(1'000'000, 'w')});
}

TEST_F(PromptsTest, AMessageIsAnsweredByItsButtonsAndMutedWhereItsBoxIsTicked) {
  constexpr auto kEscape = QMessageBox::NoButton, kReturn = QMessageBox::Help;  // keys
  using enum MessageButtons;
  const std::tuple<MessageButtons, bool, QMessageBox::StandardButton, MessageAnswer> rows[] = {
      {Ok, false, QMessageBox::Ok, MessageAnswer::Ok},
      {Ok, true, QMessageBox::Ok, MessageAnswer::OkAndMute},
      {YesNoCancel, false, kReturn, MessageAnswer::Yes},
      {YesNoCancel, false, QMessageBox::No, MessageAnswer::No},
      {YesNoCancel, false, kEscape, MessageAnswer::Cancel},
      {YesNo, false, QMessageBox::Yes, MessageAnswer::Yes},
      {YesNo, false, kReturn, MessageAnswer::No},
      {YesNo, false, kEscape, MessageAnswer::No}};
  for (const auto& [buttons, mayMute, button, answer] : rows) {
    Then([mayMute = mayMute, button = button](QWidget& widget) {
      const auto& box = dynamic_cast<QMessageBox&>(widget);
      EXPECT_EQ(box.checkBox() != nullptr, mayMute);
      if (mayMute) QTest::keyClick(box.checkBox(), Qt::Key_Space);
      const bool byKey = button == kEscape || button == kReturn;
      QTest::keyClick(byKey ? &widget : box.button(button),
                      button == kEscape ? Qt::Key_Escape : Qt::Key_Return);
    });
    EXPECT_EQ(prompts.Show({.text = "?", .buttons = buttons, .mayMute = mayMute}), answer);
  }
}

TEST(Bitmap, AnotherReaderFindsTheSamePixels) {
  for (int width = 1; width < 9; ++width) {
    std::vector<std::uint32_t> pixels(width * 5);
    for (std::uint32_t i = 0; i < pixels.size(); ++i) pixels[i] = 0xFF000000 + i * 0x12345;
    const auto read = QImage::fromData(QByteArray::fromStdString(BitmapBytes(pixels, width)));
    const auto* bytes = reinterpret_cast<const uchar*>(pixels.data());
    ASSERT_EQ(read, QImage(bytes, width, 5, QImage::Format_RGB32).convertToFormat(read.format()))
        << width;
  }
}

TEST(PrintedPage, ThePictureLiesAtItsInchesWhateverThePrinterIsSetTo) {
  qputenv("CUPS_SERVER", "127.0.0.1:1");
  Application own;
  QTemporaryDir folder;
  QtEventSource events;
  Waiting waiting(events);
  PagePrinter owner(waiting);
  const QString pdf = folder.filePath("page.pdf");
  const QString bitmap = folder.filePath("black.bmp");
  QImage black(320, 240, QImage::Format_RGB32);
  black.fill(Qt::black);
  ASSERT_TRUE(black.save(bitmap));
  const auto report = owner.MakeReport();
  for (const int resolution : {72, 300, 1200}) {
    SCOPED_TRACE(resolution);
    QPrinter& printer = owner.Printer();
    printer.setOutputFileName(pdf);
    printer.setResolution(resolution);
    printer.setFullPage(false);
    printer.setPageLayout(
        QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Landscape, QMarginsF(30, 40, 50, 60)));
    report->StartReport();
    report->StartPage(8.5F, 11.0F);
    report->AddPicture({1.1F, 2.0F, 7.28F, 5.2F}, bitmap.toStdString());
    report->AddPicture({0, 0, 8, 11}, "/no/picture.bmp");
    ASSERT_EQ(report->SendToPrinter(), std::nullopt);
    const QRectF printed = DarkPartOf(pdf);
    EXPECT_LT((printed.topLeft() - QPointF(1.1, 2)).manhattanLength(), 0.03);
    EXPECT_LT((printed.bottomRight() - QPointF(8.38, 7.2)).manhattanLength(), 0.03);
  }
  for (const auto& [path, reason] : {std::pair("/no/folder/a.pdf", "No such file or directory"),
                                     {"/dev/null", "Invalid argument"}}) {
    owner.Printer().setOutputFileName(path);
    EXPECT_EQ(report->SendToPrinter(), reason);
  }
  // No print server runs.
  owner.Printer().setOutputFileName({});
  QElapsedTimer time;
  time.start();
  EXPECT_TRUE(report->SendToPrinter().value_or("").starts_with("No printer can be used."));
  EXPECT_LT(time.elapsed(), 2000);
}

struct Help : testing::Test, Application {};

TEST_F(Help, NoLinkNoEntryOfTheContentsAndNoKeywordLeadsNowhere) {
  HelpFile file(HELP_FILE_PATH);
  ASSERT_FALSE(file.Failure()) << file.Failure()->toStdString();
  EXPECT_FALSE(file.Engine().documentsForKeyword("Zoom").isEmpty());
  QMap<QUrl, QByteArray> sources{
      {file.StartPage(), QByteArray::fromStdString(FileFolder::Bytes(HELP_PROJECT_PATH))}};
  const auto pages = file.Engine().files(file.StartPage().host(), QString(), "html");
  for (const QUrl& page : pages) sources[page] += file.Engine().fileData(page);
  static const QRegularExpression kLink("(?:href|src|ref)=\"([^\"]*)\"");
  for (auto source = sources.cbegin(); source != sources.cend(); ++source) {
    for (const auto& link : kLink.globalMatch(source.value())) {
      const QUrl target = source.key().resolved(QUrl(link.captured(1)));
      const QByteArray found = file.Engine().fileData(target);
      SCOPED_TRACE((source.key().toString() + ": " + link.captured(1)).toStdString());
      EXPECT_FALSE(found.isEmpty());
      if (!target.hasFragment()) continue;
      EXPECT_TRUE(found.contains("id=\"" + target.fragment().toUtf8() + "\""));
    }
  }
}

TEST_F(Help, EveryMessageOfTheCoreHasItsRow) {
  const QDir source(QFileInfo(HELP_PROJECT_PATH).path() + "/../../src");
  const QRegularExpression text(R"re(\.text =\s*(?:std::string\()?"([^"\\]+))re");
  HelpFile file(HELP_FILE_PATH);
  QString page = file.Engine().fileData(file.StartPage().resolved(QUrl("messages.html")));
  page = page.simplified();
  int messages = 0;
  for (QDirIterator at(source.path(), {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
       at.hasNext();) {
    const QString code = QString::fromStdString(FileFolder::Bytes(at.next().toStdString()));
    for (const auto& message : text.globalMatch(code)) {
      EXPECT_TRUE(page.contains(message.captured(1).trimmed()))
          << message.captured(1).toStdString();
      ++messages;
    }
  }
  EXPECT_GT(messages, 15);
}

TEST_F(Help, AFileThatCannotBeShownIsDescribedAndShowsNoWindow) {
  const std::string good = FileFolder::Bytes(HELP_FILE_PATH);
  const FileFolder files;
  const std::string broken = files.folder + "/broken.hlp";
  HelpWindow window(nullptr);
  const auto open = [&](const std::string& path) {
    return window.Open(path, HelpCommand::Contents, {}).value_or("");
  };
  EXPECT_NE(open(files.folder), "");
  for (const auto& bytes :
       {std::string(), std::string("no help"), good.substr(0, good.size() / 2)}) {
    FileFolder::Put(broken, bytes);
    EXPECT_NE(open(broken), "") << bytes.size();
    EXPECT_FALSE(window.isVisible());
  }
  EXPECT_EQ(open(HELP_FILE_PATH), "");
  EXPECT_TRUE(window.isVisible());
  EXPECT_TRUE(window.screen()->availableGeometry().contains(window.frameGeometry()));
}

// A key for the window, not for one of its widgets: a window that is blocked gets none.
void PressIn(QWidget& window, Qt::Key key) {
  QTest::keyClick(window.windowHandle(), key);
}

TEST_F(Windows, EachHasItsPageAndEachEntryOfAMenuItsKeywordAndItsKeys) {
  const auto add = [](std::size_t tool) {
    return [tool](MainModule& module) { module.main.Tools[tool].action(); };
  };
  Run({add(10), add(11), add(12), [](MainModule& module) {
         LoadDialogs(module);
         HelpFile file(HELP_FILE_PATH);
         const auto page = file.StartPage().resolved(QUrl("keys.html"));
         const QString keys = file.Engine().fileData(page);
         QSet<QString> windows, entries;
         for (const QWidget* widget : QApplication::allWidgets()) {
           const bool inner = widget->inherits("QMdiSubWindow") || widget->inherits("QDockWidget");
           if (inner || widget->inherits("QDialog") || widget->inherits("QMainWindow")) {
             windows << widget->objectName();
           }
           if (!widget->inherits("QMenu")) continue;
           for (const QAction* action : widget->actions()) {
             if (!action->objectName().startsWith("mnu")) continue;
             entries << action->text();
             const QString key = action->shortcut().toString();
             EXPECT_TRUE(key.isEmpty() || keys.contains("<td>" + key)) << key.toStdString();
           }
         }
         EXPECT_TRUE(windows.size() >= 15 && entries.size() >= 35)
             << windows.size() << " " << entries.size();
         for (const QString& window : windows) {
           EXPECT_FALSE(file.Engine().documentsForIdentifier(window).isEmpty())
               << window.toStdString();
         }
         for (QString entry : entries) {
           entry = entry.remove('&').remove("...").trimmed();
           EXPECT_FALSE(file.Engine().documentsForKeyword(entry).isEmpty()) << entry.toStdString();
         }
       }});
}

TEST_F(Windows, F1InADialogOpensItsPageInAHelpWindowThatIsNotBlocked) {
  const std::pair<void (*)(MainModule&), QString> rows[] = {
      {[](MainModule& module) { module.main.mnuToolsOptions.Click(); }, "options.html"},
      {[](MainModule& module) { module.main.mnuHelpAbout.Click(); }, "window.html"},
      {[](MainModule& module) { module.main.mnuFilePageSetup.Click(); }, "output.html"},
      {[](MainModule& module) { module.main.tbToolBar_ButtonClick("FFT"); }, "fft.html"},
      {[](MainModule& module) { View(module).cmdRefresh.Click(); }, "messages.html"},
      {[](MainModule&) { The<QPushButton>("cmdPassFailed").click(); }, "limits.html"},
  };
  std::vector<Step> steps{AddView, [](MainModule& module) { module.main.Tools[11].action(); }};
  for (const auto& [open, page] : rows) {
    steps.insert(steps.end(), {Later(open),
                               [](MainModule&) {
                                 ASSERT_NE(QApplication::activeModalWidget(), nullptr);
                                 PressIn(*QApplication::activeModalWidget(), Qt::Key_F1);
                               },
                               [page = page](MainModule&) {
                                 QWidget* help = Shown("HelpWindow");
                                 ASSERT_NE(help, nullptr) << page.toStdString();
                                 EXPECT_EQ(The<QTextBrowser>("HelpPage").source().fileName(), page);
                                 PressIn(*help, Qt::Key_Escape);
                                 EXPECT_FALSE(help->isVisible()) << page.toStdString();
                                 help->show();  // and beside the next dialog
                                 PressIn(*QApplication::activeModalWidget(), Qt::Key_Escape);
                               }});
  }
  Run(steps);
}

struct Bar : testing::Test, Application, QProgressBar {
  void paintEvent(QPaintEvent* event) override {
    QProgressBar::paintEvent(event);
    painted.push_back(value());
  }
  std::vector<int> painted;
};

TEST_F(Bar, EachNumberIsPaintedOnceWithoutServingEvents) {
  ProgressBar model;
  Bind(*this, model);
  show();
  QCoreApplication::processEvents();
  painted.clear();
  for (const double percent : {4.6, 5.2, 5.4, 6.0, 300.0}) {
    model.SetValue(percent);
    model.Refresh();
  }
  EXPECT_EQ(painted, (std::vector{5, 6}));
}

}  // namespace
}  // namespace oriolemark
