#pragma once

#include <memory>

#include "platform/Control.h"
#include "platform/Menu.h"

namespace zelto {

class Window : public EventSource {
 public:
  static constexpr std::string_view TypeName = "Window";
  static const Class& ClassTable();
  Window() = default;
  ~Window() override;

  void Init() override;
  // Builds the window and its controls and raises their Open events.
  virtual void Constructor();

  virtual void Show();
  // Both block until the window has been closed, and unwind their caller when the application ends.
  virtual void ShowModal();
  virtual void ShowModalWithin(const Ref<Window>& parent);
  virtual void Close();
  bool IsClosed() const { return mIsClosed; }
  void UpdateNow();

  Int32 Left() const;
  void Left(Int32 pixels);
  Int32 Top() const;
  void Top(Int32 pixels);
  Int32 Width() const;
  Int32 Height() const;
  // A new window that is visible shows itself once its Open event is over.
  void Visible(bool visible);

  const WindowList& Properties() const { return mProperties; }
  template <class T>
  void Set(T WindowList::*property, const std::type_identity_t<T>& value) {
    mProperties.*property = value;
    if (mInitialControlsCreated) mImp->Update();
  }

  Ref<class MenuBar> MenuBar() const { return mMenuBar; }
  void MenuBar(const Ref<class MenuBar>& bar);

  // A new object with this window as its owner.
  template <class T>
  Ref<T> New() {
    auto object = RuntimeNewObject<T>();
    SetOwner(*object, this);
    return object;
  }
  void AddControl(const String& name, const Ref<Object>& control);
  // The name is the menu item's.
  void AddMenuHandler(const String& name, const Method& handler) {
    mMenuHandlers.Add(name, handler);
  }

  // Forgets the window and its controls, unless CancelClose answers True; then the result is False.
  bool UnifiedClose(bool quitting);
  void EnableMenuItems(const std::vector<Ref<MenuItem>>& items);
  // False: the item has no handler, or the handler did nothing.
  bool CallMenuHandler(const String& name) { return mMenuHandlers.Call(*this, name); }
  void CallActivated();
  void CallDeactivated();
  virtual void Update() {}

  WindowImp& Imp() const { return *mImp; }

 private:
  friend Ref<Object> RuntimeWindowControlByName(Window& window, const String& name);

  // Makes this window, or nil, the object's owner.
  static void SetOwner(Object& object, Window* owner);
  void ReleaseControls();

  WindowList mProperties{.Visible = false};
  bool mInitialControlsCreated = false;
  bool mIsClosed = false;
  std::unique_ptr<WindowImp> mImp;
  std::vector<std::pair<String, Ref<Object>>> mControls;
  std::vector<Ref<Control>> mControlList;
  MenuHandlers mMenuHandlers;
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

template <class T>
Ref<EventSource> CreateControl(Window& window) {
  const auto control = window.New<T>();
  control->Constructor();
  return control;
}

// What a control has besides its property list.
struct ControlExtras {
  std::vector<Binding> Events;
  String Label;
  Ref<Picture> (*Backdrop)() = nullptr;
};

// A control as data: what a window makes it from.
struct ControlRow {
  String Name;
  Ref<EventSource> (*Create)(Window& window) = nullptr;
  String List;
  ControlExtras Extras;
};

// The row of a control of class T, whose name is that in its list.
template <class List, class T = typename List::Class>
ControlRow Row(const List& list, ControlExtras extras = {}) {
  return {list.Name, CreateControl<T>, list, std::move(extras)};
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

void PublishWindowFunctions();
// Carries out the window's pending drawing before it returns.
void UpdateNowMBS(const Ref<Window>& window);

}  // namespace zelto
