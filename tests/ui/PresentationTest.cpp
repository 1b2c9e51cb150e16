#include <QAbstractScrollArea>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTest>

#include "platform/MessageDialog.h"
#include "platform/qt/ImagePicture.h"
#include "tests/Fixtures.h"
#include "ui/MenuBar1.h"
#include "ui/Pictures.h"
#include "ui/WAbout.h"
#include "ui/WPerm.h"

using namespace zelto;

namespace {

class PresentationTest : public WindowTest<> {
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

// The bounding rectangle of the text pixels of a label or a button.
QRect Ink(QWidget& widget, double scale) {
  const QVariant text = widget.property("text");
  const auto render = [&](const QVariant& shown) {
    widget.setProperty("text", shown);
    QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    widget.render(&image);
    return image;
  };
  const QImage without = render("");
  const QImage with = render(text);
  QRect ink;
  for (int y = 0; y < with.height(); ++y) {
    for (int x = 0; x < with.width(); ++x) {
      if (with.pixel(x, y) != without.pixel(x, y)) ink |= QRect(x, y, 1, 1);
    }
  }
  return ink;
}

// A line for each control, in the order of creation: its name and place, then what else a person
// sees. "12px" is a font size of its own; "left", "centre" and "right" are alignments.
std::string Look(QWidget& top) {
  std::string look;
  for (auto* widget : top.findChildren<QWidget*>()) {
    const QString name = widget->objectName();
    if (name.isEmpty() || name.startsWith("qt_")) continue;
    const QRect place(widget->mapTo(widget->parentWidget(), QPoint()), widget->size());
    look += name.toStdString();
    for (const int part : {place.x(), place.y(), place.width(), place.height()}) {
      look += " " + std::to_string(part);
    }
    const auto add = [&](bool applies, const char* what) { look += applies ? what : ""; };
    if (auto* label = qobject_cast<QLabel*>(widget)) {
      add(label->alignment() & Qt::AlignLeft, " left");
      add(label->alignment() & Qt::AlignHCenter, " centre");
      add(label->alignment() & Qt::AlignRight, " right");
      add(label->font().bold(), " bold");
    }
    const int pixels = widget->inherits("QLineEdit") ? -1 : widget->font().pixelSize();
    if (pixels > 0) look += " " + std::to_string(pixels) + "px";
    if (auto* line = qobject_cast<QLineEdit*>(widget)) {
      add(line->echoMode() == QLineEdit::Password, " secret");
    }
    if (auto* button = qobject_cast<QPushButton*>(widget)) add(button->isDefault(), " default");
    if (auto* area = qobject_cast<QAbstractScrollArea*>(widget)) {
      add(area->verticalScrollBar()->isVisible(), " vertical bar");
      add(area->horizontalScrollBar()->isVisible(), " horizontal bar");
    }
    add(!widget->isVisible(), " hidden");
    look += "\n";
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

QWidget* alerted = nullptr;

}  // namespace

// Replaces the toolkit's function.
void QApplication::alert(QWidget* widget, int) { alerted = widget; }

TEST_F(PresentationTest, WindowsLookAsDesigned) {
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

TEST_F(PresentationTest, MenuBarIsSharedAndHasItsItemsInOrder) {
  const auto bar = MenuBar1();
  std::string items;
  for (const auto& menu : bar->Items()) {
    items += Bytes(menu->Name()) + "(";
    for (const auto& item : menu->Items()) {
      items += Bytes(item->Name() + " " + item->Text() + " " + item->KeyboardShortcut()) +
               (item->AutoEnable() ? ";" : "!");
    }
    items += ")";
  }
  EXPECT_EQ(
      items,
      "FileMenu(FileQuit &Quit Cmd+Q;mAbout About ZELTO Group Update Utility ;)"
      "EditMenu(EditUndo &Undo Cmd+Z;UntitledMenu1 - ;EditCut Cu&t Cmd+X;EditCopy &Copy Cmd+C;"
      "EditPaste &Paste Cmd+V;EditClear &Delete ;UntitledMenu0 - ;"
      "EditSelectAll Select &All Cmd+A;)");
  EXPECT_TRUE(MenuBar1() == bar && mWindow->MenuBar() == bar);
  EXPECT_FALSE(bar->Child("EditCut"));
  EXPECT_TRUE(bar->Lookup("EditCut") == bar->Child("EditMenu")->Child("EditCut"));
  EXPECT_FALSE(mWindow->CallMenuHandler("EditCut"));
  const std::pair<Ref<MenuItem>, const char*> accessors[] = {
      {mWindow->FileMenu(), "FileMenu"},
      {mWindow->FileQuit(), "FileQuit"},
      {mWindow->mAbout(), "mAbout"},
      {mWindow->EditMenu(), "EditMenu"},
      {mWindow->EditUndo(), "EditUndo"},
      {mWindow->UntitledMenu1(), "UntitledMenu1"},
      {mWindow->EditCut(), "EditCut"},
      {mWindow->EditCopy(), "EditCopy"},
      {mWindow->EditPaste(), "EditPaste"},
      {mWindow->EditClear(), "EditClear"},
      {mWindow->UntitledMenu0(), "UntitledMenu0"},
      {mWindow->EditSelectAll(), "EditSelectAll"}};
  for (const auto& [item, name] : accessors) EXPECT_EQ(Bytes(item->Name()), name);
}

TEST_F(PresentationTest, MenuItemsAreEnabledWhenTheyApply) {
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

TEST_F(PresentationTest, AboutShowsTheVersionAndClosesOnMouseReleaseOrEscape) {
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

TEST_F(PresentationTest, NoTextIsClippedInAnyFontAtAnyScale) {
  const QFont before = QApplication::font();
  for (const int points : {8, 10, 12, 14, 16}) {
    for (const int stretch : {100, 150}) {
      QFont font("DejaVu Sans", points);
      font.setStretch(stretch);
      QApplication::setFont(font);
      const auto window = RuntimeNewObject<OpenedWindow1>();
      window->Constructor();
      window->stProduct()->Text("Zelto Core Services");
      window->stVersion()->Text("12.10.345 (beta)");
      window->pbUpdate()->Enabled(true);
      WPerm()->Show();
      WAbout()->Show();
      for (auto* widget : QApplication::allWidgets()) {
        const auto text = widget->property("text").toString();
        if (!widget->isVisible() || widget->window() == mTop || text.isEmpty() ||
            widget->inherits("QLineEdit")) {
          continue;
        }
        for (const double scale : {1.0, 1.5, 2.0, 3.0}) {
          const QRect ink = Ink(*widget, scale);
          const QRect area(QPoint(), (QSizeF(widget->size()) * scale).toSize());
          EXPECT_GE(ink.height(), text == "..." ? 1 : 4 * scale) << text.toStdString() << points;
          EXPECT_TRUE(area.adjusted(0, 1, -1, -1).contains(ink)) << text.toStdString() << points;
        }
      }
      WPerm()->Close();
      WAbout()->Close();
      InvokeHandler([&] { window->UnifiedClose(false); });
    }
  }
  QApplication::setFont(before);
}

TEST_F(PresentationTest, LongExplanationIsCompleteAndFitsTheScreen) {
  const auto dialog = mWindow->New<MessageDialog>();
  std::string text;
  for (int i = 0; i < 100'000; ++i) text += std::string(99, 'x') + "\n";
  dialog->Explanation(text);
  WhenModal([&](QWidget& box) {
    auto* area = box.findChild<QAbstractScrollArea*>();
    area->setFocus();
    EXPECT_EQ(area->verticalScrollBar()->value(), area->verticalScrollBar()->maximum());
    Until([&] {  // the keyboard has an effect
      QTest::keyClick(area, Qt::Key_A, Qt::ControlModifier);
      QTest::keyClick(area, Qt::Key_C, Qt::ControlModifier);
      return QApplication::clipboard()->text().toStdString() == text;
    });
    // Assistive technology meets one text.
    auto* accessible = QAccessible::queryAccessibleInterface(area)->textInterface();
    EXPECT_EQ(accessible->text(0, accessible->characterCount()).toStdString(), text);
    EXPECT_TRUE(box.screen()->availableGeometry().size().expandedTo(box.size()) ==
                box.screen()->availableGeometry().size());
    box.close();
  });
  dialog->ShowModalWithin(mWindow);
}

TEST_F(PresentationTest, DialogAsksForAttentionAndIsNotAnsweredByTypeAhead) {
  const auto dialog = mWindow->New<MessageDialog>();
  dialog->CancelButton()->Visible(true);
  WhenModal([](QWidget& box) {
    Until([&] { return alerted == &box; });
    QElapsedTimer timer;
    timer.start();
    Until([&] {
      for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape}) {
        if (box.isVisible()) QTest::keyClick(QApplication::focusWidget(), key);
      }
      return !box.isVisible();
    });
    EXPECT_GT(timer.elapsed(), 400);
  });
  EXPECT_TRUE(dialog->ShowModalWithin(mWindow) == dialog->CancelButton());
}

// Runs in a copy of this executable, and changes the pictures next to the folder of the copy.
TEST(Pictures, LoadOnFirstUseAndAreCached) {
  const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path();
  if (!IsRunAgain()) {
    for (const std::string scale : {"1", "2"}) {
      const StubPrograms programs;
      std::filesystem::copy("/proc/self/exe", programs.Path("bin/copy"));
      std::filesystem::copy(folder / "Resources", programs.Path("Resources"));
      RunAgain("env QT_SCALE_FACTOR=" + scale, programs.Path("bin/copy"));
    }
    return;
  }
  const auto get = x_MacBGrayscale48x48::MacBGrayscale48x48;
  const ApplicationFixture application;
  const auto file = folder / "Resources/MacBGrayscale48x48.png";
  const auto content = Read(file);
  for (const std::string damaged : {"", "no picture"}) {
    Write(file, damaged);
    EXPECT_FALSE(get());
  }
  std::filesystem::remove(file);
  testing::internal::CaptureStderr();
  EXPECT_FALSE(get());
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_TRUE(WPerm());  // the window is complete without pictures
  Write(file, content);
  const auto picture = get();
  ASSERT_TRUE(picture);
  std::filesystem::remove_all(folder / "Resources");
  EXPECT_TRUE(get() == picture);
  const QImage image = MaskedImage(*picture);
  EXPECT_EQ(image.size(), QSize(48, 48) * qApp->devicePixelRatio());
  EXPECT_EQ(qAlpha(image.pixel(image.rect().topLeft())), 0);
  EXPECT_EQ(qAlpha(image.pixel(image.rect().center())), 255);
  EXPECT_EQ(qAlpha(image.pixel(image.rect().bottomRight())), 0);
}
