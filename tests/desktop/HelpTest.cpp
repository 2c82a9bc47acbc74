#include <QHelpLink>
#include <QRegularExpression>
#include <QScreen>
#include <QTextBrowser>

#include "desktop/HelpFile.h"
#include "desktop/HelpWindow.h"
#include "desktop/RunWindows.h"
#include "support/FileFolder.h"

namespace oriolemark {
namespace {

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

TEST_F(Windows, F1InADialogOpensItsPageInAHelpWindowThatIsNotBlocked) {
  const std::pair<void (*)(MainModule&), QString> rows[] = {
      {[](MainModule& module) { module.main.mnuToolsOptions.Click(); }, "options.html"},
      {[](MainModule& module) { module.main.mnuHelpAbout.Click(); }, "index.html"},
      {[](MainModule& module) { module.main.tbToolBar_ButtonClick("FFT"); }, "fft.html"},
      {[](MainModule& module) { View(module).cmdRefresh.Click(); }, "messages.html"},
      {[](MainModule& module) {
         module.main.Tools[11].action();
         dynamic_cast<frmMeasure&>(*module.sheet.MeasureViews[0]).cmdPassFailed.Click();
       },
       "limits.html"},
  };
  std::vector<Step> steps{AddView};
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

}  // namespace
}  // namespace oriolemark
