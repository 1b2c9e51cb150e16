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

QWidget* alerted = nullptr;

}  // namespace

// Replaces the toolkit's function.
void QApplication::alert(QWidget* widget, int) { alerted = widget; }

TEST_F(PresentationTest, WindowsShowTheValuesOfTheirLists) {
  const auto label = [](QWidget& window, const char* name) -> QLabel& {
    return ControlWidget<QLabel>(window, name);
  };
  const QFont product = label(*mTop, "stProduct").font();
  EXPECT_TRUE(product.bold() && product.pixelSize() == 11);
  EXPECT_FALSE(label(*mTop, "StaticText2").font().bold());
  EXPECT_EQ(label(*mTop, "stVersion").geometry(), QRect(317, 103, 151, 17));
  EXPECT_EQ(label(*mTop, "StaticText1").alignment(), Qt::AlignHCenter | Qt::AlignTop);
  EXPECT_FALSE(ControlWidget(*mTop, "pbTest").isVisible());
  EXPECT_TRUE(ControlWidget<QPushButton>(*mTop, "pbUpdate").isDefault());
  const auto& description = ControlWidget<QAbstractScrollArea>(*mTop, "EditField2");
  EXPECT_TRUE(description.verticalScrollBar()->isVisible());
  EXPECT_FALSE(description.horizontalScrollBar()->isVisible());
  const QImage drawn = ControlWidget(*mTop, "Canvas1").grab().toImage();
  EXPECT_NE(drawn.pixel(24, 24), drawn.pixel(0, 0));
  EXPECT_EQ(mTop->minimumSize(), mTop->maximumSize());
  WPerm()->Show();
  auto& dialog = *TopLevel("Authenticate");
  EXPECT_NE(dialog.minimumSize(), dialog.maximumSize());
  EXPECT_EQ(ControlWidget<QLineEdit>(dialog, "passwd").echoMode(), QLineEdit::Password);
  EXPECT_EQ(label(dialog, "StaticText2").alignment(), Qt::AlignRight | Qt::AlignVCenter);
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
      EXPECT_EQ(about.windowModality(), Qt::WindowModal);
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
    const StubPrograms programs;
    std::filesystem::copy("/proc/self/exe", programs.Path("bin/copy"));
    std::filesystem::copy(folder / "Resources", programs.Path("Resources"));
    return RunAgain("", programs.Path("bin/copy"));
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
  EXPECT_EQ(image.size(), QSize(48, 48));
  EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
  EXPECT_EQ(qAlpha(image.pixel(24, 24)), 255);
}
