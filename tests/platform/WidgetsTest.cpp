#include <stdlib.h>

#include "core/FileTypes1.h"
#include "platform/Files.h"
#include "platform/qt/Text.h"
#include "tests/Fixtures.h"

using namespace zelto;

namespace {

// Windows whose handlers only record their names.
class QuietWindow1 : public OpenedWindow1 {
 public:
  std::string Log;
  void EditField1_DropObject(const Ref<DragItem>& item, Int32) override {
    Log += "Drop " + Bytes(item->FolderItem()->NativePath()) + " ";
  }
  void EditField1_TextChange() override { Log += "TextChange "; }
  void BevelButton1_Action() override { Log += "BevelButton1 "; }
  void pbUpdate_Action() override { Log += "pbUpdate "; }
};

class WidgetsTest : public WindowTest<QuietWindow1> {
 protected:
  bool Drop(const QByteArray& content, const char* type = "text/uri-list") {
    QMimeData data;
    data.setData(type, content);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(mLine, &enter);
    const auto* mark = mLine->findChild<QRubberBand*>();
    EXPECT_EQ(mark->isVisible(), enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(mLine, &drop);
    EXPECT_FALSE(mark->isVisible());
    return enter.isAccepted();
  }
};

}  // namespace

TEST_F(WidgetsTest, LowFieldHasAFrameAndAFocusRing) {
  const auto edge = [this] {  // the greys of a column of pixels from outside the field to its text
    const QRect column(mLine->mapTo(mTop, QPoint(180, -1)), QSize(1, 6));
    const QImage image = mTop->grab(column).toImage();
    std::vector<int> greys;
    for (int y = 0; y < image.height(); ++y) greys.push_back(qGray(image.pixel(0, y)));
    return greys;
  };
  const QString before = QApplication::style()->name();
  for (const auto* const name : {"Fusion", "Breeze"}) {
    if (!QStyleFactory::keys().contains(name)) continue;
    ControlWidget(*mTop, "EditField2").setFocus();
    QApplication::setStyle(name);
    const auto plain = edge();
    mLine->setFocus();
    Until([&] { return edge() != plain; });  // Breeze fades the ring in
    EXPECT_LT(std::ranges::min(plain), std::min(plain.front(), plain.back())) << name;
  }
  QApplication::setStyle(before);
}

TEST_F(WidgetsTest, ReturnPressesTheDefaultButtonOnlyIfEnabled) {
  mLine->setFocus();
  QTest::keyClick(mLine, Qt::Key_Return);
  EXPECT_EQ(mWindow->Log, "");
  mWindow->pbUpdate()->Enabled(true);
  QTest::keyClick(mLine, Qt::Key_Return);
  QTest::mouseClick(&ControlWidget(*mTop, "BevelButton1"), Qt::LeftButton);
  EXPECT_EQ(mWindow->Log, "pbUpdate BevelButton1 ");
  EXPECT_TRUE(mLine->hasFocus());
}

TEST_F(WidgetsTest, TabFollowsTabIndex) {
  const auto order = [](QWidget& first) {
    first.setFocus();
    std::string names;
    do {
      names += QApplication::focusWidget()->objectName().toStdString() + " ";
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (!first.hasFocus() && names.size() < 200);
    return names;
  };
  mWindow->pbUpdate()->Enabled(true);
  EXPECT_EQ(order(ControlWidget(*mTop, "EditField1")),
            "EditField1 BevelButton1 pbUpdate EditField2 ");
  WPerm()->Show();
  auto& dialog = *TopLevel("Authenticate");
  Until([&] { return dialog.isActiveWindow(); });
  EXPECT_EQ(order(ControlWidget(dialog, "authuser")), "authuser passwd PushButton1 PushButton2 ");
}

TEST_F(WidgetsTest, TextIsReadBackUnchanged) {
  const std::string odd = "/x\xFF\x01/<b>\xC3\xA4";
  mWindow->EditField1()->Text(odd);
  EXPECT_EQ(Bytes(mWindow->EditField1()->Text()), odd);
  EXPECT_EQ(mLine->text(), QString::fromUtf8("/x\xEF\xBF\xBD/<b>\xC3\xA4"));
  mLine->setFocus();
  QTest::keyClick(mLine, Qt::Key_End);
  QTest::keyClick(mLine, Qt::Key_Z);
  EXPECT_EQ(Bytes(mWindow->EditField1()->Text()), "/x\xEF\xBF\xBD/<b>\xC3\xA4z");
  EXPECT_EQ(mWindow->Log, "TextChange TextChange ");
}

TEST_F(WidgetsTest, PastedTextLosesTrailingNewlinesAndFitsIntoACommandLine) {
  const auto field = mWindow->EditField1();
  for (const bool isPassword : {false, true}) {
    field->Set(&EditFieldList::Password, isPassword);
    for (const auto& text :
         {QString("/x/a\r\n\n"), QString("b\nc"), QString("b") + QChar::Null + "c"}) {
      QApplication::clipboard()->setText(text);
      mLine->paste();
      EXPECT_EQ(Bytes(field->Text()), "/x/a");
    }
    mLine->clear();
  }
  field->Text("/x/a\nb\n");
  EXPECT_EQ(Bytes(field->Text()), "/x/a\nb\n");
}

TEST(DisplayText, OmitsControlsAndConvertsCarriageReturns) {
  const std::pair<const char*, const char*> shown[] = {
      {"\x1B[1;31mred\x1B[0m \x1B[Kend\u009B31m", "red end"},
      {"\x1B]0;title\aa\x1B]8;;x\x1B\\b", "ab"},
      {"\x1B(Ba\033cb\x1B]open\nc", "abopen\nc"},
      {"1%\r2%\r\n3%\n", "1% 2%\n3%\n"},
      {"a\tb\x08\x7F\x1B", "a\tb"},
      {"\uFEFFZELTO \u202Elive\u202C \u2066a\u2069\u200E\u200F\u061C", "ZELTO live a"},
      {"\u0646\u200C\u0627", "\u0646\u200C\u0627"}};  // a joiner changes the shape of letters
  for (const auto& [text, expected] : shown) {
    EXPECT_EQ(ToDisplayText(std::string(text)).toStdString(), expected);
  }
}

TEST_F(WidgetsTest, OnlyFilesOfTheRegisteredTypesCanBeDropped) {
  EXPECT_TRUE(Drop("file:///x/a.tar.gz"));
  EXPECT_TRUE(Drop("file://localhost/x/%C3%A4%20b.TGZ\r\nfile:///x/second.tgz"));
  for (const char* const url : {"file://elsewhere/x/a.tar.gz", "file:///x/a.gz", "file:///x/tgz",
                                "file:///x/a.tgz.x", "", "https://example.com/a.tar.gz"}) {
    EXPECT_FALSE(Drop(url)) << url;
  }
  EXPECT_FALSE(Drop("text", "text/plain"));
  RuntimeRegisterFileType("archive", {}, {}, "zip");
  mWindow->EditField1()->AcceptFileDrop("archive");
  EXPECT_TRUE(Drop("file:///x/a.zip"));
  EXPECT_TRUE(Drop("file:///x/a.tgz"));
  QApplication::processEvents();
  EXPECT_EQ(mWindow->Log, "Drop /x/a.tar.gz Drop /x/\xC3\xA4 b.TGZ Drop /x/a.zip Drop /x/a.tgz ");
}

TEST_F(WidgetsTest, ADropEndsWithItsWindow) {
  Drop("file:///x/a.tar.gz");
  InvokeHandler([&] { mWindow->Close(); });
  QApplication::processEvents();
  EXPECT_EQ(mWindow->Log, "");
}

TEST_F(WidgetsTest, InputIsIgnoredWhileAHandlerWaits) {
  mWindow->pbUpdate()->Enabled(true);
  auto& button = ControlWidget<QAbstractButton>(*mTop, "pbUpdate");
  Drop("file:///x/a.tar.gz");  // still being delivered when the handler starts
  InvokeHandler([&] {
    App()->DoEvents(20);
    QTest::keyClick(mLine, Qt::Key_Return);
    QTest::keyClick(mLine, Qt::Key_A);
    QTest::keyClick(mLine, Qt::Key_Tab);
    QTest::mouseClick(&button, Qt::LeftButton);
    button.click();  // like assistive technology
    mLine->setText("typed");
    Drop("file:///x/a.tar.gz");
    QEvent quit(QEvent::Quit);  // the desktop asks to quit; the first request is refused
    QApplication::sendEvent(qApp, &quit);
  });
  EXPECT_NO_THROW(ThrowIfQuitting());
  EXPECT_EQ(mWindow->Log, "");
  EXPECT_EQ(mLine->text(), "");
  EXPECT_TRUE(mLine->hasFocus());
}

TEST_F(WidgetsTest, PropertiesTakeEffect) {
  const auto field = mWindow->EditField1();
  field->Set(&EditFieldList::LimitText, 3);
  QTest::keyClicks(mLine, "abcd");
  EXPECT_EQ(mLine->text(), "abc");
  field->Set(&EditFieldList::Password, true);
  QTest::keyClick(mLine, Qt::Key_Backspace);
  QTest::keyClick(mLine, Qt::Key_X);
  EXPECT_FALSE(mLine->isUndoAvailable());  // the undo history would hold the letters
}

TEST(OpenDialog, StartsInDownloadsAndThenInTheLastUsedFolder) {
  const StubPrograms stubs;
  const std::string home = getenv("HOME");
  std::filesystem::create_directory(stubs.Path("Downloads"));
  std::filesystem::create_directory(stubs.Path("used"));
  Write(stubs.Path("used/a.tgz"), "");
  setenv("HOME", stubs.Folder().c_str(), 1);
  {
    const ApplicationFixture application;
    std::string folders;
    for (int i = 0; i < 2; ++i) {
      AnswerFileDialog(stubs.Path("used/a.tgz"), QDialog::Accepted, [&](const auto& dialog) {
        folders += dialog.directory().dirName().toStdString() + " ";
      });
      RuntimeGetOpenFolderItem(*FileTypes1::gzipTarFile());
    }
    EXPECT_EQ(folders, "Downloads used ");
  }
  setenv("HOME", home.c_str(), 1);
}

// A second screen is above and to the left of the primary screen.
TEST(Screen, PositionsAreRelativeToThePrimaryScreen) {
  const StubPrograms folder;
  Write(folder.Folder() / "screens.json",
        R"({"screens": [{"name": "a", "x": 800, "y": 600, "width": 1024, "height": 768,
                         "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1},
                        {"name": "b", "x": 0, "y": 0, "width": 800, "height": 600,
                         "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
  setenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + folder.Path("screens.json")).c_str(), 1);
  Write(folder.Folder() / "none.json", R"({"screens": []})");
  EXPECT_EXIT(
      {
        setenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + folder.Path("none.json")).c_str(), 1);
        RuntimeInit();
      },
      testing::ExitedWithCode(1), "zelto-update-utility: no display can be opened: ");
  {
    const ApplicationFixture application;
    EXPECT_EQ(zelto::Screen(0)->Width(), 1024);
    EXPECT_FALSE(zelto::Screen(1));
    WPerm()->Show();
    EXPECT_EQ(TopLevel("Authenticate")->geometry().topLeft(),
              QPoint(800 + (1024 - 416) / 2, 600 + (768 - 213) / 3 + 22));
    EXPECT_EQ(WPerm()->Left(), (1024 - 416) / 2);
  }
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
}
