#include "platform/MessageDialog.h"

#include "platform/Application.h"

namespace zelto {

void MessageDialog::Init() {
  mActionButton = RuntimeNewObject<class ActionButton>();
  mActionButton->Visible(true);
  mActionButton->Default(true);
  mActionButton->Caption("OK");
  mCancelButton = RuntimeNewObject<class CancelButton>();
  mCancelButton->Default(true);
  mCancelButton->Cancel(true);
  mCancelButton->Caption("Cancel");
  mAlternateActionButton = RuntimeNewObject<class AlternateActionButton>();
}

Ref<MessageDialogButton> MessageDialog::ShowModal() {
  auto pressed = ShowMessageDialog(*this, nullptr);
  ThrowIfQuitting();
  return pressed;
}

Ref<MessageDialogButton> MessageDialog::ShowModalWithin(const Ref<Window>& parent) {
  auto pressed = ShowMessageDialog(*this, &parent->Imp());
  ThrowIfQuitting();
  return pressed;
}

}  // namespace zelto
