#include "desktop/HelpBook.h"

#include <QAction>
#include <QEvent>
#include <QHeaderView>
#include <QHelpContentWidget>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QHelpSearchEngine>
#include <QHelpSearchResult>
#include <QLineEdit>
#include <QListWidget>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>

#include "desktop/Bind.h"
#include "desktop/HelpFile.h"

namespace oriolemark {
namespace {

constexpr int kContentsTab = 0;
constexpr int kIndexTab = 1;
constexpr int kPageMargin = 16;
constexpr int kMostResults = 50;
constexpr int kContentsWidth = 36;  // characters

// A link in the desktop's own blue cannot be read on black.
QColor LinkColorOn(const QColor& background) {
  return background.lightness() < 128 ? QColor(0x8a, 0xb8, 0xff) : QColor(0x0b, 0x4f, 0xb8);
}

}  // namespace

HelpPage::HelpPage(HelpFile& file, QWidget* parent) : QTextBrowser(parent), file_(file) {
  Name(*this, "HelpPage", "Page");
  setFrameShape(QFrame::NoFrame);
  setOpenExternalLinks(false);
  document()->setDocumentMargin(kPageMargin);
  ColorLinks();
}

QVariant HelpPage::loadResource(int type, const QUrl& name) {
  return name.scheme() == "qthelp" ? file_.Engine().fileData(name)
                                   : QTextBrowser::loadResource(type, name);
}

void HelpPage::changeEvent(QEvent* event) {
  QTextBrowser::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  ColorLinks();
  reload();
}

void HelpPage::ColorLinks() {
  const QColor color = LinkColorOn(palette().color(QPalette::Base));
  document()->setDefaultStyleSheet("a { color: " + color.name() + "; }");
}

HelpBook::HelpBook(std::unique_ptr<HelpFile> file)
    : file_(std::move(file)),
      search_(std::make_unique<QHelpSearchEngine>(&file_->Engine())),
      contents_(*file_->Engine().contentWidget()),
      index_(*file_->Engine().indexWidget()),
      page_(Make<HelpPage>(*file_, this)),
      tabs_(Make<QTabWidget>()),
      results_(Make<QListWidget>()) {
  Name(tabs_, "HelpTabs", "Ways to find a page");
  Name(contents_, "HelpContents", "Contents");
  // A long title can be scrolled to.
  contents_.header()->setStretchLastSection(false);
  contents_.header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  // All three tabs are visible at once.
  tabs_.setUsesScrollButtons(false);
  tabs_.addTab(&contents_, "&Contents");
  tabs_.addTab(&MakeIndex(), "&Index");
  tabs_.addTab(&MakeSearch(), "&Search");
  auto& halves = Make<QSplitter>();
  halves.addWidget(&tabs_);
  halves.addWidget(&page_);
  halves.setChildrenCollapsible(false);
  halves.setStretchFactor(1, 1);
  const int contentsWidth = kContentsWidth * fontMetrics().averageCharWidth();
  halves.setSizes({contentsWidth, 2 * contentsWidth});
  auto& layout = Make<QVBoxLayout>(this);
  layout.setContentsMargins(0, 0, 0, 0);
  layout.setSpacing(0);
  layout.addWidget(&MakeBar());
  layout.addWidget(&halves, 1);
  ConnectContents();
  page_.setSource(file_->StartPage());
  search_->reindexDocumentation();
}

HelpBook::~HelpBook() {
  // The widgets use the file's models, so they are deleted first.
  qDeleteAll(findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
}

QUrl HelpBook::PageOf(const QString& topic) const {
  for (const QString& name : topic.split('\n', Qt::SkipEmptyParts)) {
    const auto pages = file_->Engine().documentsForIdentifier(name);
    if (!pages.isEmpty()) return pages.first().url;
  }
  return file_->StartPage();
}

void HelpBook::Turn(HelpCommand command, const QString& topic) {
  if (command == HelpCommand::PartialKey) {
    tabs_.setCurrentIndex(kIndexTab);
    keyword_->clear();
    keyword_->setFocus();
  } else {
    tabs_.setCurrentIndex(kContentsTab);
    page_.setSource(PageOf(topic));
    contents_.setFocus();
  }
}

QWidget& HelpBook::MakeBar() {
  auto& bar = Make<QToolBar>();
  const auto add = [&](const QString& text, const char* keys,
                       void (QTextBrowser::*turn)()) -> QAction& {
    QAction& action = *bar.addAction(text);
    action.setShortcut(QKeySequence(keys));
    action.setToolTip(text + " (" + keys + ")");
    connect(&action, &QAction::triggered, &page_, turn);
    return action;
  };
  QAction& back = add("Back", "Alt+Left", &QTextBrowser::backward);
  QAction& forward = add("Forward", "Alt+Right", &QTextBrowser::forward);
  add("Home", "Alt+Home", &QTextBrowser::home);
  back.setEnabled(false);
  forward.setEnabled(false);
  connect(&page_, &QTextBrowser::backwardAvailable, &back, &QAction::setEnabled);
  connect(&page_, &QTextBrowser::forwardAvailable, &forward, &QAction::setEnabled);
  return bar;
}

void HelpBook::ConnectContents() {
  const auto open = [this](const QModelIndex& place) {
    if (const auto* item = file_->Engine().contentModel()->contentItemAt(place)) {
      page_.setSource(item->url());
    }
  };
  connect(&contents_, &QTreeView::clicked, this, open);
  connect(&contents_, &QTreeView::activated, this, open);
  connect(file_->Engine().contentModel(), &QHelpContentModel::contentsCreated, &contents_, [this] {
    contents_.expandAll();
    contents_.setCurrentIndex(contents_.indexOf(page_.source()));
  });
  connect(&page_, &QTextBrowser::sourceChanged, &contents_, [this](const QUrl& url) {
    const QModelIndex place = contents_.indexOf(url);
    if (place.isValid()) contents_.setCurrentIndex(place);
  });
}

QLineEdit& HelpBook::AddSearchLine(QWidget& tab, const char* name, const QString& text,
                                   QWidget& list) {
  auto& layout = Make<QVBoxLayout>(&tab);
  auto& line = Make<QLineEdit>();
  Name(line, name, text);
  line.setPlaceholderText(text);
  line.setClearButtonEnabled(true);
  auto& down = Make<QShortcut>(QKeySequence(Qt::Key_Down), &line);
  down.setContext(Qt::WidgetShortcut);
  connect(&down, &QShortcut::activated, &list, [&list] { list.setFocus(); });
  layout.addWidget(&line);
  layout.addWidget(&list, 1);
  tab.setFocusProxy(&line);
  return line;
}

QWidget& HelpBook::MakeIndex() {
  auto& tab = Make<QWidget>();
  Name(index_, "HelpKeywords", "Keywords");
  keyword_ = &AddSearchLine(tab, "HelpKeyword", "Look for a keyword", index_);
  connect(keyword_, &QLineEdit::textChanged, &index_,
          [this](const QString& text) { index_.filterIndices(text, {}); });
  connect(keyword_, &QLineEdit::returnPressed, &index_, &QHelpIndexWidget::activateCurrentItem);
  connect(&index_, &QListView::clicked, &index_, &QHelpIndexWidget::activateCurrentItem);
  connect(&index_, &QHelpIndexWidget::documentActivated, &page_,
          [this](const QHelpLink& link) { page_.setSource(link.url); });
  connect(&index_, &QHelpIndexWidget::documentsActivated, &page_,
          [this](const QList<QHelpLink>& links) { page_.setSource(links.first().url); });
  return tab;
}

QWidget& HelpBook::MakeSearch() {
  auto& tab = Make<QWidget>();
  Name(results_, "HelpResults", "Pages found");
  QLineEdit& words = AddSearchLine(tab, "HelpWords", "Search all pages", results_);
  connect(&words, &QLineEdit::returnPressed, this,
          [this, &words] { search_->search(words.text()); });
  connect(search_.get(), &QHelpSearchEngine::searchingFinished, this, [this] { ShowResults(); });
  const auto open = [this](const QListWidgetItem* item) {
    page_.setSource(item->data(Qt::UserRole).toUrl());
  };
  connect(&results_, &QListWidget::itemClicked, this, open);
  connect(&results_, &QListWidget::itemActivated, this, open);
  return tab;
}

void HelpBook::ShowResults() {
  results_.clear();
  for (const QHelpSearchResult& result : search_->searchResults(0, kMostResults)) {
    auto& item = Make<QListWidgetItem>(result.title(), &results_);
    item.setData(Qt::UserRole, result.url());
  }
  if (results_.count() > 0) return;
  auto& none = Make<QListWidgetItem>("No page has these words.", &results_);
  none.setFlags(Qt::NoItemFlags);
}

}  // namespace oriolemark
