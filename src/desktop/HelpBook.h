#pragma once

#include <QTextBrowser>
#include <QWidget>
#include <memory>

#include "platform/HelpViewer.h"

class QHelpContentWidget;
class QHelpIndexWidget;
class QHelpSearchEngine;
class QLineEdit;
class QListWidget;
class QTabWidget;

namespace oriolemark {

class HelpFile;

// A page of the help file, its pictures and its style sheet. Follows links within the file only.
class HelpPage : public QTextBrowser {
 public:
  HelpPage(HelpFile& file, QWidget* parent);

  QVariant loadResource(int type, const QUrl& name) override;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void ColorLinks();

  HelpFile& file_;
};

// The contents of the help window for one file. Shows the start page first.
class HelpBook : public QWidget {
 public:
  explicit HelpBook(std::unique_ptr<HelpFile> file);
  ~HelpBook() override;

  const HelpFile& File() const { return *file_; }
  // Contents shows the contents tab and the start page. Context shows the contents tab and the
  // page of this topic. PartialKey shows the index, with the cursor in its empty search line.
  void Turn(HelpCommand command, const QString& topic);

 private:
  QUrl PageOf(const QString& topic) const;
  QWidget& MakeBar();
  QWidget& MakeIndex();
  QWidget& MakeSearch();
  QLineEdit& AddSearchLine(QWidget& tab, const char* name, const QString& text, QWidget& list);
  void ConnectContents();
  void ShowResults();

  std::unique_ptr<HelpFile> file_;
  std::unique_ptr<QHelpSearchEngine> search_;
  QHelpContentWidget& contents_;
  QHelpIndexWidget& index_;
  HelpPage& page_;
  QTabWidget& tabs_;
  QListWidget& results_;
  QLineEdit* keyword_ = nullptr;
};

}  // namespace oriolemark
