#pragma once

#include <memory>

#include "platform/Control.h"
#include "platform/Menu.h"

namespace zelto {

class Window : public EventSource {
 public:
  static const Class& ClassTable();

  void Init() override;
  // Builds the window and its controls and raises their Open events.
  virtual void Constructor();

  virtual void Show();
  // Both block until the window has been closed, and unwind their caller when the application ends.
  virtual void ShowModal();
  virtual void ShowModalWithin(const Ref<Window>& parent);
  virtual void Close();
  void UpdateNow();

  Int32 Left() const;
  void Left(Int32 pixels);
  Int32 Top() const;
  void Top(Int32 pixels);
  Int32 Width() const;
  Int32 Height() const;

  Ref<class MenuBar> MenuBar() const { return mMenuBar; }
  void MenuBar(const Ref<class MenuBar>& bar);

  // A new object with this window as its owner.
  template <class T>
  Ref<T> New() {
    auto object = RuntimeNewObject<T>();
    TakeOwnership(*object);
    return object;
  }
  void AddControl(const String& name, const Ref<Object>& control);
  void AddMenuHandler(const String& name, const Method& handler);
  void SetProperty(const String& name, const PropertyValue& value) override;

  // Forgets the window and its controls, unless CancelClose answers True; then the result is False.
  bool UnifiedClose(bool quitting);
  void EnableMenuItems(const std::vector<Ref<MenuItem>>& items);
  // Calls the handler of the menu item; False when there is none.
  bool CallMenuHandler(const String& name);
  void CallActivated();
  void CallDeactivated();
  virtual void Update() {}

  WindowImp& Imp() const { return *mImp; }

 private:
  friend Ref<Object> RuntimeWindowControlByName(Window& window, const String& name);

  void TakeOwnership(Object& object);

  std::unique_ptr<WindowImp> mImp;
  std::vector<std::pair<String, Ref<Object>>> mControls;
  std::vector<Ref<Control>> mControlList;
  std::vector<Binding> mMenuHandlers;
  Ref<class MenuBar> mMenuBar;
};

// The control of the name, or nil.
Ref<Object> RuntimeWindowControlByName(Window& window, const String& name);

template <class T>
Ref<T> ControlNamed(Window& window, const String& name) {
  return RuntimeCheckCast<T>(RuntimeWindowControlByName(window, name));
}

// The one open window of the class, or nil.
Ref<Window> GetImplicitWindow(const String& className);

// The one open window of the class, made when there is none. Never nil.
template <class W>
Ref<W> ImplicitWindow() {
  auto window = GetImplicitWindow(W::ClassTable().Name());
  if (!window) {
    window = RuntimeNewObject<W>();
    window->Constructor();
  }
  return RuntimeCheckCast<W>(window);
}

// A control as data: what a window makes it from.
struct ControlRow {
  String Name;
  Ref<Object> (*Create)(Window& window);
  String List;
  std::vector<Binding> Events;
  String Label;
  Ref<Picture> (*Backdrop)() = nullptr;
};

template <class T>
Ref<Object> CreateControl(Window& window) {
  const auto control = window.New<T>();
  control->Constructor();
  return control;
}

// Makes the controls of the rows in their order, each from its creation to its event handlers.
void AddControlRows(Window& window, const std::vector<ControlRow>& rows);

namespace WindowSupport {

// Releases the lists of windows, and with them the windows.
void Finalize();
const std::vector<Ref<Window>>& Windows();
void AddDirtyWindow(const Ref<Window>& window);
void RemoveDirtyWindow(const Ref<Window>& window);
void UpdateDirtyWindows();

}  // namespace WindowSupport

// Carries out the window's pending drawing before it returns.
void UpdateNowMBS(const Ref<Window>& window);

}  // namespace zelto
