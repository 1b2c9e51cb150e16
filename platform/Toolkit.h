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

class Pane {
 public:
  virtual ~Pane() = default;

  // Takes over the control's properties after a change.
  virtual void Update() = 0;
  // What assistive technology calls the control.
  virtual void SetLabel(const String& label) = 0;
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

std::unique_ptr<WindowImp> NewWindowImp(Window& window);
std::unique_ptr<EditFieldPane> NewPane(EditField& field, WindowImp& window);
std::unique_ptr<Pane> NewPane(StaticText& text, WindowImp& window);
std::unique_ptr<Pane> NewPane(PushButton& button, WindowImp& window);
std::unique_ptr<Pane> NewPane(BevelButton& button, WindowImp& window);
std::unique_ptr<Pane> NewPane(Canvas& canvas, WindowImp& window);
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
