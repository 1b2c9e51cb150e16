#include "platform/qt/MenuBar.h"

#include <QApplication>
#include <QMenu>

#include "platform/Application.h"
#include "platform/qt/Editing.h"
#include "platform/qt/Text.h"

namespace zelto {

namespace {

QAction::MenuRole RoleOf(const Ref<MenuItem>& item) {
  if (RuntimeObjectIsa<AppleMenuItem>(item)) return QAction::AboutRole;
  if (RuntimeObjectIsa<QuitMenuItem>(item)) return QAction::QuitRole;
  return QAction::NoRole;
}

// "Cmd+" is Qt's Ctrl on every system.
QKeySequence ShortcutOf(const Ref<MenuItem>& item) {
  return {ToDisplayText(item->KeyboardShortcut()).replace("Cmd+", "Ctrl+")};
}

void RunCommand(Window& window, const MenuItem& item) {
  if (window.CallMenuHandler(item.Name())) return;
  if (GetAppObject()->CallMenuHandler(item.Name())) return;
  Edit(item.Name());
}

void ConnectItem(Window& window, const Ref<MenuItem>& item, QAction& action, QObject& context) {
  QObject::connect(&action, &QAction::triggered, &context, [&window, item] {
    if (HandlerWaits()) return;
    InvokeHandler(window, [&window, item] {
      if (!item->Event_Action()) RunCommand(window, *item);
    });
  });
}

// Enables the applicable editing commands, the Quit item, and the items with a handler.
void Enable(Window& window, const Ref<MenuItem>& menu) {
  for (const auto& item : menu->Items()) {
    item->Disable();
    const bool isQuit = RuntimeObjectIsa<QuitMenuItem>(item);
    if (item->AutoEnable() && (isQuit || CanEdit(item->Name()))) item->Enable();
  }
  GetAppObject()->EnableMenuItems(menu->Items());
  window.EnableMenuItems(menu->Items());
}

void EnableActions(Window& window, const Ref<MenuItem>& menu, const QMenu& widget) {
  Enable(window, menu);
  const auto actions = widget.actions();
  for (qsizetype i = 0; i < actions.size(); ++i) {
    actions[i]->setEnabled(menu->Items().at(static_cast<std::size_t>(i))->Enabled());
  }
}

void AddItem(Window& window, QMenu& widget, const Ref<MenuItem>& item, QObject& context) {
  if (item->Text() == "-") {
    widget.addSeparator();
    return;
  }
  QAction* action = widget.addAction(ToDisplayText(item->Text()));
  action->setMenuRole(RoleOf(item));
  action->setShortcut(ShortcutOf(item));
  action->setAutoRepeat(false);  // a second request to quit can end the program
  ConnectItem(window, item, *action, context);
}

}  // namespace

QMenuBar* NewMenuBar(Window& window, const Ref<MenuBar>& bar, QObject& context) {
  auto* widget = new QMenuBar;
  std::vector<std::pair<Ref<MenuItem>, QMenu*>> menus;
  for (const auto& menu : bar->Items()) {
    menus.emplace_back(menu, widget->addMenu(ToDisplayText(menu->Text())));
    for (const auto& item : menu->Items()) AddItem(window, *menus.back().second, item, context);
  }
  FollowEditing(context, [&window, menus] {
    InvokeHandler(window, [&] {
      for (const auto& [menu, menuWidget] : menus) EnableActions(window, menu, *menuWidget);
    });
  });
  return widget;
}

}  // namespace zelto
