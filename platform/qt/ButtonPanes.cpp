#include <QPushButton>
#include <QStyleOption>
#include <QStylePainter>
#include <QToolButton>

#include "platform/Application.h"
#include "platform/Control.h"
#include "platform/qt/FittedText.h"
#include "platform/qt/Text.h"
#include "platform/qt/WidgetPane.h"

namespace zelto {

namespace {

// What the two kinds of button share.
template <class Model>
class ButtonPane : public WidgetPane<Pane> {
 public:
  ButtonPane(Model& model, QAbstractButton* button) : WidgetPane(button), mButton(*button) {
    // By Tab alone: a click leaves the focus in the field that the user is in.
    button->setFocusPolicy(Qt::NoFocus);
    QObject::connect(button, &QAbstractButton::clicked, button, [control = &model] {
      if (HandlerWaits()) return;
      const Ref<Model> alive(control);
      InvokeHandler([&] { alive->Raise("Action"); });
    });
  }

  void SetProperty(const String& name, const PropertyValue& value) override {
    if (name == "Caption") return mButton.setText(ToDisplayText(std::get<String>(value)));
    if (name == "Default") SetDefault(std::get<bool>(value));
    if (name == "Cancel") mButton.setProperty("isCancel", std::get<bool>(value));
    WidgetPane::SetProperty(name, value);
  }

 private:
  void SetDefault(bool isDefault) {
    mButton.setProperty("isDefault", isDefault);
    if (auto* push = qobject_cast<QPushButton*>(&mButton)) push->setDefault(isDefault);
  }

  QAbstractButton& mButton;
};

// The font in which the button's caption fits within its frame.
QFont CaptionFont(const QAbstractButton& button) {
  constexpr QSize frame(8, 2);
  return FittedFont(button.font(), button.text(), button.size() - frame,
                    Qt::AlignCenter | Qt::TextShowMnemonic);
}

class FittedPushButton : public QPushButton {
 public:
  explicit FittedPushButton(QWidget* parent) : QPushButton(parent) { setAutoDefault(false); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.setFont(CaptionFont(*this));
    option.fontMetrics = painter.fontMetrics();
    painter.drawControl(QStyle::CE_PushButton, option);
  }
};

class FittedToolButton : public QToolButton {
 public:
  using QToolButton::QToolButton;

 protected:
  void paintEvent(QPaintEvent*) override {
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.font = CaptionFont(*this);
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
  }
};

}  // namespace

std::unique_ptr<Pane> NewPushButtonPane(PushButton& button, WindowImp& window) {
  return std::make_unique<ButtonPane<PushButton>>(button, new FittedPushButton(ContentOf(window)));
}

std::unique_ptr<Pane> NewBevelButtonPane(BevelButton& button, WindowImp& window) {
  return std::make_unique<ButtonPane<BevelButton>>(button, new FittedToolButton(ContentOf(window)));
}

}  // namespace zelto
