#include "platform/qt/ImagePicture.h"
#include "platform/qt/Text.h"
#include "tests/Fixtures.h"
#include "ui/Pictures.h"

using namespace zelto;

namespace {

using PresentationTest = WindowTest<>;

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

TEST_F(PresentationTest, TextThatFitsInNoSizeIsShortenedAndWholeInTheToolTip) {
  const QString text = QString("1 sentence <b>. ").repeated(100);
  ControlWidget(*mTop, "BevelButton1").resize(44, 22);
  for (const auto* const name : {"StaticText1", "stProduct", "pbUpdate", "BevelButton1"}) {
    auto& widget = ControlWidget(*mTop, name);
    widget.setProperty("text", text);
    EXPECT_TRUE(widget.rect().adjusted(0, 1, -1, -1).contains(Ink(widget, 1))) << name;
    QHelpEvent hover(QEvent::ToolTip, QPoint(), widget.mapToGlobal(QPoint()));
    QApplication::sendEvent(&widget, &hover);
    EXPECT_EQ(QToolTip::text(), ToolTip(text)) << name;
    QToolTip::hideText();
    const QImage image = widget.grab().toImage();  // shows the start of the text
    widget.setProperty("text", "2" + text.mid(1));
    EXPECT_NE(widget.grab().toImage(), image) << name;
  }
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
