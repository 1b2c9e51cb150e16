#include "platform/Files.h"
#include "platform/runtime/Wait.h"
#include "tests/Fixtures.h"

using namespace zelto;

namespace {

// A window that records its events.
class RecorderWindow : public Window {
 public:
  static inline std::string Log;
  static inline bool Cancels = false;
  static inline bool ClosesInOpen = false;
  static inline bool Quits = false;
  static inline Ref<EventSource> LastMe;

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

  void Layout() { Log += "Layout "; }
  void CreateControls() {
    Log += "CreateControls ";
    AddControlRows(*this, {Row("field", {}, EditFieldList{.Text = "listed"},
                               {.Events = {On("Open", &RecorderWindow::FieldOpen),
                                           On("Close", &RecorderWindow::FieldClosed),
                                           On("TextChange", &RecorderWindow::Change)}})});
  }
  void AddHandlers(Ref<Window> target) { Log += target.Get() == this ? "AddMenuHandlers " : "?"; }
  void FieldOpen() { Log += "field.Open "; }
  void FieldClosed() { Log += "field.Close "; }
  void Change() {
    Log += "TextChange ";
    LastMe = Me();
  }
  void Open() {
    Log += "Open ";
    if (ClosesInOpen) Close();
    LastMe = Me();
  }
  void Closed() { Log += "Close "; }
  bool CancelClose(bool isQuitting) {
    Quits = isQuitting;
    return Cancels;
  }
  void Activated() { Log += "Activate "; }
  void Deactivated() { Log += "Deactivate "; }
  void Enabling() { Log += "EnableMenuItems "; }
};

class ModelTest : public testing::Test {
 protected:
  void SetUp() override {
    RecorderWindow::Log.clear();
    RecorderWindow::Cancels = false;
    RecorderWindow::ClosesInOpen = false;
  }
  void TearDown() override { RecorderWindow::LastMe = nullptr; }
  ApplicationFixture mApplication;
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
  EXPECT_EQ(RecorderWindow::Log, "Layout CreateControls AddMenuHandlers field.Open Open ");
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
  RecorderWindow::ClosesInOpen = true;
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
  RecorderWindow::Log.clear();
  window->CallMenuHandler("item");
  EXPECT_EQ(RecorderWindow::Log, "Close ");
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
  RecorderWindow::Cancels = true;
  auto* top = QApplication::topLevelWidgets().constFirst();
  window->Close();
  window->Close();
  top->close();
  InvokeHandler([&] {
    App()->DoEvents(1);
    top->close();
    top->close();
    EXPECT_FALSE(RecorderWindow::Quits);
    EXPECT_THROW(Quit(0), EndException);
    EXPECT_TRUE(RecorderWindow::Quits);
  });
  EXPECT_NO_THROW(ThrowIfQuitting());
  EXPECT_TRUE(top->isVisible());
  EXPECT_TRUE(GetImplicitWindow("RecorderWindow.RecorderWindow") == window);
  EXPECT_EQ(WindowSupport::Windows().size(), 1U);
  EXPECT_TRUE(Field(window));
  EXPECT_EQ(RecorderWindow::Log.find("Close"), std::string::npos);
  RecorderWindow::Cancels = false;
  window->Close();
  window->Close();
  EXPECT_TRUE(RecorderWindow::Log.ends_with("field.Open Open field.Close Close "));
  EXPECT_TRUE(WindowSupport::Windows().empty());
}

TEST_F(ModelTest, ActivationRaisesItsEventsInOrder) {
  const auto window = ImplicitWindow<RecorderWindow>();
  for (const auto& binding :
       {On("Activate", &RecorderWindow::Activated), On("Deactivate", &RecorderWindow::Deactivated),
        On("EnableMenuItems", &RecorderWindow::Enabling)}) {
    InstallInstanceEventHandler(*window, binding);
  }
  RecorderWindow::Log.clear();
  window->Width(99);
  window->Height(99);
  window->Show();
  Until([] { return QApplication::activeWindow(); });
  WAbout()->Show();
  Until([] { return TopLevel("About")->isActiveWindow(); });
  EXPECT_EQ(RecorderWindow::Log, "Activate EnableMenuItems Deactivate EnableMenuItems ");
  RecorderWindow::Log.clear();
  window->EnableMenuItems({});
  EXPECT_EQ(RecorderWindow::Log, "EnableMenuItems ");
}

TEST_F(ModelTest, HandlersOfATimerRunOnItsWindow) {
  const auto dialog = WPerm();
  EXPECT_TRUE(dialog->Timer1()->Self() == dialog);
  EXPECT_THROW(RuntimeCreateDelegate(&RecorderWindow::Open).Call(*dialog, {}),
               IllegalCastException);
  EXPECT_THROW(RuntimeCheckCast<RecorderWindow>(dialog), IllegalCastException);
}

TEST_F(ModelTest, UpdateNowPaintsBeforeItReturns) {
  const auto window = ImplicitWindow<RecorderWindow>();
  RuntimeMassPropertySetter(*window, WindowList{.Width = 99, .Height = 99, .Title = "painted"});
  window->Show();
  auto& top = *TopLevel("painted");
  Until([&] { return top.isActiveWindow(); });
  QApplication::processEvents();
  int paints = 0;
  const OnEvent observer(top, QEvent::Paint, [&](QObject&) { ++paints; });
  UpdateNowMBS(window);
  EXPECT_EQ(paints, 1);
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
  EXPECT_TRUE(RecorderWindow::LastMe == window);
  RecorderWindow::Log.clear();
  Field(window)->Text("x");
  EXPECT_EQ(RecorderWindow::Log, "TextChange ");  // before the write returns
  EXPECT_TRUE(RecorderWindow::LastMe == Field(window));
  EXPECT_FALSE(Me());
  EXPECT_FALSE(Field(window)->Raise("DropObject", {Ref<Object>(), Int32(0)}));
  EXPECT_NO_THROW(InstallInstanceEventHandler(*window, On("KeyDown", &RecorderWindow::Change)));
  const auto install = [&](const char* event) {
    InstallInstanceEventHandler(*Field(window), On(event, &RecorderWindow::Change));
  };
  EXPECT_THROW(install("Action"), KeyNotFoundException);
  EXPECT_THROW(install("DropObject"), TypeMismatchException);
}
