#pragma once

#include <QPoint>
#include <QString>
#include <functional>
#include <vector>

#include "platform/PopupMenu.h"

class QMenu;
class QWidget;

namespace oriolemark {

// Adds the entries to the menu, with their submenus. A null entry is a separator.
void FillMenu(QMenu& menu, const std::vector<MenuEntry*>& entries);

// Gives the pane a popup menu with this name. It opens at `place`, in pixels of the screen.
void AddPopup(QWidget& pane, const QString& name, PopupMenu& model, std::function<QPoint()> place);

}  // namespace oriolemark
