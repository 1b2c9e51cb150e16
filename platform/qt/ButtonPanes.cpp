#include <QApplication>
#include <QPushButton>
#include <QStyleOption>
#include <QStylePainter>
#include <QToolButton>

#include "platform/Application.h"
#include "platform/Control.h"
#include "platform/qt/FittedText.h"
#include "platform/qt/WidgetPane.h"

namespace zelto {

namespace {

// A button whose caption is fitted into it.
template <class Button>
class FittedButton : public Fitted<Button> {
 public:
  using Fitted<Button>::Fitted;

 protected:
  FittedText Shown() const override {
    constexpr QSize frame(8, 2);
    return Fit(Button::font(), Button::text(), Button::size() - frame,
               Qt::AlignCenter | Qt::TextShowMnemonic);
  }
};

// Draws the button unavailable while a handler waits, without a change of its state or of the
// focus.
void ShowWaiting(const QWidget& button, QStyleOption& option) {
  const auto* top = dynamic_cast<const TopLevel*>(button.window());
  if (!top || !top->ShowsActivity()) return;
  option.state &= ~QStyle::State_Enabled;
  option.palette.setCurrentColorGroup(QPalette::Disabled);
}

class FittedPushButton : public FittedButton<QPushButton> {
 public:
  explicit FittedPushButton(QWidget* parent) : FittedButton(parent) {
    setAutoDefault(false);
    connect(qApp, &QApplication::focusChanged, this, [this] { update(); });
  }

 protected:
  // As in QDialog, a focused button looks like the default button, because Return presses it.
  void initStyleOption(QStyleOptionButton* option) const override {
    QPushButton::initStyleOption(option);
    const auto* focused = qobject_cast<QAbstractButton*>(window()->focusWidget());
    option->features.setFlag(QStyleOptionButton::DefaultButton,
                             focused ? focused == this : isDefault());
    ShowWaiting(*this, *option);
  }

  void paintEvent(QPaintEvent*) override {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const auto shown = Shown();
    painter.setFont(shown.Font);
    option.fontMetrics = painter.fontMetrics();
    option.text = shown.Text;
    painter.drawControl(QStyle::CE_PushButton, option);
  }
};

class FittedToolButton : public FittedButton<QToolButton> {
 public:
  using FittedButton::FittedButton;

 protected:
  void paintEvent(QPaintEvent*) override {
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    ShowWaiting(*this, option);
    const auto shown = Shown();
    option.font = shown.Font;
    option.fontMetrics = QFontMetrics(shown.Font);
    option.text = shown.Text;
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
  }
};

// The common part of both kinds of button. A click moves the focus only if AcceptFocus is set.
template <class Model, class Button>
class ButtonPane : public WidgetPane<Model, Button> {
 public:
  ButtonPane(Model& model, TopLevel& top)
      : WidgetPane<Model, Button>(model, new Button(&top.Content())), mTop(top) {
    QObject::connect(this->mWidget, &QAbstractButton::clicked, this->mWidget, [&model] {
      if (!HandlerWaits()) InvokeHandler(model, [&] { model.Raise("Action"); });
    });
    mTop.AddToTabOrder(*this->mWidget, model.Properties().TabIndex);
    ButtonPane::Update();
  }

  void Update() override {
    WidgetPane<Model, Button>::Update();
    const auto& list = this->Properties();
    auto& button = *this->mWidget;
    button.setText(ToDisplayText(list.Caption));
    if constexpr (requires { list.AcceptFocus; }) {
      button.setFocusPolicy(FocusPolicyOf(list.TabStop, list.AcceptFocus));
    } else {
      button.setFocusPolicy(FocusPolicyOf(list.TabStop, false));
      button.setDefault(list.Default);
      mTop.SetDefault(button, list.Default);
      mTop.SetCancel(button, list.Cancel);
    }
  }

 private:
  TopLevel& mTop;
};

}  // namespace

std::unique_ptr<Pane> NewPane(PushButton& button, WindowImp& window) {
  return std::make_unique<ButtonPane<PushButton, FittedPushButton>>(button, TopLevelOf(window));
}

std::unique_ptr<Pane> NewPane(BevelButton& button, WindowImp& window) {
  return std::make_unique<ButtonPane<BevelButton, FittedToolButton>>(button, TopLevelOf(window));
}

}  // namespace zelto
