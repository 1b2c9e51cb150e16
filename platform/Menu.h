#pragma once

#include <vector>

#include "platform/EventSource.h"

namespace zelto {

// An entry of a menu bar, or a menu with entries of its own.
class MenuItem : public Object {
 public:
  virtual void Constructor() {}

  const String& Name() const { return mName; }
  void Name(const String& name) { mName = name; }
  bool AutoEnable() const { return mAutoEnable; }
  void AutoEnable(bool autoEnable) { mAutoEnable = autoEnable; }
  // "&" stands before the access letter; "-" is a separator.
  const String& Text() const { return mText; }
  void Text(const String& text) { mText = text; }
  // "Cmd+" and a capital letter, or nil.
  const String& KeyboardShortcut() const { return mKeyboardShortcut; }
  void KeyboardShortcut(const String& shortcut) { mKeyboardShortcut = shortcut; }

  bool Enabled() const { return mEnabled; }
  void Enable() { mEnabled = true; }
  void Disable() { mEnabled = false; }

  void Append(const Ref<MenuItem>& item) { mItems.push_back(item); }
  const std::vector<Ref<MenuItem>>& Items() const { return mItems; }
  // The item of the name among this one's own; nil when there is none.
  Ref<MenuItem> Child(const String& name) const;
  // The same, at any depth.
  Ref<MenuItem> Lookup(const String& name) const;

  // What the item does by its class. False: nothing.
  virtual bool Event_Action() { return false; }

 private:
  String mName;
  bool mAutoEnable = false;
  String mText;
  String mKeyboardShortcut;
  bool mEnabled = false;
  std::vector<Ref<MenuItem>> mItems;
};

// Goes to the place of the application's About item, where the desktop has one.
class AppleMenuItem : public MenuItem {};

// Quits the application; goes to the place of its Quit item.
class QuitMenuItem : public MenuItem {
 public:
  bool Event_Action() override;
};

class MenuBar : public MenuItem {};

// The handlers of menu items, by the items' names.
class MenuHandlers {
 public:
  void Add(const String& itemName, const Method& handler) {
    mHandlers.emplace_back(itemName, handler);
  }
  // Enables each item that has a handler.
  void Enable(const std::vector<Ref<MenuItem>>& items) const;
  // Calls the item's handler; False when there is none.
  bool Call(Object& self, const String& itemName) const;

 private:
  const Method* Find(const String& itemName) const;

  std::vector<std::pair<String, Method>> mHandlers;
};

}  // namespace zelto
