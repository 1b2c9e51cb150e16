#include <QLabel>
#include <QPainter>

#include "platform/qt/FittedText.h"
#include "platform/qt/Text.h"
#include "platform/qt/WidgetPane.h"

namespace zelto {

namespace {

// Shows plain text in the largest size, up to the control's own, that fits. A text that fits in no
// readable size is shortened and stands whole in the tool tip.
class Label : public QLabel {
 public:
  explicit Label(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setFocusPolicy(Qt::NoFocus);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
    const QFont font = FittedFont(this->font(), text(), size(), Flags());
    painter.setFont(font);
    painter.drawText(rect(), Flags(), Fitting(font));
  }

 private:
  int Flags() const { return int(alignment()) | (wordWrap() ? int(Qt::TextWordWrap) : 0); }

  QString Fitting(const QFont& font) {
    QString shortened =
        wordWrap() ? text() : QFontMetrics(font).elidedText(text(), Qt::ElideRight, width());
    setToolTip(shortened == text() ? QString() : ToolTip(text()));
    return shortened;
  }
};

class StaticTextPane : public WidgetPane<TextPane> {
 public:
  explicit StaticTextPane(Label* label) : WidgetPane(label), mLabel(*label) {
    SetAlignment(Qt::AlignLeft);
  }

  void SetProperty(const String& name, const PropertyValue& value) override {
    if (name == "Text") return SetText(std::get<String>(value));
    if (name == "TextAlign") return SetAlignment(Alignment(std::get<Int32>(value)));
    if (name == "Multiline" && std::get<bool>(value)) {
      mLabel.setWordWrap(true);
      SetAlignment(mLabel.alignment() & Qt::AlignHorizontal_Mask);
    }
    WidgetPane::SetProperty(name, value);
  }

  String Text() const override { return mText; }
  void SetText(const String& text) override {
    mText = text;
    mLabel.setText(ToDisplayText(text));
  }

 private:
  static Qt::Alignment Alignment(Int32 code) {
    return code == 1 ? Qt::AlignHCenter : code == 2 ? Qt::AlignRight : Qt::AlignLeft;
  }

  void SetAlignment(Qt::Alignment horizontal) {
    mLabel.setAlignment(horizontal | (mLabel.wordWrap() ? Qt::AlignTop : Qt::AlignVCenter));
  }

  Label& mLabel;
  String mText;
};

}  // namespace

std::unique_ptr<TextPane> NewStaticTextPane(WindowImp& window) {
  return std::make_unique<StaticTextPane>(new Label(ContentOf(window)));
}

}  // namespace zelto
