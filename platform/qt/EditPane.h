#pragma once

#include <QStyleOptionFrame>

#include "platform/Application.h"
#include "platform/Control.h"
#include "platform/qt/FileDrops.h"
#include "platform/qt/WidgetPane.h"

namespace zelto {

// A Qt widget whose frame shows the focus only if UseFocusRing is set. It can outlive the field.
template <class Widget>
class FramedEdit : public Widget {
 public:
  using Widget::Widget;

  void UseFocusRing(bool uses) { mUsesFocusRing = uses; }

 protected:
  void initStyleOption(QStyleOptionFrame* option) const override {
    Widget::initStyleOption(option);
    if (!mUsesFocusRing) option->state &= ~QStyle::State_HasFocus;
    // Some styles draw a frame only around a high line of text.
    option->fontMetrics = QFontMetrics(SmallestFont());
  }

 private:
  static QFont SmallestFont() {
    QFont font;
    font.setPixelSize(1);
    return font;
  }

  bool mUsesFocusRing = true;
};

// The common part of the single-line and the multi-line pane.
template <class Widget>
class EditPane : public WidgetPane<EditField, FramedEdit<Widget>, EditFieldPane> {
 public:
  EditPane(EditField& field, TopLevel& top)
      : EditPane::WidgetPane(field, new FramedEdit<Widget>(&top.Content())) {
    auto* widget = this->mWidget.data();
    QObject::connect(widget, &Widget::textChanged, widget, [this] { Changed(); });
    top.AddToTabOrder(*widget, this->Properties().TabIndex);
  }

  void Update() override {
    EditPane::WidgetPane::Update();
    const auto& list = this->Properties();
    this->mWidget->setFocusPolicy(FocusPolicyOf(list.TabStop, true));
    this->mWidget->UseFocusRing(list.UseFocusRing);
    this->mWidget->setReadOnly(list.ReadOnly);
  }

  String Text() const override {
    return ShownText() == mShown ? mWritten : FromQString(ShownText());
  }

  void SetText(const String& text) override {
    mWritten = text;
    Show(ToDisplayText(text));
    mShown = ShownText();
    mBefore = mShown;
  }

  void SelectAll() override { this->mWidget->selectAll(); }

  void AcceptFileDrop(const String& type) override {
    if (!mDrops) mDrops = std::make_unique<FileDrops>(this->mModel, *this->mWidget);
    mDrops->Add(type);
  }

 protected:
  virtual QString ShownText() const = 0;
  virtual void Write(const QString& text) = 0;
  // Adapts the text after a change by the user. Returns false to take the change back.
  virtual bool Accept() = 0;

  // Writes the text without a report of the change.
  void Show(const QString& text) {
    mIsWriting = true;
    Write(text);
    mIsWriting = false;
  }

  // The displayed text before a change.
  const QString& Before() const { return mBefore; }

 private:
  // Handles a change by the user or by assistive technology.
  void Changed() {
    if (mIsWriting) return;
    if (HandlerWaits() || !Accept()) return Show(mBefore);
    mBefore = ShownText();
    InvokeHandler(this->mModel, [this] { this->mModel.Raise("TextChange"); });
  }

  std::unique_ptr<FileDrops> mDrops;
  String mWritten;  // the last text that the program wrote
  QString mShown;   // the displayed form of mWritten
  QString mBefore;
  bool mIsWriting = false;
};

std::unique_ptr<EditFieldPane> NewAreaPane(EditField& field, TopLevel& top);

}  // namespace zelto
