#include "platform/Files.h"
#include "platform/runtime/Wait.h"
#include "tests/Fixtures.h"

using namespace zelto;
using testing::EndsWith;

namespace {

// What the handlers of RecorderWindow do, and what they have recorded.
struct {
  bool ClosesInOpen = false;
  bool CancelsClose = false;
  std::string Log;
  bool IsQuitting = false;
  Ref<EventSource> Me;
} recorder;

// A window that records its events.
class RecorderWindow : public Window {
 public:
  static const Class& ClassTable() {
    static const Class table(
        {.Name = "RecorderWindow.RecorderWindow",
         .Base = &Window::ClassTable(),
         .Handlers = {On("Layout", &RecorderWindow::Layout),
                      On("CreateControls", &RecorderWindow::CreateControls),
                      On("AddMenuHandlers", &RecorderWindow::AddHandlers),
                      On("Open", &RecorderWindow::Open), On("Close", &RecorderWindow::Closed),
                      On("CancelClose", &RecorderWindow::CancelClose)}});
    return table;
  }
  const Class& ClassOf() const override { return ClassTable(); }

  void Layout() { recorder.Log += "Layout "; }
  void CreateControls() {
    recorder.Log += "CreateControls ";
    AddControlRows(*this, {Row("field", {}, EditFieldList{.Text = "listed"},
                               {.Events = {On("Open", &RecorderWindow::FieldOpen),
                                           On("Close", &RecorderWindow::FieldClosed),
                                           On("TextChange", &RecorderWindow::Change)}})});
  }
  void AddHandlers(Ref<Window> target) {
    recorder.Log += target.Get() == this ? "AddMenuHandlers " : "?";
  }
  void FieldOpen() { recorder.Log += "field.Open "; }
  void FieldClosed() { recorder.Log += "field.Close "; }
  void Change() {
    recorder.Log += "TextChange ";
    recorder.Me = Me();
  }
  void Open() {
    recorder.Log += "Open ";
    if (recorder.ClosesInOpen) Close();
  }
  void Closed() { recorder.Log += "Close "; }
  bool CancelClose(bool isQuitting) {
    recorder.IsQuitting = isQuitting;
    return recorder.CancelsClose;
  }
  void Activated() { recorder.Log += "Activate "; }
  void Deactivated() { recorder.Log += "Deactivate "; }
  void Enabling() { recorder.Log += "EnableMenuItems "; }
};

class ModelTest : public testing::Test, public ApplicationFixture {
 protected:
  void SetUp() override { recorder = {}; }
  void TearDown() override { recorder.Me = nullptr; }
};

// An About window whose canvas does not claim a mouse press.
class RefusingAbout : public zelto::WAbout {
  bool Canvas2_MouseDown(Int32, Int32) override { return false; }
  void Canvas2_MouseUp(Int32, Int32) override { ADD_FAILURE(); }
};

Ref<EditField> Field(const Ref<RecorderWindow>& window) {
  return ControlNamed<EditField>(*window, "field");
}

}  // namespace

TEST_F(ModelTest, WindowIsConstructedInOrderAndOnce) {
  const auto window = ImplicitWindow<RecorderWindow>();
  EXPECT_EQ(recorder.Log, "Layout CreateControls AddMenuHandlers field.Open Open ");
  EXPECT_TRUE(ImplicitWindow<RecorderWindow>() == window);
  const auto held = Field(window);
  held->Text("x");
  window->Close();
  EXPECT_FALSE(GetImplicitWindow("RecorderWindow.RecorderWindow"));
  EXPECT_FALSE(Field(window));
  EXPECT_THROW(held->Text(), NilObjectException);
  EXPECT_THROW(held->SetFocus(), NilObjectException);
  EXPECT_FALSE(held->Window());
  const auto second = ImplicitWindow<RecorderWindow>();
  EXPECT_FALSE(second == window);
  EXPECT_EQ(Bytes(Field(second)->Text()), "listed");
}

TEST_F(ModelTest, WindowClosedByItsOpenHandlerDoesNotBlock) {
  const auto parent = ImplicitWindow<RecorderWindow>();
  recorder.ClosesInOpen = true;
  const auto window = RuntimeNewObject<RecorderWindow>();
  window->Constructor();
  window->ShowModal();
  window->ShowModalWithin(parent);
  EXPECT_TRUE(window->IsClosed());
}

TEST_F(ModelTest, LaterEntryOfANameReplacesTheEarlier) {
  const auto window = ImplicitWindow<RecorderWindow>();
  const auto first = Field(window);
  const auto second = window->New<EditField>();
  window->AddControl("field", second);
  EXPECT_TRUE(Field(window) == second);
  EXPECT_FALSE(first->Window());
  window->AddMenuHandler("item", RuntimeCreateDelegate(&RecorderWindow::FieldOpen));
  window->AddMenuHandler("item", RuntimeCreateDelegate(&RecorderWindow::Closed));
  recorder.Log.clear();
  window->CallMenuHandler("item");
  EXPECT_EQ(recorder.Log, "Close ");
}

TEST_F(ModelTest, SizeChangesAtOnceAndOnlyWhenItIsWritten) {
  const auto window = ImplicitWindow<RecorderWindow>();
  RuntimeMassPropertySetter(
      *window, WindowList{.Width = 300, .Height = 200, .Title = "sized", .Resizeable = true});
  const auto size = [&] { return QSize(window->Width(), window->Height()); };
  EXPECT_EQ(size(), QSize(300, 200));
  window->Show();
  TopLevel("sized")->resize(400, 250);
  QApplication::processEvents();
  window->Set(&WindowList::Title, "renamed");
  EXPECT_EQ(size(), QSize(400, 250));
  window->Width(320);
  EXPECT_EQ(size(), QSize(320, 250));
}

TEST_F(ModelTest, ReleaseOfAnUnclaimedPressIsNotRaised) {
  const auto about = RuntimeNewObject<RefusingAbout>();
  about->Constructor();
  about->Show();
  QTest::mouseClick(&ControlWidget(*TopLevel("About"), "Canvas2"), Qt::LeftButton);
}

TEST_F(ModelTest, CursorOfTheOuterHandlerReturns) {
  const auto shape = [] {
    const auto* cursor = QGuiApplication::overrideCursor();
    return cursor ? cursor->shape() : Qt::ArrowCursor;
  };
  InvokeHandler([&] {
    App()->DoEvents(1);
    InvokeHandler([&] {
      RuntimeAwait(-1, 1);
      EXPECT_EQ(shape(), Qt::WaitCursor);
    });
    EXPECT_EQ(shape(), Qt::BusyCursor);
    EXPECT_TRUE(HandlerWaits());
  });
  EXPECT_EQ(shape(), Qt::ArrowCursor);
}

TEST_F(ModelTest, CancelCloseKeepsTheWindowOpen) {
  const auto window = ImplicitWindow<RecorderWindow>();
  window->Show();
  auto* top = QApplication::topLevelWidgets().constFirst();
  recorder.CancelsClose = true;
  window->Close();
  top->close();
  InvokeHandler([&] {
    App()->DoEvents(1);
    top->close();
    top->close();
    EXPECT_FALSE(recorder.IsQuitting);
    EXPECT_THROW(Quit(0), EndException);
    EXPECT_TRUE(recorder.IsQuitting);
  });
  EXPECT_NO_THROW(ThrowIfQuitting());
  EXPECT_TRUE(top->isVisible() && Field(window));
  EXPECT_TRUE(GetImplicitWindow("RecorderWindow.RecorderWindow") == window);
  EXPECT_THAT(recorder.Log, EndsWith("field.Open Open "));
  recorder.CancelsClose = false;
  window->Close();
  window->Close();
  EXPECT_THAT(recorder.Log, EndsWith("field.Open Open field.Close Close "));
  EXPECT_TRUE(WindowSupport::Windows().empty());
}

TEST_F(ModelTest, ActivationRaisesItsEventsInOrder) {
  const auto window = ImplicitWindow<RecorderWindow>();
  for (const auto& binding :
       {On("Activate", &RecorderWindow::Activated), On("Deactivate", &RecorderWindow::Deactivated),
        On("EnableMenuItems", &RecorderWindow::Enabling)}) {
    InstallInstanceEventHandler(*window, binding);
  }
  recorder.Log.clear();
  window->Width(99);
  window->Height(99);
  window->Show();
  Until([] { return QApplication::activeWindow(); });
  WAbout()->Show();
  Until([] { return TopLevel("About")->isActiveWindow(); });
  EXPECT_EQ(recorder.Log, "Activate EnableMenuItems Deactivate EnableMenuItems ");
  recorder.Log.clear();
  window->EnableMenuItems({});
  EXPECT_EQ(recorder.Log, "EnableMenuItems ");
}

TEST_F(ModelTest, HandlersOfATimerRunOnItsWindow) {
  const auto dialog = WPerm();
  EXPECT_TRUE(dialog->Timer1()->Self() == dialog);
  EXPECT_THROW(RuntimeCreateDelegate(&RecorderWindow::Open).Call(*dialog, {}),
               IllegalCastException);
  EXPECT_THROW(RuntimeCheckCast<RecorderWindow>(dialog), IllegalCastException);
}

TEST_F(ModelTest, ChangedFileTypeIsNotRegistered) {
  const auto type = RuntimeNewObject<FileType>();
  type->Name("archive");
  type->Extensions("zip");
  type->Register();
  EXPECT_TRUE(MatchesFilter("/x/a.zip", "archive"));
  type->Extensions("zip;jar");
  EXPECT_FALSE(MatchesFilter("/x/a.zip", "archive"));
}

TEST_F(ModelTest, EventsCallTheirHandlersAndRefuseOtherSignatures) {
  const auto window = ImplicitWindow<RecorderWindow>();
  recorder.Log.clear();
  Field(window)->Text("x");
  EXPECT_EQ(recorder.Log, "TextChange ");  // before the write returns
  EXPECT_TRUE(recorder.Me == Field(window));
  EXPECT_FALSE(Me());
  EXPECT_FALSE(Field(window)->Raise("DropObject", {Ref<Object>(), Int32(0)}));
  EXPECT_NO_THROW(InstallInstanceEventHandler(*window, On("KeyDown", &RecorderWindow::Change)));
  const auto install = [&](const char* event) {
    InstallInstanceEventHandler(*Field(window), On(event, &RecorderWindow::Change));
  };
  EXPECT_THROW(install("Action"), KeyNotFoundException);
  EXPECT_THROW(install("DropObject"), TypeMismatchException);
}
