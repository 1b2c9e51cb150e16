#include "tests/Fixtures.h"

using namespace zelto;
using testing::AllOf, testing::HasSubstr;

namespace {

// An application that handles exceptions and does not let the program end.
class StubbornApp : public zelto::App {
 public:
  bool Handle(const RuntimeException* exception) {
    Handled = Bytes(exception->ClassName());
    return true;
  }
  bool Refuse() { return true; }

  std::string Handled;
};

class ApplicationTest : public testing::Test, public ApplicationFixture {};

}  // namespace

TEST_F(ApplicationTest, ApplicationCanHandleAnExceptionAndRefuseToEnd) {
  const auto app = RuntimeNewObject<StubbornApp>();
  InstallInstanceEventHandler(*app, On("UnhandledException", &StubbornApp::Handle));
  InstallInstanceEventHandler(*app, On("CancelClose", &StubbornApp::Refuse));
  RuntimeRegisterAppObject(app);
  InvokeHandler([] { throw OutOfBoundsException(); });  // shows no dialog, which would block
  EXPECT_EQ(app->Handled, "OutOfBoundsException");
  EXPECT_THROW(Quit(0), EndException);
  EXPECT_NO_THROW(ThrowIfQuitting());
}

TEST_F(ApplicationTest, OnlyEndExceptionsAreIgnored) {
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
  try {
    throw OutOfBoundsException();
  } catch (...) {
    ReportCaughtException();
  }
  const auto said = testing::internal::GetCapturedStderr();
  EXPECT_THAT(labels, HasSubstr("UnsupportedFormatException: why"));
  EXPECT_THAT(said, AllOf(HasSubstr("zelto-update-utility: UnsupportedFormatException: why\n"),
                          HasSubstr("zelto-update-utility: OutOfBoundsException\n")));
  RuntimeRun();  // must return at once
  EXPECT_EQ(RuntimeExit(), 1);
  RuntimeInit();
}

TEST_F(ApplicationTest, DialogReturnsItsPressedButtonOrTheLastOneIfItIsClosed) {
  const auto window = WAbout();
  const auto dialog = window->New<MessageDialog>();
  dialog->ActionButton(nullptr);  // has no effect, like the other two
  dialog->CancelButton(nullptr);
  dialog->AlternateActionButton(nullptr);
  EXPECT_TRUE(dialog->ActionButton()->Visible());
  EXPECT_FALSE(dialog->CancelButton()->Visible());
  EXPECT_FALSE(dialog->AlternateActionButton()->Visible());
  dialog->Message("<b>main</b>");
  dialog->Explanation("one\n<img src=x>\xFF\x01");
  std::string labels;
  WhenModalPress("OK", &labels);
  EXPECT_TRUE(dialog->ShowModalWithin(window) == dialog->ActionButton());
  EXPECT_EQ(labels, "<b>main</b>|one\n<img src=x>\xEF\xBF\xBD|");
  const auto dismiss = [](QWidget& shown) { shown.close(); };
  WhenModal(dismiss);
  EXPECT_TRUE(dialog->ShowModal() == dialog->ActionButton());
  dialog->CancelButton()->Visible(true);
  WhenModal(dismiss);
  EXPECT_TRUE(dialog->ShowModalWithin(window) == dialog->CancelButton());
}
