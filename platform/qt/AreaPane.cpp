#include <QPlainTextEdit>

#include "platform/qt/EditPane.h"

namespace zelto {

namespace {

Qt::ScrollBarPolicy PolicyOf(bool hasBar) {
  return hasBar ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
}

class AreaPane : public EditPane<QPlainTextEdit> {
 public:
  AreaPane(EditField& field, TopLevel& top) : EditPane(field, top) {
    AreaPane::Update();
    SetText(Properties().Text);
  }

  void Update() override {
    EditPane::Update();
    const auto& list = Properties();
    mWidget->setFrameShape(list.Border ? QFrame::StyledPanel : QFrame::NoFrame);
    mWidget->setVerticalScrollBarPolicy(PolicyOf(list.ScrollbarVertical));
    mWidget->setHorizontalScrollBarPolicy(PolicyOf(list.ScrollbarHorizontal));
    mWidget->setTabChangesFocus(!list.AcceptTabs);
    QTextOption option = mWidget->document()->defaultTextOption();
    option.setAlignment(HorizontalAlignment(list.Alignment));
    option.setTextDirection(Qt::LayoutDirectionAuto);  // that of each paragraph
    mWidget->document()->setDefaultTextOption(option);
  }

 protected:
  QString ShownText() const override { return mWidget->toPlainText(); }
  void Write(const QString& text) override { mWidget->setPlainText(text); }

  bool Accept() override {
    const auto limit = Properties().LimitText;
    return limit <= 0 || ShownText().size() <= limit;
  }
};

}  // namespace

std::unique_ptr<EditFieldPane> NewAreaPane(EditField& field, TopLevel& top) {
  return std::make_unique<AreaPane>(field, top);
}

}  // namespace zelto
