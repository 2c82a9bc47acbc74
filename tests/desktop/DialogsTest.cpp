#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPageSize>
#include <QProcess>
#include <QSettings>
#include <QTreeWidget>
#include <random>

#include "desktop/RunWindows.h"
#include "drivers/PagePrinter.h"
#include "drivers/QtEventSource.h"
#include "drivers/QtPrompts.h"
#include "drivers/QtSettingsStore.h"
#include "output/Bitmap.h"
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
         ASSERT_NE(item, nullptr);
         EXPECT_EQ(item->text(0), "Method [VIDEO]") << "in the tree built anew";
         EXPECT_TRUE(item->parent()->isExpanded());
         module.controlDocument.CtrlChanged = false;  // no question at the end
       }},
      16);
  instrument.write("quit\n");
  EXPECT_TRUE(instrument.waitForFinished(5000));
}

struct PromptsTest : testing::Test, Application {
  // What the user does once the box or dialog is up.
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
  std::mt19937 random;
  for (int width = 1; width < 40; ++width) {
    const int height = 1 + static_cast<int>(random() % 30);
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width * height));
    for (std::uint32_t& pixel : pixels) pixel = 0xFF000000 | static_cast<std::uint32_t>(random());
    const auto read = QImage::fromData(QByteArray::fromStdString(BitmapBytes(pixels, width)));
    const auto* bytes = reinterpret_cast<const uchar*>(pixels.data());
    ASSERT_EQ(read,
              QImage(bytes, width, height, QImage::Format_RGB32).convertToFormat(read.format()))
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

}  // namespace
}  // namespace oriolemark
