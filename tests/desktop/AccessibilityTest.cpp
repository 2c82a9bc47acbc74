#include <QAccessible>
#include <algorithm>

#include "desktop/RunWindows.h"

namespace oriolemark {
namespace {

std::string Path(QAccessibleInterface* element) {
  std::string path;
  for (; element != nullptr && element->object() != nullptr; element = element->parent()) {
    path = element->object()->metaObject()->className() +
           (" " + element->object()->objectName().toStdString() + "/") + path;
  }
  return path;
}

bool Worked(QAccessibleInterface& element) {
  // Lines, rooms and the inner window of a scrolled one take clicks without meaning anything.
  static const QAccessible::Role kSilent[] = {QAccessible::Client, QAccessible::Window,
                                              QAccessible::Dialog, QAccessible::Separator};
  if (std::ranges::find(kSilent, element.role()) != std::end(kSilent)) return false;
  QAccessibleActionInterface* actions = element.actionInterface();
  const bool clicked = actions != nullptr &&
                       actions->actionNames().contains(QAccessibleActionInterface::pressAction());
  return element.state().focusable || clicked;
}

// The elements under this one that the user works, hidden ones too; counts them.
int ExpectNames(QAccessibleInterface* element) {
  if (element == nullptr || element->role() == QAccessible::Separator) return 0;
  int found = Worked(*element) ? 1 : 0;
  EXPECT_FALSE(found != 0 && element->text(QAccessible::Name).isEmpty()) << Path(element);
  for (int i = 0; i < element->childCount(); ++i) found += ExpectNames(element->child(i));
  return found;
}

TEST_F(Windows, EveryElementThatIsWorkedHasAName) {
  Run({[](MainModule& module) { module.main.Tools[10].action(); },
       [](MainModule&) {
         int found = 0;
         for (QWidget* window : QApplication::topLevelWidgets()) {
           found += ExpectNames(QAccessible::queryAccessibleInterface(window));
         }
         EXPECT_GT(found, 60);
       }});
}

TEST_F(Windows, TheRefreshButtonSaysWhatItWillDo) {
  Run({[](MainModule& module) { module.main.Tools[10].action(); },
       [](MainModule& module) {
         auto& view = dynamic_cast<frmWave&>(*module.sheet.WaveViews[0]);
         const auto name = [] {
           return QAccessible::queryAccessibleInterface(Shown("cmdRefresh"))
               ->text(QAccessible::Name);
         };
         EXPECT_EQ(name(), "Refresh");
         view.cmdRefresh.SetFace(kStopFace);
         EXPECT_EQ(name(), "Stop");
       }});
}

}  // namespace
}  // namespace oriolemark
