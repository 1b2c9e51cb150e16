#include "platform/Window.h"
#include "ui/Window1.h"
#include "update/Actions.h"

namespace zelto {

void Window1::pbTest_Action() {
  const auto shell = New<Shell>();
  EditField2()->Text({});
  EditField2()->Refresh(true);
  shell->Mode(2);
  shell->Execute(ListingTest(EditField1()->Text()));
  AwaitCommands(*shell);
  if (shell->ErrorCode() == 0) {
    stStatus()->Text("Update File Is Valid");
  } else {
    const auto dialog = New<MessageDialog>();
    DescribeFailure(*dialog, EditField1()->Text(), *shell);
    stStatus()->Text("Update File Read Error");
    EditField1()->Text({});
    EditField2()->Text({});
    dialog->ShowModalWithin(Ref<Window>(this));
  }
  UpdateNowMBS(Ref<Window>(this));
}

}  // namespace zelto
