#pragma once

#include <vector>

#include "platform/Dictionary.h"
#include "platform/EventSource.h"

namespace zelto {

// A menu item, or a menu with items.
class MenuItem : public Object {
 public:
  static const Class& ClassTable();
  virtual void Constructor() {}

  const String& Name() const { return mName; }
  void Name(const String& name) { mName = name; }
  bool AutoEnable() const { return mAutoEnable; }
  void AutoEnable(bool autoEnable) { mAutoEnable = autoEnable; }
  // "&" precedes the access key. "-" is a separator.
  const String& Text() const { return mText; }
  void Text(const String& text) { mText = text; }
  // "Cmd+" and a capital letter, or nil for no shortcut. "Cmd" is mapped to Qt's Ctrl.
  const String& KeyboardShortcut() const { return mKeyboardShortcut; }
  void KeyboardShortcut(const String& shortcut) { mKeyboardShortcut = shortcut; }

  bool Enabled() const { return mEnabled; }
  void Enable() { mEnabled = true; }
  void Disable() { mEnabled = false; }

  void Append(const Ref<MenuItem>& item) { mItems.push_back(item); }
  const std::vector<Ref<MenuItem>>& Items() const { return mItems; }
  // Returns the direct child with the name, or nil.
  Ref<MenuItem> Child(const String& name) const;
  // Returns the descendant with the name, or nil.
  Ref<MenuItem> Lookup(const String& name) const;

  // Performs the action of the item's class. Returns False if the class has none.
  virtual bool Event_Action() { return false; }

 private:
  String mName;
  bool mAutoEnable = false;
  String mText;
  String mKeyboardShortcut;
  bool mEnabled = false;
  std::vector<Ref<MenuItem>> mItems;
};

// The About item of the application. Some desktops move it to a menu of their own.
class AppleMenuItem : public MenuItem {};

// The Quit item of the application. Some desktops move it to a menu of their own.
class QuitMenuItem : public MenuItem {
 public:
  bool Event_Action() override;
};

class MenuBar : public MenuItem {
 public:
  static const Class& ClassTable();
};

// The base class of Application and Window. Holds handlers of menu items.
class MenuTarget : public EventSource {
 public:
  // `name` is the name of the menu item. Replaces the handler that it has.
  void AddMenuHandler(const String& name, const Method& handler) {
    SetValue(mMenuHandlers, name, handler);
  }
  // Raises EnableMenuItems and enables the items that have a handler.
  void EnableMenuItems(const std::vector<Ref<MenuItem>>& items);
  // Returns False if the item has no handler or the handler returns False.
  bool CallMenuHandler(const String& name);

 private:
  Dictionary<Method> mMenuHandlers;
};

}  // namespace zelto
