#pragma once

#include <memory>
#include <optional>

#include "platform/Picture.h"
#include "platform/PropertyList.h"

// All that a toolkit has to supply. The model's objects each own the part that stands for them on
// the screen; that part knows its object and raises its events through InvokeHandler.
namespace zelto {

class BevelButton;
class Canvas;
class EditField;
class FolderItem;
class MenuBar;
class MessageDialog;
class MessageDialogButton;
class PushButton;
class StaticText;
class Timer;
class Window;

// The properties of a window, sizes in pixels and without the frame.
struct WindowState {
  Int32 Width = 0;
  Int32 Height = 0;
  Int32 MinWidth = 64;
  Int32 MinHeight = 64;
  Int32 MaxWidth = 32000;
  Int32 MaxHeight = 32000;
  Int32 Frame = 0;  // 1: a dialog's
  String Title;
  bool CloseButton = true;
  bool Resizeable = false;
  bool MaximizeButton = false;
  bool MinimizeButton = true;
};

class WindowImp {
 public:
  virtual ~WindowImp() = default;

  // In pixels, from the corner of the primary screen; a write to a window that is not on the screen
  // counts as well.
  virtual Int32 Left() const = 0;
  virtual Int32 Top() const = 0;
  virtual Int32 Width() const = 0;
  virtual Int32 Height() const = 0;
  virtual void MoveTo(Int32 left, Int32 top) = 0;

  virtual void SetMenuBar(const Ref<MenuBar>& bar) = 0;
  // Comes once the controls exist, before the window is shown, and after each change.
  virtual void Update() = 0;
  virtual void Show() = 0;
  // Shows the window when the running handler has ended, unless it has been shown by then.
  virtual void ShowLater() = 0;
  virtual void Hide() = 0;
  // Blocks until Close; the parent may be null.
  virtual void ShowModal(WindowImp* parent) = 0;
  // Takes the window off the screen and ends ShowModal.
  virtual void Close() = 0;
  virtual void UpdateNow() = 0;
};

// The properties of a control that has a pane, places and sizes in pixels.
struct ControlState {
  String Name;
  Int32 Left = 0;
  Int32 Top = 0;
  Int32 Width = 0;
  Int32 Height = 0;
  Int32 TabIndex = 0;
  bool TabStop = true;
  bool AcceptFocus = false;
  bool UseFocusRing = true;
  bool Enabled = true;
  bool Visible = true;
  String HelpTag;
  String Label;  // what assistive technology calls the control
  String TextFont;
  Int32 TextSize = 0;
  bool Bold = false;
  bool Italic = false;
  bool Underline = false;
  Color TextColor;
};

struct EditFieldState : ControlState {
  String Text;  // at the pane's creation
  bool Border = true;
  bool Multiline = false;  // as it is at the pane's creation
  bool ScrollbarHorizontal = false;
  bool ScrollbarVertical = true;
  bool Password = false;
  bool ReadOnly = false;
  bool AcceptTabs = false;
  Int32 LimitText = 0;  // characters; 0: no limit
  Int32 Alignment = 0;  // 0 left, 1 centred, 2 right
};

struct StaticTextState : ControlState {
  String Text;
  Int32 TextAlign = 0;  // 0 left, 1 centred, 2 right
  bool Multiline = false;
};

struct ButtonState : ControlState {
  String Caption;
  bool Default = false;
  bool Cancel = false;
};

struct CanvasState : ControlState {
  Ref<Picture> Backdrop;
};

class Pane {
 public:
  virtual ~Pane() = default;

  // Takes over the control's state after a change.
  virtual void Update() = 0;
  virtual void SetFocus() = 0;
  // Draws at once.
  virtual void Refresh() = 0;
  virtual void AcceptFileDrop(const String& type) = 0;
};

class EditFieldPane : public Pane {
 public:
  virtual String Text() const = 0;
  virtual void SetText(const String& text) = 0;
  virtual void SelectAll() = 0;
  // Shows the text beside the field until the next key.
  virtual void ShowBalloon(const String& text) = 0;
};

class TimerImp {
 public:
  virtual ~TimerImp() = default;

  // Fires after each period, once only unless repeated.
  virtual void Start(Int32 milliseconds, bool repeated) = 0;
  virtual void Stop() = 0;
};

class SessionInhibitor {
 public:
  virtual ~SessionInhibitor() = default;
};

// The states belong to the objects, which own the parts.
std::unique_ptr<WindowImp> NewWindowImp(Window& window, const WindowState& state);
std::unique_ptr<EditFieldPane> NewEditFieldPane(EditField& field, const EditFieldState& state,
                                                WindowImp& window);
std::unique_ptr<Pane> NewStaticTextPane(const StaticTextState& state, WindowImp& window);
std::unique_ptr<Pane> NewPushButtonPane(PushButton& button, const ButtonState& state,
                                        WindowImp& window);
std::unique_ptr<Pane> NewBevelButtonPane(BevelButton& button, const ButtonState& state,
                                         WindowImp& window);
std::unique_ptr<Pane> NewCanvasPane(Canvas& canvas, const CanvasState& state, WindowImp& window);
std::unique_ptr<TimerImp> NewTimerImp(Timer& timer);

// Blocks until the dialog is answered; the parent may be null.
Ref<MessageDialogButton> ShowMessageDialog(MessageDialog& dialog, WindowImp* parent);
// Nil when the file cannot be read as a picture.
Ref<Picture> LoadPicture(const String& path);
// Blocks until a file of the types is chosen; nil when none was.
Ref<FolderItem> RuntimeGetOpenFolderItem(const String& filter);
// While the result lives, the desktop does not sleep, log out or shut down, as far as it can be
// asked not to; it shows the reason. Does not block.
std::unique_ptr<SessionInhibitor> InhibitSessionEnd(const String& reason);

// The toolkit lives from StartToolkit to EndToolkit; windows live in between.
void StartToolkit();
void EndToolkit();
// Serves events until EndLoops.
void RunLoop();
// Serves events for at most the time, in milliseconds, or until a descriptor wakes it.
void ServeEvents(Int32 milliseconds);
// Shows that a handler waits for a command, or no longer does.
enum class Waiting : std::uint8_t { Not, Busy, Blocked };
void ShowWaiting(Waiting waiting);
// Ends RunLoop and every modal loop inside it. Until AllowLoops, later ones may return at once.
void EndLoops();
void AllowLoops();
void RuntimeBeep();
// Width and height of the primary screen; nothing without one.
std::optional<std::pair<Int32, Int32>> PrimaryScreenSize();
String ApplicationVersion();
Ref<FolderItem> AppFolderItemGetter();

}  // namespace zelto
