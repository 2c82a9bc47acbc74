#include "desktop/Menus.h"

#include <QAction>
#include <QMenu>
#include <QPointer>
#include <utility>

#include "desktop/Bind.h"

namespace oriolemark {

void FillMenu(QMenu& menu, const std::vector<MenuEntry*>& entries) {
  for (MenuEntry* entry : entries) {
    if (entry == nullptr) {
      menu.addSeparator();
      continue;
    }
    QAction* action = nullptr;
    if (entry->submenu.empty()) {
      action = &Make<QAction>(&menu);
      menu.addAction(action);
    } else {
      QMenu& submenu = Make<QMenu>(&menu);
      FillMenu(submenu, entry->submenu);
      action = menu.addMenu(&submenu);
    }
    Bind(*action, *entry);
    action->setObjectName(FromWire(entry->name));
    action->setShortcut(QKeySequence(FromWire(entry->keys)));
  }
}

void AddPopup(QWidget& pane, const QString& name, PopupMenu& model, std::function<QPoint()> place) {
  auto& menu = Make<QMenu>(&pane);
  menu.setObjectName(name);
  FillMenu(menu, model.entries);
  const QPointer<QMenu> guard(&menu);
  model.onPopup = [guard, place = std::move(place)] {
    if (guard) guard->popup(place());
  };
}

}  // namespace oriolemark
