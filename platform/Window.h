#pragma once

#include <memory>

#include "platform/Control.h"
#include "platform/Dictionary.h"
#include "platform/Menu.h"

namespace zelto {

class Window : public MenuTarget {
 public:
  static constexpr std::string_view TypeName = "Window";
  static const Class& ClassTable();
  ~Window() override;

  void Init() override;
  // Creates the controls and raises the Open events of the controls and of the window.
  virtual void Constructor();

  virtual void Show() { mImp->Show(); }
  // Both block until the window is closed. They throw EndException if the application ends.
  virtual void ShowModal();
  virtual void ShowModalWithin(const Ref<Window>& parent);
  virtual void Close();
  bool IsClosed() const { return mIsClosed; }

  Int32 Left() const { return mImp->Left(); }
  void Left(Int32 pixels) { mImp->MoveTo(pixels, Top()); }
  Int32 Top() const { return mImp->Top(); }
  void Top(Int32 pixels) { mImp->MoveTo(Left(), pixels); }
  Int32 Width() const { return mImp->Width(); }
  void Width(Int32 pixels);
  Int32 Height() const { return mImp->Height(); }
  void Height(Int32 pixels);
  // Shows or hides the window. In the property list, True shows it after its Open event.
  void Visible(bool visible);

  const WindowList& Properties() const { return mProperties; }
  // Stores a value without showing it.
  template <class T>
  void Store(T WindowList::*property, const std::type_identity_t<T>& value) {
    mProperties.*property = value;
  }
  template <class T>
  void Set(T WindowList::*property, const std::type_identity_t<T>& value) {
    Store(property, value);
    mImp->Update();
  }

  Ref<class MenuBar> MenuBar() const { return mMenuBar; }
  void MenuBar(const Ref<class MenuBar>& bar);

  // Creates an object. If it is a Control or a PaneChild, this window becomes its owner.
  template <class T>
  Ref<T> New() {
    auto object = RuntimeNewObject<T>();
    SetOwner(*object, this);
    return object;
  }
  // Replaces a control of the same name.
  void AddControl(const String& name, const Ref<Object>& control);

  // Raises CancelClose. If the handler returns True, the window stays open and the result is False.
  // Otherwise the window and its controls are released.
  bool UnifiedClose(bool quitting);
  void CallActivated();
  void CallDeactivated();
  virtual void Update() {}

  WindowImp& Imp() const { return *mImp; }

 private:
  friend Ref<Object> RuntimeWindowControlByName(Window& window, const String& name);

  // Sets the owner of a Control or a PaneChild. Null removes the owner.
  static void SetOwner(Object& object, Window* owner);
  void ReleaseControls();
  std::vector<Ref<Control>> ControlList() const;

  WindowList mProperties{.Visible = false};
  bool mInitialControlsCreated = false;
  bool mIsClosed = false;
  std::unique_ptr<WindowImp> mImp;
  Dictionary<Ref<Object>> mControls;
  Ref<class MenuBar> mMenuBar;
};

// Returns the control with the name, or nil.
Ref<Object> RuntimeWindowControlByName(Window& window, const String& name);

template <class T>
Ref<T> ControlNamed(Window& window, const String& name) {
  return RuntimeCheckCast<T>(RuntimeWindowControlByName(window, name));
}

// Returns the open window of the class, or nil.
Ref<Window> GetImplicitWindow(const String& className);

// Returns the open window of the class, and creates it if there is none. Never nil.
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

// The part of a control's description that is not in its property list.
struct ControlExtras {
  std::vector<Binding> Events;
  String Label;
  Ref<Picture> (*Backdrop)() = nullptr;
};

struct ControlRow {
  String Name;
  Ref<EventSource> (*Create)(Window& window) = nullptr;
  String List;
  ControlExtras Extras;
};

// In pixels, relative to the window's content.
struct Bounds {
  Int32 Left = 0;
  Int32 Top = 0;
  Int32 Width = 0;
  Int32 Height = 0;
};

// The row of a control. `name` and `bounds` complete the list.
template <class List>
ControlRow Row(const String& name, const Bounds& bounds, List list, ControlExtras extras = {}) {
  list.Name = name;
  list.Left = bounds.Left;
  list.Top = bounds.Top;
  list.Width = bounds.Width;
  list.Height = bounds.Height;
  return {name, CreateControl<typename List::Class>, list, std::move(extras)};
}

// Creates the controls in the order of the rows, with their properties and event handlers.
void AddControlRows(Window& window, const std::vector<ControlRow>& rows);

// A window that is made from the property list and the control rows of its class W.
template <class W>
class ListWindow : public Window {
 public:
  const Class& ClassOf() const override { return W::ClassTable(); }

  virtual void Layout() { RuntimeMassPropertySetter(*this, W::List()); }
  virtual void CreateControls() { CreateControls0(); }
  virtual void CreateControls0() { AddControlRows(*this, W::Controls()); }
};

namespace WindowSupport {

void Finalize();
const std::vector<Ref<Window>>& Windows();
void AddDirtyWindow(const Ref<Window>& window);
void RemoveDirtyWindow(const Ref<Window>& window);
void UpdateDirtyWindows();

}  // namespace WindowSupport

void PublishWindowFunctions();
// Repaints the window before it returns.
void UpdateNowMBS(const Ref<Window>& window);

}  // namespace zelto
