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

// What a person sees of the control besides its place and its text. "12px" is a font size of its
// own; "left", "centre" and "right" are alignments.
std::string Style(const QWidget& widget) {
  const auto* label = qobject_cast<const QLabel*>(&widget);
  const auto* line = qobject_cast<const QLineEdit*>(&widget);
  const auto* area = qobject_cast<const QAbstractScrollArea*>(&widget);
  const auto alignment = label ? label->alignment() : Qt::Alignment();
  const int pixels = line ? -1 : widget.font().pixelSize();
  const std::pair<bool, std::string> traits[] = {
      {alignment & Qt::AlignLeft, " left"},
      {alignment & Qt::AlignHCenter, " centre"},
      {alignment & Qt::AlignRight, " right"},
      {label && label->font().bold(), " bold"},
      {pixels > 0, " " + std::to_string(pixels) + "px"},
      {line && line->echoMode() == QLineEdit::Password, " secret"},
      {widget.property("default").toBool(), " default"},
      {area && area->verticalScrollBar()->isVisible(), " vertical bar"},
      {area && area->horizontalScrollBar()->isVisible(), " horizontal bar"},
      {!widget.isVisible(), " hidden"}};
  std::string style;
  for (const auto& [applies, name] : traits) style += applies ? name : "";
  return style;
}

// A line for each control, in the order of creation.
std::string Look(QWidget& top) {
  std::string look;
  for (const auto* widget : top.findChildren<QWidget*>(QRegularExpression("^(?!qt_).+"))) {
    look += widget->objectName().toStdString();
    for (const int part : {widget->x(), widget->y(), widget->width(), widget->height()}) {
      look += " " + std::to_string(part);
    }
    look += Style(*widget) + "\n";
  }
  return look;
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

TEST_F(WindowsTest, WindowsLookAsDesigned) {
  for (const auto direction : {Qt::RightToLeft, Qt::LeftToRight}) {
    QApplication::setLayoutDirection(direction);
    EXPECT_EQ(Look(*mTop),
              "EditField1 82 74 359 22\n"
              "BevelButton1 446 74 22 22\n"
              "pbTest 283 269 80 17 11px hidden\n"
              "pbUpdate 375 269 93 17 11px default\n"
              "StaticText1 82 14 386 48 centre\n"
              "Canvas1 20 14 48 48\n"
              "stStatus 20 269 251 17 left 11px\n"
              "EditField2 20 130 448 127 vertical bar\n"
              "StaticText2 20 75 61 20 left\n"
              "StaticText3 20 103 48 17 left 11px\n"
              "stProduct 71 103 183 17 left bold 11px\n"
              "StaticText5 266 103 46 17 left 11px\n"
              "stVersion 317 103 151 17 left bold 11px\n");
  }
  EXPECT_TRUE(ShowsPicture(*mTop));
  EXPECT_FALSE(IsResizeable(*mTop));
  Globals::Authenticated = true;
  bool isCancelled = false;
  WhenModal([&](QWidget& dialog) {
    EXPECT_EQ(Look(dialog),
              "authuser 185 85 211 21\n"
              "passwd 185 115 211 22 secret\n"
              "PushButton1 293 173 103 20 12px default\n"
              "StaticText1 96 86 85 20 right 12px\n"
              "StaticText2 54 116 127 21 right 12px\n"
              "StaticText3 89 14 307 54 left bold 12px\n"
              "PushButton2 218 173 69 20 12px\n"
              "Canvas1 20 20 48 48\n");
    EXPECT_TRUE(ShowsPicture(dialog));
    EXPECT_TRUE(IsResizeable(dialog));
    EXPECT_EQ(dialog.windowModality(), Qt::ApplicationModal);
    auto& cancel = ControlWidget<QPushButton>(dialog, "PushButton2");
    QObject::connect(&cancel, &QPushButton::pressed, [&] { isCancelled = true; });
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  WPerm()->ShowModal();
  EXPECT_TRUE(isCancelled);
  EXPECT_FALSE(Globals::Authenticated);
  WhenModal([](QWidget& about) {
    EXPECT_EQ(Look(about),
              "Canvas1 91 14 128 128\n"
              "StaticText1 20 154 270 20 centre\n"
              "StaticText2 20 186 270 20 centre 11px\n"
              "StaticText3 20 205 270 20 centre 11px\n"
              "Canvas2 0 0 310 245\n");
    EXPECT_TRUE(ShowsPicture(about));
    EXPECT_FALSE(IsResizeable(about));
    EXPECT_EQ(about.windowModality(), Qt::WindowModal);
    about.close();
  });
  mWindow->mAbout_Action();
}

TEST_F(WindowsTest, MenuBarIsSharedAndHasItsItemsInOrder) {
  const auto bar = MenuBar1();
  std::string texts;
  std::vector<Ref<MenuItem>> items;
  for (const auto& menu : bar->Items()) {
    texts += Bytes(menu->Name()) + "(";
    items.push_back(menu);
    for (const auto& item : menu->Items()) {
      texts += Bytes(item->Name() + " " + item->Text() + " " + item->KeyboardShortcut()) +
               (item->AutoEnable() ? ";" : "!");
      items.push_back(item);
    }
    texts += ")";
  }
  EXPECT_EQ(
      texts,
      "FileMenu(FileQuit &Quit Cmd+Q;mAbout About ZELTO Group Update Utility ;)"
      "EditMenu(EditUndo &Undo Cmd+Z;UntitledMenu1 - ;EditCut Cu&t Cmd+X;EditCopy &Copy Cmd+C;"
      "EditPaste &Paste Cmd+V;EditClear &Delete ;UntitledMenu0 - ;"
      "EditSelectAll Select &All Cmd+A;)");
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
  for (const QPoint& place : {QPoint(1, 1), QPoint(150, 60), QPoint(150, 195)}) {
    show([&](QWidget& about) {
      EXPECT_EQ(about.size(), QSize(310, 245));
      QStringList texts(about.windowTitle());
      for (auto* label : about.findChildren<QLabel*>()) texts << label->text();
      EXPECT_EQ(texts, QStringList({"About", MainTitle, "Version " ZELTO_VERSION,
                                    "© 2026 ZELTO Group. All rights reserved."}));
      auto* top = about.childAt(place);
      QTest::mousePress(top, Qt::LeftButton, {}, place);
      EXPECT_TRUE(about.isVisible());
      QTest::mouseRelease(top, Qt::LeftButton, {}, place);
    });
  }
  show([](QWidget& about) { QTest::keyClick(&about, Qt::Key_Escape); });
}
