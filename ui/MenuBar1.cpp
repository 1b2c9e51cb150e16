#include "ui/MenuBar1.h"

namespace zelto {

namespace {

Ref<class MenuBar1> implicitInstance;

template <class Item = MenuItem>
Ref<MenuItem> NewItem(const String& name, const String& text) {
  Ref<MenuItem> item = RuntimeNewObject<Item>();
  item->Constructor();
  item->Name(name);
  item->AutoEnable(true);
  item->Text(text);
  return item;
}

template <class Item = MenuItem>
Ref<MenuItem> NewItem(const String& name, const String& text, const String& shortcut) {
  auto item = NewItem<Item>(name, text);
  item->KeyboardShortcut(shortcut);
  return item;
}

void AddTo(const MenuItem& bar, const String& menu, const Ref<MenuItem>& item) {
  bar.Child(menu)->Append(item);
}

}  // namespace

const Class& MenuBar1::ClassTable() {
  static const Class table({.Name = "MenuBar1.MenuBar1", .Base = &MenuBar::ClassTable()});
  return table;
}

void MenuBar1::Constructor() {
  FileMenu();
  EditMenu();
}

void MenuBar1::FileMenu() {
  Append(NewItem("FileMenu", "&File", {}));
  AddTo(*this, "FileMenu", NewItem<QuitMenuItem>("FileQuit", "&Quit", "Cmd+Q"));
  AddTo(*this, "FileMenu",
        NewItem<AppleMenuItem>("mAbout", "About ZELTO Group Update Utility", {}));
}

void MenuBar1::EditMenu() {
  Append(NewItem("EditMenu", "&Edit", {}));
  AddTo(*this, "EditMenu", NewItem("EditUndo", "&Undo", "Cmd+Z"));
  AddTo(*this, "EditMenu", NewItem("UntitledMenu1", "-"));
  AddTo(*this, "EditMenu", NewItem("EditCut", "Cu&t", "Cmd+X"));
  AddTo(*this, "EditMenu", NewItem("EditCopy", "&Copy", "Cmd+C"));
  AddTo(*this, "EditMenu", NewItem("EditPaste", "&Paste", "Cmd+V"));
  AddTo(*this, "EditMenu", NewItem("EditClear", "&Delete", {}));
  AddTo(*this, "EditMenu", NewItem("UntitledMenu0", "-"));
  AddTo(*this, "EditMenu", NewItem("EditSelectAll", "Select &All", "Cmd+A"));
}

void MenuBar1::Finalize() { implicitInstance = nullptr; }

Ref<class MenuBar1> MenuBar1() {
  if (!implicitInstance) {
    const auto bar = RuntimeNewObject<class MenuBar1>();
    bar->Constructor();
    implicitInstance = bar;
  }
  return implicitInstance;
}

}  // namespace zelto
