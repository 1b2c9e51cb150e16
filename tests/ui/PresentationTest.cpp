#include <QAbstractScrollArea>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTest>

#include "platform/MessageDialog.h"
#include "platform/qt/Picture.h"
#include "tests/Fixtures.h"
#include "ui/MenuBar1.h"
#include "ui/Pictures.h"
#include "ui/WAbout.h"
#include "ui/WPerm.h"

using namespace zelto;

namespace {

class PresentationTest : public WindowTest<> {
 protected:
  QAction* Item(const QString& text) {
    for (auto* menu : mTop->findChildren<QMenu*>()) {
      for (auto* action : menu->actions()) {
        if (action->text() == text) return action;
      }
    }
    throw std::runtime_error("no such item");
  }

  // For Undo, Cut, Copy, Paste, Delete and Select All: the third letter if the item is enabled, or
  // else "-".
  std::string EnabledEdits() {
    std::string enabled;
    for (const char* const text : {"&Undo", "Cu&t", "&Copy", "&Paste", "&Delete", "Select &All"}) {
      enabled += Item(text)->isEnabled() ? QString(text).remove('&').toStdString()[2] : '-';
    }
    return enabled;
  }

  QLineEdit* mLine = &dynamic_cast<QLineEdit&>(ControlWidget(*mTop, "EditField1"));
};

// Renders the widget at the scale.
QImage Rendered(QWidget& widget, double scale) {
  QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  image.fill(Qt::white);
  widget.render(&image);
  return image;
}

// The bounding rectangle of the text pixels of a label or a button.
QRect Ink(QWidget& widget, double scale) {
  const QVariant text = widget.property("text");
  const QImage with = Rendered(widget, scale);
  widget.setProperty("text", "");
  const QImage without = Rendered(widget, scale);
  widget.setProperty("text", text);
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

// Replaces the function of the toolkit.
void QApplication::alert(QWidget* widget, int) {
  if (widget->isVisible()) alerted = widget;
}

TEST_F(PresentationTest, DialogAsksForAttention) {
  WhenModal([](QWidget& box) {
    Until([&] { return alerted == &box; });
    box.close();
  });
  mWindow->New<MessageDialog>()->ShowModalWithin(mWindow);
}

TEST_F(PresentationTest, EditItemsAreEnabledWhenTheyApply) {
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
  QTest::keyClick(mLine, Qt::Key_C, Qt::ControlModifier);
  mLine->setEchoMode(QLineEdit::Normal);
  mLine->selectAll();
  EXPECT_EQ(EnabledEdits(), "dtpsl-");
  Item("Cu&t")->trigger();
  EXPECT_EQ(mLine->text(), "");
  Item("&Undo")->trigger();
  EXPECT_EQ(mLine->text(), "abc");
  Item("&Delete")->trigger();
  Item("&Paste")->trigger();
  EXPECT_EQ(mLine->text(), "abc");
  ControlWidget(*mTop, "EditField2").setFocus();
  EXPECT_EQ(EnabledEdits(), "------");
  mWindow->EditField2()->Text("described");
  EXPECT_EQ(EnabledEdits(), "-----l");
  EXPECT_TRUE(Item("About ZELTO Group Update Utility")->isEnabled());
  EXPECT_TRUE(Item("&Quit")->isEnabled());
  std::string shortcuts;
  for (auto* menu : mTop->findChildren<QMenu*>()) {
    for (auto* action : menu->actions()) shortcuts += action->shortcut().toString().toStdString();
  }
  EXPECT_EQ(shortcuts, "Ctrl+QCtrl+ZCtrl+XCtrl+CCtrl+VCtrl+A");
}

TEST_F(PresentationTest, ApplicationMenuHandlerRunsIfTheWindowHasNone) {
  int runs = 0;
  const Method handler{{}, [&](Object&, const Arguments&) { return ++runs > 0; }};
  App()->AddMenuHandler("EditClear", handler);
  App()->AddMenuHandler("mAbout", handler);
  mLine->setFocus();
  QTest::keyClicks(mLine, "abc");
  EXPECT_TRUE(Item("&Delete")->isEnabled());
  Item("&Delete")->trigger();
  EXPECT_EQ(runs, 1);
  WhenModal([](QWidget& about) { about.close(); });
  Item("About ZELTO Group Update Utility")->trigger();
  EXPECT_EQ(runs, 1);
}

TEST_F(PresentationTest, QuitItemEndsTheProgram) {
  Item("&Quit")->trigger();
  EXPECT_THROW(ThrowIfQuitting(), EndException);
}

TEST_F(PresentationTest, AboutShowsTheVersionAndClosesOnMouseRelease) {
  for (const QPoint& place : {QPoint(1, 1), QPoint(150, 60), QPoint(150, 195)}) {
    WhenModal([&](QWidget& about) {
      EXPECT_EQ(about.windowTitle(), "About");
      EXPECT_EQ(about.size(), QSize(310, 245));
      QStringList texts;
      for (auto* label : about.findChildren<QLabel*>()) texts << label->text();
      EXPECT_EQ(texts, QStringList({"ZELTO Group Update Utility", "Version " ZELTO_VERSION,
                                    "© 2026 ZELTO Group. All rights reserved."}));
      auto* top = about.childAt(place);
      QTest::mousePress(top, Qt::LeftButton, {}, place);
      EXPECT_TRUE(about.isVisible());
      QTest::mouseRelease(top, Qt::LeftButton, {}, place);
    });
    Item("About ZELTO Group Update Utility")->trigger();
    EXPECT_FALSE(GetImplicitWindow("WAbout.WAbout"));
  }
  WhenModal([](QWidget& about) { QTest::keyClick(&about, Qt::Key_Escape); });
  Item("About ZELTO Group Update Utility")->trigger();
  EXPECT_FALSE(GetImplicitWindow("WAbout.WAbout"));
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
      for (auto* top : QApplication::topLevelWidgets()) {
        if (!top->isVisible() || top == mTop) continue;
        for (const double scale : {1.0, 1.5, 2.0, 3.0}) {
          for (auto* widget : top->findChildren<QWidget*>()) {
            const auto text = widget->property("text").toString();
            if (!widget->isVisible() || text.isEmpty() || widget->inherits("QLineEdit")) continue;
            const QRect ink = Ink(*widget, scale);
            const QRect area(QPoint(), (QSizeF(widget->size()) * scale).toSize());
            EXPECT_GE(ink.height(), text == "..." ? 1 : 4 * scale) << text.toStdString() << points;
            EXPECT_TRUE(area.adjusted(0, 1, -1, -1).contains(ink)) << text.toStdString() << points;
          }
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
    QTest::mouseClick(area->viewport(), Qt::LeftButton, {}, QPoint(9, 3));
    QTest::keyClick(area, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().size(), 99);
    auto* accessible = QAccessible::queryAccessibleInterface(area);
    ASSERT_GE(accessible->childCount(), 100'000);
    EXPECT_EQ(accessible->child(99'999)->text(QAccessible::Name).toStdString(),
              std::string(99, 'x'));
    EXPECT_TRUE(box.screen()->availableGeometry().size().expandedTo(box.size()) ==
                box.screen()->availableGeometry().size());
    box.close();
  });
  dialog->ShowModalWithin(mWindow);
}

TEST_F(PresentationTest, TypeAheadDoesNotAnswerADialog) {
  const auto dialog = mWindow->New<MessageDialog>();
  dialog->CancelButton()->Visible(true);
  WhenModal([](QWidget& box) {
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
  EXPECT_TRUE(dialog->ShowModalWithin(mWindow) == dialog->ActionButton());
}

TEST_F(PresentationTest, DialogShowsTheIconOfItsCode) {
  std::vector<QImage> icons;
  for (const Int32 code : {0, 1, 2, 3, 4, -1}) {
    const auto dialog = mWindow->New<MessageDialog>();
    if (code != 0) dialog->Icon(code);
    WhenModal([&](QWidget& box) {
      for (auto* label : box.findChildren<QLabel*>()) {
        if (!label->pixmap().isNull()) icons.push_back(label->pixmap().toImage());
      }
      box.close();
    });
    dialog->ShowModalWithin(mWindow);
  }
  ASSERT_EQ(icons.size(), 5U);  // -1 has no icon
  EXPECT_EQ(icons[0], mTop->windowIcon().pixmap(icons[0].size()).toImage());
  for (std::size_t i = 0; i < icons.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) EXPECT_NE(icons[i], icons[j]) << i << " and " << j;
  }
}

TEST_F(PresentationTest, DefaultButtonLosesItsLookToAFocusedButton) {
  WPerm()->Show();
  Until([] { return QApplication::activeWindow()->windowTitle() == "Authenticate"; });
  auto& dialog = *QApplication::activeWindow();
  auto& button = dynamic_cast<QPushButton&>(ControlWidget(dialog, "PushButton1"));
  const auto looks = [&] { return Rendered(button, 1); };
  const QImage asDefault = looks();
  ControlWidget(dialog, "PushButton2").setFocus();
  const QImage beside = looks();
  EXPECT_NE(beside, asDefault);
  button.setDefault(false);
  EXPECT_EQ(beside, looks());
}

// Runs in a copy of this executable, and changes the pictures next to the folder of the copy.
TEST(Pictures, LoadOnFirstUseAndAreCached) {
  const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path();
  if (!IsRunAgain()) {
    const StubPrograms programs;
    std::filesystem::copy("/proc/self/exe", programs.Path("bin/copy"));
    std::filesystem::copy(folder / "Resources", programs.Path("Pictures"));
    return RunAgain("", programs.Path("bin/copy"));
  }
  const auto get = x_MacBGrayscale48x48::MacBGrayscale48x48;
  const ApplicationFixture application;
  EXPECT_FALSE(get());
  std::filesystem::create_directory(folder / "Resources");
  Write(folder / "Resources/MacBGrayscale48x48.png", "no picture");
  EXPECT_FALSE(get());
  EXPECT_TRUE(WPerm());  // the window is complete without pictures
  std::filesystem::remove_all(folder / "Resources");
  std::filesystem::rename(folder / "Pictures", folder / "Resources");
  const auto picture = get();
  ASSERT_TRUE(picture);
  std::filesystem::remove(folder / "Resources/CircleB128x128MaskWhiteBack.gif");
  EXPECT_TRUE(x_CircleB128x128WhiteBack::CircleB128x128WhiteBack());  // without its mask
  std::filesystem::remove_all(folder / "Resources");
  EXPECT_TRUE(get() == picture);
  const QImage image = MaskedImage(*picture);
  EXPECT_EQ(image.size(), QSize(48, 48));
  EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
  EXPECT_EQ(qAlpha(image.pixel(24, 24)), 255);
}
