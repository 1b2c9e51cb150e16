#include <QApplication>

#include "platform/MessageDialog.h"
#include "platform/PropertyLists.h"
#include "platform/Window.h"
#include "tests/Fixtures.h"

using namespace zelto;

namespace {

// A window that records its events.
class RecorderWindow : public Window {
 public:
  static inline std::string Log;
  static inline bool Cancels = false;
  static inline String List;
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

  void Layout() {
    Log += "Layout ";
    RuntimeMassPropertySetter(*this, List);
  }
  void NoteMe() { LastMe = Me(); }
  void CreateControls() {
    Log += "CreateControls ";
    AddControlRows(*this, {Row("field", {}, EditFieldList{.Text = "listed"},
                               {.Events = {On("Open", &RecorderWindow::FieldOpen),
                                           On("TextChange", &RecorderWindow::Change)}})});
  }
  void AddHandlers(Ref<Window> target) { Log += target.Get() == this ? "AddMenuHandlers " : "?"; }
  void FieldOpen() { Log += "field.Open "; }
  void Change() { Log += "TextChange "; }
  void Open() { Log += "Open "; }
  void Closed() { Log += "Close "; }
  bool CancelClose(bool) { return Cancels; }
};

// An application that ends at any exception, without a message.
class QuittingApp : public Application {
 public:
  static const Class& ClassTable() {
    static const Class table({.Name = "QuittingApp",
                              .Base = &Application::ClassTable(),
                              .Handlers = {On("UnhandledException", &QuittingApp::Unhandled)}});
    return table;
  }
  const Class& ClassOf() const override { return ClassTable(); }
  bool Unhandled(const RuntimeException* exception) {
    EXPECT_FALSE(exception->Stack().empty());
    Quit(3);
  }
};

class ModelTest : public testing::Test {
 protected:
  void SetUp() override {
    RecorderWindow::Log.clear();
    RecorderWindow::Cancels = false;
    RecorderWindow::List = {};
  }
  ApplicationFixture mApplication;
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
    EXPECT_THROW(Quit(0), EndException);
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
  const auto closed = RecorderWindow::Log.find("Close ");
  EXPECT_NE(closed, std::string::npos);
  EXPECT_EQ(RecorderWindow::Log.find("Close ", closed + 1), std::string::npos);
  EXPECT_TRUE(WindowSupport::Windows().empty());
}

TEST_F(ModelTest, MeIsTheObjectThatRaisedTheEvent) {
  const auto window = ImplicitWindow<RecorderWindow>();
  const auto raised = [&](const Ref<EventSource>& object) {
    RecorderWindow::LastMe = nullptr;
    InstallInstanceEventHandler(*object, On("Open", &RecorderWindow::NoteMe));
    object->Raise("Open");
    return std::exchange(RecorderWindow::LastMe, nullptr) == object;
  };
  EXPECT_TRUE(raised(Field(window)));
  EXPECT_TRUE(raised(window));
  EXPECT_FALSE(Me());
}

TEST_F(ModelTest, WindowShowsItselfIfItsListSaysSo) {
  for (const bool isVisible : {true, false}) {
    RecorderWindow::List = isVisible ? WindowList{.Width = 50} : WindowList{.Visible = false};
    const auto window = ImplicitWindow<RecorderWindow>();
    QApplication::processEvents();
    EXPECT_EQ(QApplication::topLevelWidgets().constFirst()->isVisible(), isVisible);
    window->Close();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

TEST_F(ModelTest, EventsCallTheirHandlersAndRefuseOtherSignatures) {
  const auto window = ImplicitWindow<RecorderWindow>();
  RecorderWindow::Log.clear();
  Field(window)->Text("x");
  EXPECT_EQ(RecorderWindow::Log, "TextChange ");  // before the write returns
  EXPECT_FALSE(Field(window)->Raise("DropObject", {Ref<Object>(), Int32(0)}));
  EXPECT_NO_THROW(InstallInstanceEventHandler(*window, On("KeyDown", &RecorderWindow::Change)));
  const Binding wrongName = On("Action", &RecorderWindow::Change);
  EXPECT_THROW(InstallInstanceEventHandler(*Field(window), wrongName), KeyNotFoundException);
  const Binding wrongKind = On("DropObject", &RecorderWindow::Change);
  EXPECT_THROW(InstallInstanceEventHandler(*Field(window), wrongKind), TypeMismatchException);
}

TEST_F(ModelTest, OnlyEndExceptionsAreIgnored) {
  const auto run = [](const std::function<void()>& function) {
    GetAppObject()->CallFunctionWithExceptionHandling(function);
  };
  EXPECT_NO_THROW(run([] { throw EndException(); }));
  EXPECT_NO_THROW(run([] { throw ThreadEndException(); }));
  EXPECT_THROW(run([] { throw 7; }), int);
  std::string labels;
  WhenModalPress("OK", &labels);
  testing::internal::CaptureStderr();
  run([] { throw UnsupportedFormatException("why"); });
  const auto said = testing::internal::GetCapturedStderr();
  EXPECT_NE(labels.find("UnsupportedFormatException: why"), std::string::npos);
  EXPECT_NE(said.find("zelto-update-utility: UnsupportedFormatException: why\n"),
            std::string::npos);
  RuntimeRun();  // must return at once
  EXPECT_EQ(RuntimeExit(), 1);
  RuntimeInit();
}

TEST_F(ModelTest, QuitInUnhandledExceptionEndsWithoutAMessage) {
  RuntimeRegisterAppObject(RuntimeNewObject<QuittingApp>());
  testing::internal::CaptureStderr();
  InvokeHandler([] { throw UnsupportedFormatException("why"); });
  EXPECT_NO_THROW(RuntimeRun());
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(RuntimeExit(), 3);
  RuntimeInit();
}

TEST_F(ModelTest, NewDialogHasOneVisibleButton) {
  const auto window = ImplicitWindow<RecorderWindow>();
  const auto dialog = window->New<MessageDialog>();
  const auto button = dialog->ActionButton();
  dialog->ActionButton(RuntimeNewObject<class ActionButton>());
  EXPECT_TRUE(dialog->ActionButton() == button);
  EXPECT_FALSE(dialog->CancelButton()->Visible());
  EXPECT_FALSE(dialog->AlternateActionButton()->Visible());
  EXPECT_FALSE(dialog->CancelButton()->Caption().IsNil());
  dialog->Message("<b>main</b>");
  dialog->Explanation("one\n<img src=x>\xFF\x01");
  std::string labels;
  WhenModalPress("OK", &labels);
  EXPECT_TRUE(dialog->ShowModalWithin(window) == button);
  EXPECT_EQ(labels, "<b>main</b>|one\n<img src=x>\xEF\xBF\xBD|");
}

TEST_F(ModelTest, DismissedDialogReturnsItsCancelButton) {
  const auto window = ImplicitWindow<RecorderWindow>();
  const auto dialog = window->New<MessageDialog>();
  const auto dismiss = [](QWidget& shown) { shown.close(); };
  WhenModal(dismiss);
  EXPECT_TRUE(dialog->ShowModal() == dialog->ActionButton());
  dialog->CancelButton()->Visible(true);
  WhenModal(dismiss);
  EXPECT_TRUE(dialog->ShowModalWithin(window) == dialog->CancelButton());
}
