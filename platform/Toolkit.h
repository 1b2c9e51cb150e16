#pragma once

#include <memory>
#include <optional>

#include "platform/Picture.h"
#include "platform/PropertyList.h"

// The interface that a toolkit implements. Each object of the model owns its counterpart on the
// screen, which raises the object's events through InvokeHandler.
namespace zelto {

class BevelButton;
class Canvas;
class EditField;
class FolderItem;
class MenuBar;
class MessageDialog;
class MessageDialogButton;
class PushButton;
class SessionInhibitor;
class StaticText;
class Timer;
class Window;

class WindowImp {
 public:
  virtual ~WindowImp() = default;

  // In pixels, relative to the primary screen. A hidden window can be moved as well.
  virtual Int32 Left() const = 0;
  virtual Int32 Top() const = 0;
  virtual Int32 Width() const = 0;
  virtual Int32 Height() const = 0;
  virtual void MoveTo(Int32 left, Int32 top) = 0;

  virtual void SetMenuBar(const Ref<MenuBar>& bar) = 0;
  // Applies the window's properties, but not its size. Called after each change.
  virtual void Update() = 0;
  virtual void Resize(Int32 width, Int32 height) = 0;
  virtual void Show() = 0;
  // Shows the window after the running handler, unless that has shown or hidden it.
  virtual void ShowLater() = 0;
  virtual void Hide() = 0;
  // Blocks until Close. `parent` can be null.
  virtual void ShowModal(WindowImp* parent) = 0;
  // Hides the window and ends ShowModal.
  virtual void Close() = 0;
  virtual void UpdateNow() = 0;
};

// When a balloon ends: at the next key press, or only with its window or by another balloon.
enum class BalloonEnd : std::uint8_t { NextKey, Window };

class Pane {
 public:
  virtual ~Pane() = default;

  // Applies the control's properties. Called after each change.
  virtual void Update() = 0;
  // Sets the accessible name.
  virtual void SetLabel(const String& label) = 0;
  virtual void SetFocus() = 0;
  // Repaints before it returns.
  virtual void Refresh() = 0;
  // Accepts drops of local files of the registered type.
  virtual void AcceptFileDrop(const String& type) = 0;
  // Shows the text next to the control.
  virtual void ShowBalloon(const String& text, BalloonEnd end) = 0;
};

class EditFieldPane : public Pane {
 public:
  virtual String Text() const = 0;
  virtual void SetText(const String& text) = 0;
  virtual void SelectAll() = 0;
};

class TimerImp {
 public:
  virtual ~TimerImp() = default;

  // Calls Timer::Fire after the period. If `repeated`, also after each further period.
  virtual void Start(Int32 milliseconds, bool repeated) = 0;
  virtual void Stop() = 0;
};

std::unique_ptr<WindowImp> NewWindowImp(Window& window);
std::unique_ptr<EditFieldPane> NewPane(EditField& field, WindowImp& window);
std::unique_ptr<Pane> NewPane(StaticText& text, WindowImp& window);
std::unique_ptr<Pane> NewPane(PushButton& button, WindowImp& window);
std::unique_ptr<Pane> NewPane(BevelButton& button, WindowImp& window);
std::unique_ptr<Pane> NewPane(Canvas& canvas, WindowImp& window);
std::unique_ptr<TimerImp> NewTimerImp(Timer& timer);

// Blocks until the dialog is closed and returns the pressed button. `parent` can be null.
Ref<MessageDialogButton> ShowMessageDialog(MessageDialog& dialog, WindowImp* parent);
// Returns nil if the file cannot be read as a picture.
Ref<Picture> LoadPicture(const String& path);
// Shows a dialog to open a file of the filter's types. Blocks until the dialog is closed. Returns
// nil if it is cancelled. Throws EndException if the application ends.
Ref<FolderItem> RuntimeGetOpenFolderItem(const String& filter);
// Asks the desktop to inhibit sleep, logout and shutdown until the result is destroyed. The desktop
// can show the reason. Does not block and does not fail.
std::shared_ptr<SessionInhibitor> InhibitSessionEnd(const String& reason);

// Windows exist only between StartToolkit and EndToolkit.
void StartToolkit();
void EndToolkit();
// Runs the event loop until EndLoops. Returns 0, or the toolkit's status after an error.
Int32 RunLoop();
// Runs the event loop until the time is over or a descriptor of RuntimeWakeOn is readable.
void ServeEvents(Int32 milliseconds);
// What a handler does. Busy (DoEvents): waits, with the busy cursor. Blocked
// (RuntimeAwait): waits, with the wait cursor. InDialog: its dialog accepts input.
enum class Phase : std::uint8_t { Running, Busy, Blocked, InDialog };
// Shows the cursor of the phase and, after a moment of a wait, the progress bar.
void ShowPhase(Phase phase);
// Ends RunLoop and all nested loops. After that, each new loop ends at once.
void EndLoops();
void RuntimeBeep();
// Width and height of the primary screen in pixels, if there is one.
std::optional<std::pair<Int32, Int32>> PrimaryScreenSize();
String ApplicationVersion();
Ref<FolderItem> AppFolderItemGetter();

}  // namespace zelto
