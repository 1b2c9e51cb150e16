#include "platform/MessageDialog.h"
#include "platform/PropertyLists.h"
#include "platform/Window.h"
#include "tests/Stage.h"

using namespace zelto;

namespace {

// A window that notes what happens to it.
class Noting : public Window {
 public:
  static inline std::string Notes;
  static inline bool Cancels = false;

  static const Class& ClassTable() {
    static const Class table(
        {.Name = "Noting.Noting",
         .Base = &Window::ClassTable(),
         .Handlers = {
             {"Layout", RuntimeCreateDelegate(&Noting::Layout, "(  )")},
             {"CreateControls", RuntimeCreateDelegate(&Noting::CreateControls, "(  )")},
             {"AddMenuHandlers", RuntimeCreateDelegate(&Noting::AddHandlers, "( Window )")},
             {"Open", RuntimeCreateDelegate(&Noting::Open, "(  )")},
             {"Close", RuntimeCreateDelegate(&Noting::Closed, "(  )")},
             {"CancelClose",
              RuntimeCreateDelegate(&Noting::CancelClose, "( Boolean ) as Boolean")}}});
    return table;
  }
  const Class& ClassOf() const override { return ClassTable(); }

  void Layout() { Notes += "Layout "; }
  void CreateControls() {
    Notes += "CreateControls ";
    AddControlRows(
        *this, {{.Name = "field",
                 .Create = CreateControl<EditField>,
                 .List = EditFieldList{.Name = "field", .Text = "listed"},
                 .Events = {On("Open", &Noting::FieldOpen), On("TextChange", &Noting::Change)}}});
  }
  void AddHandlers(Ref<Window> target) { Notes += target.Get() == this ? "AddMenuHandlers " : "?"; }
  void FieldOpen() { Notes += "field.Open "; }
  void Change() { Notes += "TextChange "; }
  void Open() { Notes += "Open "; }
  void Closed() { Notes += "Close "; }
  bool CancelClose(bool) { return Cancels; }
};

class ModelTest : public testing::Test {
 protected:
  void SetUp() override {
    Noting::Notes.clear();
    Noting::Cancels = false;
  }
  Stage mStage;
};

Ref<EditField> Field(const Ref<Noting>& window) {
  return ControlNamed<EditField>(*window, "field");
}

}  // namespace

TEST_F(ModelTest, WindowsComeIntoBeingInOrderAndOnlyOnce) {
  const auto window = ImplicitWindow<Noting>();
  EXPECT_EQ(Noting::Notes, "Layout CreateControls AddMenuHandlers field.Open Open ");
  EXPECT_TRUE(ImplicitWindow<Noting>() == window);
  Field(window)->Text("x");
  window->Close();
  EXPECT_FALSE(GetImplicitWindow("Noting.Noting"));
  EXPECT_FALSE(Field(window));
  EXPECT_THROW(Field(window)->Text(), NilObjectException);
  const auto second = ImplicitWindow<Noting>();
  EXPECT_FALSE(second == window);
  EXPECT_EQ(Bytes(Field(second)->Text()), "listed");
}

TEST_F(ModelTest, CancelCloseLeavesAllAsItWas) {
  const auto window = ImplicitWindow<Noting>();
  Noting::Cancels = true;
  window->Close();
  EXPECT_TRUE(GetImplicitWindow("Noting.Noting") == window);
  EXPECT_EQ(WindowSupport::Windows().size(), 1U);
  EXPECT_TRUE(Field(window));
  EXPECT_EQ(Noting::Notes.find("Close"), std::string::npos);
}

TEST_F(ModelTest, EventsCallTheirHandlersAndRefuseWrongOnes) {
  const auto window = ImplicitWindow<Noting>();
  Noting::Notes.clear();
  Field(window)->Text("x");
  EXPECT_EQ(Noting::Notes, "TextChange ");  // before the write returns
  EXPECT_FALSE(Field(window)->Raise("DropObject", {Ref<Object>(), Int32(0)}));
  const Binding wrongName{"Action", RuntimeCreateDelegate(&Noting::Change, "(  )")};
  EXPECT_THROW(InstallInstanceEventHandler(*Field(window), wrongName), KeyNotFoundException);
  const Binding wrongKind{"DropObject", RuntimeCreateDelegate(&Noting::Change, "(  )")};
  EXPECT_THROW(InstallInstanceEventHandler(*Field(window), wrongKind), TypeMismatchException);
}

TEST_F(ModelTest, TheDispatcherPassesOverTheEndAndNothingElse) {
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
  RuntimeRun();  // returns at once
  EXPECT_EQ(RuntimeExit(), 1);
  RuntimeInit();
}

TEST_F(ModelTest, AHandlerThatWaitsTakesNoCloseTheFirstTime) {
  FromToolkit([&] {
    EXPECT_TRUE(AllowClose());
    App()->DoEvents(1);
    EXPECT_FALSE(AllowClose());
    EXPECT_TRUE(AllowClose());
  });
  EXPECT_FALSE(HandlerWaits());
}

TEST_F(ModelTest, ANewDialogHasOneButtonThatIsAlwaysTheSame) {
  const auto window = ImplicitWindow<Noting>();
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

TEST_F(ModelTest, ADismissedDialogAnswersForItsRefusingButton) {
  const auto window = ImplicitWindow<Noting>();
  const auto dialog = window->New<MessageDialog>();
  const auto dismiss = [](QWidget& shown) { shown.close(); };
  WhenModal(dismiss);
  EXPECT_TRUE(dialog->ShowModal() == dialog->ActionButton());
  dialog->CancelButton()->Visible(true);
  WhenModal(dismiss);
  EXPECT_TRUE(dialog->ShowModalWithin(window) == dialog->CancelButton());
}
