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

// Distinct types for the three buttons.
class ActionButton : public MessageDialogButton {};
class CancelButton : public MessageDialogButton {};
class AlternateActionButton : public MessageDialogButton {};

// A question or a message to the user. A new dialog shows the default button "OK" and hides the
// button "Cancel". If "Cancel" is visible, it is the default button, and Esc presses it, too.
class MessageDialog : public Object {
 public:
  void Init() override;

  const String& Title() const { return mTitle; }
  void Title(const String& title) { mTitle = title; }
  const String& Message() const { return mMessage; }
  void Message(const String& message) { mMessage = message; }
  const String& Explanation() const { return mExplanation; }
  void Explanation(const String& explanation) { mExplanation = explanation; }

  // 0: the application's icon, 1: information, 2: warning, 3: error, 4: question, -1: none.
  Int32 Icon() const { return mIcon; }
  void Icon(Int32 icon) { mIcon = icon; }

  // The button objects of the dialog. They cannot be replaced: the setters have no effect.
  Ref<class ActionButton> ActionButton() const { return mActionButton; }
  void ActionButton(const Ref<class ActionButton>&) {}
  Ref<class CancelButton> CancelButton() const { return mCancelButton; }
  void CancelButton(const Ref<class CancelButton>&) {}
  Ref<class AlternateActionButton> AlternateActionButton() const { return mAlternateActionButton; }
  void AlternateActionButton(const Ref<class AlternateActionButton>&) {}

  // Both functions block until the dialog is closed and return the pressed button. If the user
  // closes the dialog in another way, both return a visible button whose property Cancel is set, or
  // else the action button. Both throw EndException if the application ends. For the first 500 ms
  // keys have no effect, because a key typed ahead must not answer the dialog.
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
