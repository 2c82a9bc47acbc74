#include "desktop/ListPanel.h"

#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

#include "desktop/Bind.h"

namespace oriolemark {
namespace {

constexpr int kMargin = 3;  // pixels

}  // namespace

ListPanel::ListPanel(ReadingView& form)
    : ReadingPanel(form), bar_(Make<QHBoxLayout>()), column_(Make<QVBoxLayout>(this)) {
  column_.setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  column_.addLayout(&bar_);
  AddRefresh(bar_);
  AddChannels(bar_);
  bar_.addStretch(1);
}

void ListPanel::AddList(Label& title, QTableView& list) {
  auto& setting = Make<QLabel>();
  setting.setObjectName("SettingLabel");
  column_.addWidget(&setting);
  Bind(setting, title);
  column_.addWidget(&list);
}

}  // namespace oriolemark
