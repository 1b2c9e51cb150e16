#include "ui/MenuBar1.h"

namespace zelto {

namespace {

Ref<class MenuBar1> implicitInstance;

template <class Item = MenuItem>
void AddItem(MenuItem& menu, const String& name, const String& text, const String& shortcut = {}) {
  const auto item = RuntimeNewObject<Item>();
  item->Constructor();
  item->Name(name);
  item->AutoEnable(true);
  item->Text(text);
  item->KeyboardShortcut(shortcut);
  menu.Append(item);
}

}  // namespace

const Class& MenuBar1::ClassTable() {
  static const Class table({.Name = "MenuBar1.MenuBar1"});
  return table;
}

void MenuBar1::Constructor() {
  FileMenu();
  EditMenu();
}

void MenuBar1::FileMenu() {
  AddItem(*this, "FileMenu", "&File");
  AddItem<QuitMenuItem>(*Child("FileMenu"), "FileQuit", "&Quit", "Cmd+Q");
  AddItem<AppleMenuItem>(*Child("FileMenu"), "mAbout", "About ZELTO Group Update Utility");
}

void MenuBar1::EditMenu() {
  AddItem(*this, "EditMenu", "&Edit");
  AddItem(*Child("EditMenu"), "EditUndo", "&Undo", "Cmd+Z");
  AddItem(*Child("EditMenu"), "UntitledMenu1", "-");
  AddItem(*Child("EditMenu"), "EditCut", "Cu&t", "Cmd+X");
  AddItem(*Child("EditMenu"), "EditCopy", "&Copy", "Cmd+C");
  AddItem(*Child("EditMenu"), "EditPaste", "&Paste", "Cmd+V");
  AddItem(*Child("EditMenu"), "EditClear", "&Delete");
  AddItem(*Child("EditMenu"), "UntitledMenu0", "-");
  AddItem(*Child("EditMenu"), "EditSelectAll", "Select &All", "Cmd+A");
}

void MenuBar1::Finalize() { implicitInstance = nullptr; }

Ref<class MenuBar1> MenuBar1() {
  if (!implicitInstance) {
    implicitInstance = RuntimeNewObject<class MenuBar1>();
    implicitInstance->Constructor();
  }
  return implicitInstance;
}

}  // namespace zelto
