#include <QEvent>
#include <QLabel>
#include <QPainter>

#include "platform/Control.h"
#include "platform/qt/Accessibility.h"
#include "platform/qt/Text.h"
#include "platform/qt/WidgetPane.h"

namespace zelto {

namespace {

// Shows plain text, set smaller until it fits. If no readable size fits, text without wrapping is
// shortened, and the tool tip shows all of it in place of the help tag.
class Label : public QLabel {
 public:
  explicit Label(QWidget* parent) : QLabel(parent) { setTextFormat(Qt::PlainText); }

  void SetHelpTag(const QString& text) { mHelpTag = text; }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);  // that of the text
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
    const QFont font = Fitting();
    painter.setFont(font);
    painter.drawText(rect(), Flags(), Shortened(font));
  }

  bool event(QEvent* event) override {
    if (event->type() == QEvent::ToolTip) {
      setToolTip(ToolTip(Shortened(Fitting()) == text() ? mHelpTag : text()));
    }
    return QLabel::event(event);
  }

 private:
  int Flags() const { return int(alignment()) | (wordWrap() ? int(Qt::TextWordWrap) : 0); }
  QFont Fitting() const { return FittedFont(font(), text(), size(), Flags()); }
  QString Shortened(const QFont& font) const {
    if (wordWrap()) return text();
    return QFontMetrics(font).elidedText(text(), Qt::ElideRight, width());
  }

  QString mHelpTag;
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
    mWidget->SetHelpTag(ToDisplayText(list.HelpTag));
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
