#include "tests/Fixtures.h"

using namespace zelto;

namespace {

class WindowsTest : public WindowTest<> {
 protected:
  // For Undo, Cut, Copy, Paste, Delete and Select All: the third letter if the item is enabled, or
  // else "-".
  std::string EnabledEdits() {
    std::string enabled;
    for (const char* const text : {"&Undo", "Cu&t", "&Copy", "&Paste", "&Delete", "Select &All"}) {
      enabled += Item(text)->isEnabled() ? QString(text).remove('&').toStdString()[2] : '-';
    }
    return enabled;
  }
};

// Each control is where its list says, with the listed visibility, font and default button.
template <class... T>
void ExpectListed(QWidget& top, const Ref<T>&... controls) {
  const auto expect = [&](const auto& list) {
    const auto& widget = ControlWidget(top, Bytes(list.Name).c_str());
    SCOPED_TRACE(Bytes(list.Name));
    EXPECT_EQ(widget.geometry(), QRect(list.Left, list.Top, list.Width, list.Height));
    EXPECT_EQ(widget.isVisible(), list.Visible);
    if constexpr (requires { list.TextSize; }) {
      EXPECT_EQ(widget.font().bold(), list.Bold);
      const int ownSize = std::max(widget.font().pixelSize(), 0);
      EXPECT_TRUE(ownSize == list.TextSize || widget.inherits("QLineEdit")) << ownSize;
    }
    if constexpr (requires { list.Default; }) {
      EXPECT_EQ(widget.property("default").toBool(), list.Default);
    }
  };
  (expect(controls->Properties()), ...);
}

bool IsAligned(QWidget& top, const char* label, Qt::Alignment alignment) {
  return ControlWidget<QLabel>(top, label).alignment() & alignment;
}

// Whether the canvas shows more than one colour.
bool ShowsPicture(QWidget& top) {
  const QImage shown = ControlWidget(top, "Canvas1").grab().toImage();
  QImage plain = shown;
  plain.fill(shown.pixelColor(0, 0));
  return shown != plain;
}

bool IsResizeable(QWidget& top) { return top.minimumSize() != top.maximumSize(); }

}  // namespace

TEST_F(WindowsTest, MainWindowLooksAsListedInBothWritingDirections) {
  for (const auto direction : {Qt::RightToLeft, Qt::LeftToRight}) {
    QApplication::setLayoutDirection(direction);
    ExpectListed(*mTop, mWindow->EditField1(), mWindow->BevelButton1(), mWindow->pbTest(),
                 mWindow->pbUpdate(), mWindow->StaticText1(), mWindow->Canvas1(),
                 mWindow->stStatus(), mWindow->EditField2(), mWindow->StaticText2(),
                 mWindow->StaticText3(), mWindow->stProduct(), mWindow->StaticText5(),
                 mWindow->stVersion());
    EXPECT_EQ(ControlWidget(*mTop, "stStatus").layoutDirection(), Qt::LeftToRight);
  }
  EXPECT_TRUE(IsAligned(*mTop, "StaticText1", Qt::AlignHCenter));
  EXPECT_TRUE(IsAligned(*mTop, "stStatus", Qt::AlignLeft));
  const auto& area = ControlWidget<QAbstractScrollArea>(*mTop, "EditField2");
  EXPECT_TRUE(area.verticalScrollBar()->isVisible());
  EXPECT_FALSE(area.horizontalScrollBar()->isVisible());
  EXPECT_TRUE(ShowsPicture(*mTop));
  EXPECT_FALSE(IsResizeable(*mTop));
}

TEST_F(WindowsTest, AuthenticateLooksAsListedAndIsCancelledByEscape) {
  const auto perm = WPerm();
  Globals::Authenticated = true;
  bool isCancelled = false;
  WhenModal([&](QWidget& dialog) {
    ExpectListed(dialog, perm->authuser(), perm->passwd(), perm->PushButton1(), perm->StaticText1(),
                 perm->StaticText2(), perm->StaticText3(), perm->PushButton2(), perm->Canvas1());
    EXPECT_TRUE(IsAligned(dialog, "StaticText1", Qt::AlignRight));
    EXPECT_EQ(ControlWidget<QLineEdit>(dialog, "authuser").echoMode(), QLineEdit::Normal);
    EXPECT_EQ(ControlWidget<QLineEdit>(dialog, "passwd").echoMode(), QLineEdit::Password);
    EXPECT_TRUE(ShowsPicture(dialog));
    EXPECT_TRUE(IsResizeable(dialog));
    EXPECT_EQ(dialog.windowModality(), Qt::ApplicationModal);
    auto& cancel = ControlWidget<QPushButton>(dialog, "PushButton2");
    QObject::connect(&cancel, &QPushButton::pressed, [&] { isCancelled = true; });
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  perm->ShowModal();
  EXPECT_TRUE(isCancelled);
  EXPECT_FALSE(Globals::Authenticated);
}

TEST_F(WindowsTest, MenuBarIsSharedAndHasItsItemsInOrder) {
  const auto bar = MenuBar1();
  std::vector<Ref<MenuItem>> items;
  for (const auto& menu : bar->Items()) {
    items.push_back(menu);
    items.insert(items.end(), menu->Items().begin(), menu->Items().end());
  }
  std::string texts;
  for (const auto& item : items) {
    texts += Bytes(item->Name() + " " + item->Text() + " " + item->KeyboardShortcut()) +
             (item->AutoEnable() ? ";" : "!");
  }
  EXPECT_EQ(texts,
            "FileMenu &File ;FileQuit &Quit Cmd+Q;mAbout About ZELTO Group Update Utility ;"
            "EditMenu &Edit ;EditUndo &Undo Cmd+Z;UntitledMenu1 - ;EditCut Cu&t Cmd+X;EditCopy "
            "&Copy Cmd+C;"
            "EditPaste &Paste Cmd+V;EditClear &Delete ;UntitledMenu0 - ;"
            "EditSelectAll Select &All Cmd+A;");
  const std::vector<Ref<MenuItem>> accessors{
      mWindow->FileMenu(),  mWindow->FileQuit(),      mWindow->mAbout(),
      mWindow->EditMenu(),  mWindow->EditUndo(),      mWindow->UntitledMenu1(),
      mWindow->EditCut(),   mWindow->EditCopy(),      mWindow->EditPaste(),
      mWindow->EditClear(), mWindow->UntitledMenu0(), mWindow->EditSelectAll()};
  EXPECT_TRUE(accessors == items);
  EXPECT_TRUE(MenuBar1() == bar && mWindow->MenuBar() == bar);
  EXPECT_FALSE(bar->Child("EditCut"));
  EXPECT_FALSE(mWindow->CallMenuHandler("EditCut"));
}

TEST_F(WindowsTest, MenuItemsAreEnabledWhenTheyApply) {
  QApplication::clipboard()->clear();
  mLine->setFocus();
  EXPECT_EQ(EnabledEdits(), "------");
  QTest::keyClicks(mLine, "abc");
  EXPECT_EQ(EnabledEdits(), "d----l");
  Item("Select &All")->trigger();
  EXPECT_EQ(EnabledEdits(), "dtp-l-");
  Item("&Copy")->trigger();
  EXPECT_EQ(EnabledEdits(), "dtpsl-");
  mLine->setEchoMode(QLineEdit::Password);
  mLine->setSelection(0, 2);  // Qt does not signal a change of the echo mode
  EXPECT_EQ(EnabledEdits(), "d--sll");
  ControlWidget(*mTop, "EditField2").setFocus();
  EXPECT_EQ(EnabledEdits(), "------");
  mWindow->EditField2()->Text("described");
  EXPECT_EQ(EnabledEdits(), "-----l");
  EXPECT_TRUE(Item("About ZELTO Group Update Utility")->isEnabled());
  std::string shortcuts;
  for (auto* menu : mTop->findChildren<QMenu*>()) {
    for (auto* action : menu->actions()) shortcuts += action->shortcut().toString().toStdString();
  }
  EXPECT_EQ(shortcuts, "Ctrl+QCtrl+ZCtrl+XCtrl+CCtrl+VCtrl+A");
  Item("&Quit")->trigger();
  EXPECT_THROW(ThrowIfQuitting(), EndException);
}

TEST_F(WindowsTest, AboutShowsTheVersionAndClosesOnMouseReleaseOrEscape) {
  const auto show = [&](const std::function<void(QWidget&)>& close) {
    WhenModal(close);
    Item("About ZELTO Group Update Utility")->trigger();
    EXPECT_FALSE(GetImplicitWindow("WAbout.WAbout"));
  };
  show([](QWidget& about) {
    const auto window = WAbout();
    ExpectListed(about, window->Canvas1(), window->StaticText1(), window->StaticText2(),
                 window->StaticText3(), window->Canvas2());
    EXPECT_TRUE(ShowsPicture(about));
    EXPECT_FALSE(IsResizeable(about));
    EXPECT_EQ(about.windowModality(), Qt::WindowModal);
    QStringList texts(about.windowTitle());
    for (auto* label : about.findChildren<QLabel*>()) texts << label->text();
    EXPECT_EQ(texts, QStringList({"About", MainTitle, "Version " ZELTO_VERSION,
                                  "© 2026 ZELTO Group. All rights reserved."}));
    QTest::keyClick(&about, Qt::Key_Escape);
  });
  for (const QPoint& place : {QPoint(1, 1), QPoint(150, 60), QPoint(150, 195)}) {
    show([&](QWidget& about) {
      auto* top = about.childAt(place);
      QTest::mousePress(top, Qt::LeftButton, {}, place);
      EXPECT_TRUE(about.isVisible());
      QTest::mouseRelease(top, Qt::LeftButton, {}, place);
    });
  }
}
