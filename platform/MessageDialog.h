#pragma once

#include "platform/Window.h"

namespace zelto {

class MessageDialogButton : public Object {
 public:
  bool Visible() const { return mVisible; }
  void Visible(bool visible) { mVisible = visible; }
  bool Default() const { return mDefault; }
  void Default(bool isDefault) { mDefault = isDefault; }
  bool Cancel() const { return mCancel; }
  void Cancel(bool isCancel) { mCancel = isCancel; }
  const String& Caption() const { return mCaption; }
  void Caption(const String& caption) { mCaption = caption; }

 private:
  bool mVisible = false;
  bool mDefault = false;
  bool mCancel = false;
  String mCaption;
};

// A type of its own for each of the dialog's buttons.
class ActionButton : public MessageDialogButton {};
class CancelButton : public MessageDialogButton {};
class AlternateActionButton : public MessageDialogButton {};

// A question or a message to the user. A new dialog has "OK" as its default button and a hidden
// "Cancel", which answers Esc.
class MessageDialog : public Object {
 public:
  void Init() override;

  const String& Title() const { return mTitle; }
  void Title(const String& title) { mTitle = title; }
  const String& Message() const { return mMessage; }
  void Message(const String& message) { mMessage = message; }
  const String& Explanation() const { return mExplanation; }
  void Explanation(const String& explanation) { mExplanation = explanation; }

  // 0 the application's picture, 1 information, 2 warning, 3 error, 4 question, -1 none.
  Int32 Icon() const { return mIcon; }
  void Icon(Int32 icon) { mIcon = icon; }

  // The dialog's own buttons, the same objects for its whole life; the writers change nothing.
  Ref<class ActionButton> ActionButton() const { return mActionButton; }
  void ActionButton(const Ref<class ActionButton>&) {}
  Ref<class CancelButton> CancelButton() const { return mCancelButton; }
  void CancelButton(const Ref<class CancelButton>&) {}
  Ref<class AlternateActionButton> AlternateActionButton() const { return mAlternateActionButton; }
  void AlternateActionButton(const Ref<class AlternateActionButton>&) {}

  // Block until a button is pressed and give that button. The keyboard has no effect for the first
  // half second, so that no key typed ahead answers a dialog that opens by itself. A dialog that is
  // dismissed otherwise gives the visible button that is for cancelling, else its action button.
  // Both unwind their caller when the application ends.
  Ref<MessageDialogButton> ShowModal();
  Ref<MessageDialogButton> ShowModalWithin(const Ref<Window>& parent);

 private:
  Int32 mIcon = 0;
  String mTitle;
  String mMessage;
  String mExplanation;
  Ref<class ActionButton> mActionButton;
  Ref<class CancelButton> mCancelButton;
  Ref<class AlternateActionButton> mAlternateActionButton;
};

}  // namespace zelto
