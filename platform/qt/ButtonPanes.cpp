#include <QApplication>
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

// What the two kinds of button share. A click leaves the focus in the field that the user is in.
template <class Model>
class ButtonPane : public WidgetPane<Pane> {
 public:
  ButtonPane(Model& model, const ButtonState& state, TopLevel& top, QAbstractButton* button)
      : WidgetPane(button, state), mState(state), mTop(top), mButton(*button) {
    QObject::connect(button, &QAbstractButton::clicked, button, [control = &model] {
      if (HandlerWaits()) return;
      const Ref<Model> alive(control);
      InvokeHandler([&] { alive->Raise("Action"); });
    });
    mTop.AddToTabOrder(*button, state.TabIndex);
    ButtonPane::Update();
  }

  void Update() override {
    WidgetPane::Update();
    mButton.setText(ToDisplayText(mState.Caption));
    mTop.SetDefault(mButton, mState.Default);
    mTop.SetCancel(mButton, mState.Cancel);
    if (auto* push = qobject_cast<QPushButton*>(&mButton)) push->setDefault(mState.Default);
  }

 private:
  const ButtonState& mState;
  TopLevel& mTop;
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
  explicit FittedPushButton(QWidget* parent) : QPushButton(parent) {
    setAutoDefault(false);
    connect(qApp, &QApplication::focusChanged, this, [this] { update(); });
  }

 protected:
  // As in the toolkit's dialogs, the button that Return presses looks like the default one.
  void initStyleOption(QStyleOptionButton* option) const override {
    QPushButton::initStyleOption(option);
    const auto* focused = qobject_cast<QAbstractButton*>(window()->focusWidget());
    option->features.setFlag(QStyleOptionButton::DefaultButton,
                             focused ? focused == this : isDefault());
  }

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

std::unique_ptr<Pane> NewPushButtonPane(PushButton& button, const ButtonState& state,
                                        WindowImp& window) {
  auto& top = TopLevelOf(window);
  return std::make_unique<ButtonPane<PushButton>>(button, state, top,
                                                  new FittedPushButton(&top.Content()));
}

std::unique_ptr<Pane> NewBevelButtonPane(BevelButton& button, const ButtonState& state,
                                         WindowImp& window) {
  auto& top = TopLevelOf(window);
  return std::make_unique<ButtonPane<BevelButton>>(button, state, top,
                                                   new FittedToolButton(&top.Content()));
}

}  // namespace zelto
