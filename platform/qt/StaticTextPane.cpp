#include <QLabel>
#include <QPainter>

#include "platform/Control.h"
#include "platform/qt/Accessibility.h"
#include "platform/qt/FittedText.h"
#include "platform/qt/WidgetPane.h"

namespace zelto {

namespace {

class Label : public Fitted<QLabel> {
 public:
  explicit Label(QWidget* parent) : Fitted(parent) { setTextFormat(Qt::PlainText); }

 protected:
  FittedText Shown() const override { return Fit(font(), text(), size(), Flags()); }

  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);  // that of the text
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
    const auto shown = Shown();
    painter.setFont(shown.Font);
    painter.drawText(rect(), Flags(), shown.Text);
  }

 private:
  int Flags() const { return int(alignment()) | (wordWrap() ? int(Qt::TextWordWrap) : 0); }
};

class StaticTextPane : public WidgetPane<StaticText, Label> {
 public:
  StaticTextPane(StaticText& model, Label* label) : WidgetPane(model, label) {
    StaticTextPane::Update();
  }

  void Update() override {
    delete mBalloon;  // it is about the former text
    WidgetPane::Update();
    const auto& list = Properties();
    mWidget->setWordWrap(list.Multiline);
    mWidget->setAlignment(HorizontalAlignment(list.TextAlign) |
                          (list.Multiline ? Qt::AlignTop : Qt::AlignVCenter));
    const QString text = ToDisplayText(list.Text);
    const bool isNews = mWidget->isVisible() && text != mWidget->text() && !text.isEmpty();
    mWidget->setText(text);
    if (isNews) Announce(*mWidget, text);
  }
};

}  // namespace

std::unique_ptr<Pane> NewPane(StaticText& text, WindowImp& window) {
  return std::make_unique<StaticTextPane>(text, new Label(&TopLevelOf(window).Content()));
}

}  // namespace zelto
