#include "platform/Window.h"

#include "platform/Application.h"
#include "platform/Framework.h"
#include "platform/runtime/Plugins.h"
#include "platform/runtime/Wait.h"

namespace zelto {

const Class& Window::ClassTable() {
  static const Class table({.Name = "Window",
                            .Events = {{"Layout", "(  )"},
                                       {"CreateControls", "(  )"},
                                       {"AddMenuHandlers", "( Window )"},
                                       {"SetupBindings", "(  )"},
                                       {"Open", "(  )"},
                                       {"Close", "(  )"},
                                       {"CancelClose", "( Boolean ) as Boolean"},
                                       {"KeyDown"},
                                       {"MouseMove"},
                                       {"MouseEnter"},
                                       {"MouseExit"},
                                       {"Paint"},
                                       {"MouseDown"},
                                       {"MouseDrag"},
                                       {"MouseUp"},
                                       {"EnableMenuItems", "(  )"},
                                       {"Resized"},
                                       {"Resizing"},
                                       {"Moved"},
                                       {"DropObject"},
                                       {"Activate", "(  )"},
                                       {"Deactivate", "(  )"},
                                       {"Minimize"},
                                       {"Maximize"},
                                       {"Restore"},
                                       {"MouseWheel"},
                                       {"ConstructContextualMenu"},
                                       {"ContextualMenuAction"},
                                       {"DragEnter"},
                                       {"DragExit"},
                                       {"DragOver"}},
                            .Properties = WindowList::Schema()});
  return table;
}

Window::~Window() { ReleaseControls(); }

void Window::Init() {
  mImp = NewWindowImp(*this);
  const Ref<Window> self(this);
  State().Windows.push_back(self);
  const String& name = ClassOf().Name();
  if (!GetImplicitWindow(name)) State().ImplicitWindows.emplace_back(name, self);
}

void Window::Constructor() {
  GetAppObject()->CallFunctionWithExceptionHandling([this] {
    Raise("Layout");
    Raise("CreateControls");
    Raise("AddMenuHandlers", {Ref<Object>(this)});
    Raise("SetupBindings");
    for (const auto& control : ControlList()) control->CallOpenEvent();
    mInitialControlsCreated = true;
    Raise("Open");
    if (mProperties.Visible) mImp->ShowLater();
  });
}

void Window::Visible(bool visible) {
  mProperties.Visible = visible;
  if (!mInitialControlsCreated) return;
  if (visible) {
    mImp->Show();
  } else {
    mImp->Hide();
  }
}

void Window::Width(Int32 pixels) {
  mProperties.Width = pixels;
  mImp->Resize(pixels, Height());
}

void Window::Height(Int32 pixels) {
  mProperties.Height = pixels;
  mImp->Resize(Width(), pixels);
}

void Window::ShowModal() {
  if (!mIsClosed) mImp->ShowModal(nullptr);
  ThrowIfQuitting();
}

void Window::ShowModalWithin(const Ref<Window>& parent) {
  if (!mIsClosed) mImp->ShowModal(&parent->Imp());
  ThrowIfQuitting();
}

void Window::Close() {
  const Ref<Window> self(this);  // keeps the window until the end of this call
  if (mIsClosed || !UnifiedClose(false)) return;
  mImp->Close();
  Raise("Close");
}

void Window::MenuBar(const Ref<class MenuBar>& bar) {
  mMenuBar = bar;
  mImp->SetMenuBar(bar);
}

void Window::SetOwner(Object& object, Window* owner) {
  if (auto* control = dynamic_cast<Control*>(&object)) control->SetWindow(owner);
  if (auto* child = dynamic_cast<PaneChild*>(&object)) child->SetWindow(owner);
}

void Window::AddControl(const String& name, const Ref<Object>& control) {
  if (const auto replaced = SetValue(mControls, name, control)) SetOwner(*replaced, nullptr);
}

void Window::ReleaseControls() {
  for (const auto& [name, object] : mControls) SetOwner(*object, nullptr);
  mControls.clear();
}

// Excludes timers.
std::vector<Ref<Control>> Window::ControlList() const {
  std::vector<Ref<Control>> list;
  for (const auto& [name, object] : mControls) {
    if (RuntimeObjectIsa<Control>(object)) list.push_back(RuntimeCheckCast<Control>(object));
  }
  return list;
}

bool Window::UnifiedClose(bool quitting) {
  if (Raise("CancelClose", {quitting})) return false;
  mIsClosed = true;
  for (const auto& control : ControlList()) {
    control->Close();
    RuntimeBackgroundTask();
  }
  ReleaseControls();
  std::erase(State().Windows, Ref<Window>(this));
  std::erase_if(State().ImplicitWindows,
                [this](const auto& entry) { return entry.second.Get() == this; });
  return true;
}

void Window::CallActivated() {
  Raise("Activate");
  Raise("EnableMenuItems");
}

void Window::CallDeactivated() {
  Raise("Deactivate");
  Raise("EnableMenuItems");
}

Ref<Object> RuntimeWindowControlByName(Window& window, const String& name) {
  return ValueOf(window.mControls, name);
}

Ref<Window> GetImplicitWindow(const String& className) {
  return ValueOf(State().ImplicitWindows, className);
}

void AddControlRows(Window& window, const std::vector<ControlRow>& rows) {
  for (const auto& [name, create, list, extras] : rows) {
    const auto control = create(window);
    window.AddControl(name, control);
    if (extras.Backdrop) RuntimeCheckCast<Canvas>(control)->Backdrop(extras.Backdrop());
    RuntimeMassPropertySetter(*control, list);
    if (!extras.Label.IsNil()) RuntimeCheckCast<RectControl>(control)->Label(extras.Label);
    for (const auto& event : extras.Events) InstallInstanceEventHandler(*control, event);
  }
}

namespace WindowSupport {

void Finalize() {
  State().Windows.clear();
  State().ImplicitWindows.clear();
  State().DirtyWindows.clear();
}

const std::vector<Ref<Window>>& Windows() { return State().Windows; }

void AddDirtyWindow(const Ref<Window>& window) {
  RemoveDirtyWindow(window);
  State().DirtyWindows.push_back(window);
}

void RemoveDirtyWindow(const Ref<Window>& window) { std::erase(State().DirtyWindows, window); }

void UpdateDirtyWindows() {
  const auto windows = State().DirtyWindows;  // a copy, because Update can change the list
  for (const auto& window : windows) {
    window->Update();
    RuntimeBackgroundTask();
  }
  State().DirtyWindows.clear();
}

}  // namespace WindowSupport

void PublishWindowFunctions() {
  RuntimePublishPluginEntrypoints(
      {{"window.UpdateNowMBS", +[](Window& window) { window.Imp().UpdateNow(); }}});
}

void UpdateNowMBS(const Ref<Window>& window) {
  Glink<void(Window&)>(PluginSlotOf("window.UpdateNowMBS"), *window);
}

}  // namespace zelto
