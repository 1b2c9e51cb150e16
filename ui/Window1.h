#pragma once

#include "platform/Window.h"

namespace zelto {

class DragItem;

// The main window.
class Window1 : public ListWindow<class Window1> {
 public:
  static const Class& ClassTable();
  static String List();
  static std::vector<ControlRow> Controls();

  Ref<EditField> EditField1() { return ControlNamed<EditField>(*this, "EditField1"); }
  Ref<BevelButton> BevelButton1() { return ControlNamed<BevelButton>(*this, "BevelButton1"); }
  Ref<PushButton> pbTest() { return ControlNamed<PushButton>(*this, "pbTest"); }
  Ref<PushButton> pbUpdate() { return ControlNamed<PushButton>(*this, "pbUpdate"); }
  Ref<StaticText> StaticText1() { return ControlNamed<StaticText>(*this, "StaticText1"); }
  Ref<Canvas> Canvas1() { return ControlNamed<Canvas>(*this, "Canvas1"); }
  Ref<StaticText> stStatus() { return ControlNamed<StaticText>(*this, "stStatus"); }
  Ref<EditField> EditField2() { return ControlNamed<EditField>(*this, "EditField2"); }
  Ref<StaticText> StaticText2() { return ControlNamed<StaticText>(*this, "StaticText2"); }
  Ref<StaticText> StaticText3() { return ControlNamed<StaticText>(*this, "StaticText3"); }
  Ref<StaticText> stProduct() { return ControlNamed<StaticText>(*this, "stProduct"); }
  Ref<StaticText> StaticText5() { return ControlNamed<StaticText>(*this, "StaticText5"); }
  Ref<StaticText> stVersion() { return ControlNamed<StaticText>(*this, "stVersion"); }

  void Layout() override;
  virtual void EditField1_Open();
  virtual void EditField1_DropObject(const Ref<DragItem>& obj, Int32 action);
  virtual void EditField1_TextChange();
  virtual void BevelButton1_Action();
  virtual void pbTest_Action();
  virtual void pbUpdate_Action();

  Ref<MenuItem> EditMenu() { return MenuItemNamed<MenuItem>("EditMenu"); }
  Ref<MenuItem> EditSelectAll() { return MenuItemNamed<MenuItem>("EditSelectAll"); }
  Ref<MenuItem> UntitledMenu0() { return MenuItemNamed<MenuItem>("UntitledMenu0"); }
  Ref<MenuItem> EditClear() { return MenuItemNamed<MenuItem>("EditClear"); }
  Ref<MenuItem> EditPaste() { return MenuItemNamed<MenuItem>("EditPaste"); }
  Ref<MenuItem> EditCopy() { return MenuItemNamed<MenuItem>("EditCopy"); }
  Ref<MenuItem> EditCut() { return MenuItemNamed<MenuItem>("EditCut"); }
  Ref<MenuItem> UntitledMenu1() { return MenuItemNamed<MenuItem>("UntitledMenu1"); }
  Ref<MenuItem> EditUndo() { return MenuItemNamed<MenuItem>("EditUndo"); }
  Ref<MenuItem> FileMenu() { return MenuItemNamed<MenuItem>("FileMenu"); }
  Ref<AppleMenuItem> mAbout() { return MenuItemNamed<AppleMenuItem>("mAbout"); }
  Ref<QuitMenuItem> FileQuit() { return MenuItemNamed<QuitMenuItem>("FileQuit"); }

  virtual void AddMenuHandlers(const Ref<Window>& target);
  virtual void Event_Open();
  virtual void Event_Close();
  virtual bool mAbout_Action();
  // Checks the file whose path is in EditField1. Returns whether to use that file.
  virtual bool CheckFile(const String& path);

 private:
  // Extracts the record of the file and shows it. Returns false if it cannot.
  bool ShowRecord();

  template <class T>
  Ref<T> MenuItemNamed(const String& name) {
    return RuntimeCheckCast<T>(MenuBar()->Lookup(name));
  }
};

Ref<class Window1> Window1();

}  // namespace zelto
