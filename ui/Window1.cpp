#include "ui/Window1.h"

#include "platform/Files.h"
#include "platform/PropertyLists.h"
#include "ui/MenuBar1.h"
#include "ui/Pictures.h"

namespace zelto {

const Class& Window1::ClassTable() {
  static const Class table(
      {.Name = "Window1.Window1",
       .Base = &Window::ClassTable(),
       .Handlers = {On("Layout", &Window1::Layout), On("CreateControls", &Window1::CreateControls),
                    On("AddMenuHandlers", &Window1::AddMenuHandlers),
                    On("Open", &Window1::Event_Open), On("Close", &Window1::Event_Close)}});
  return table;
}

String Window1::List() {
  return WindowList{.Width = 488,
                    .Height = 298,
                    .Composite = true,
                    .Title = "ZELTO Group Update Utility",
                    .Visible = false};
}

std::vector<ControlRow> Window1::Controls() {
  return {
      Row("EditField1", {82, 74, 359, 22}, EditFieldList{},
          {.Events = {On("Open", &Window1::EditField1_Open),
                      On("DropObject", &Window1::EditField1_DropObject),
                      On("TextChange", &Window1::EditField1_TextChange)},
           .Label = "Patchfile:"}),
      Row("BevelButton1", {446, 74, 22, 22}, BevelButtonList{.TabIndex = 1, .Caption = "..."},
          {.Events = {On("Action", &Window1::BevelButton1_Action)}, .Label = "Choose update file"}),
      Row("pbTest", {283, 269, 80, 17},
          PushButtonList{.LockBottom = true,
                         .TabIndex = 2,
                         .Caption = "Test",
                         .Enabled = false,
                         .Visible = false,
                         .TextSize = 11},
          {.Events = {On("Action", &Window1::pbTest_Action)}}),
      Row("pbUpdate", {375, 269, 93, 17},
          PushButtonList{.LockBottom = true,
                         .TabIndex = 3,
                         .Caption = "Update",
                         .Default = true,
                         .Enabled = false,
                         .TextSize = 11},
          {.Events = {On("Action", &Window1::pbUpdate_Action)}}),
      Row("StaticText1", {82, 14, 386, 48},
          StaticTextList{.TabIndex = 4,
                         .Text = "Drop the downloaded update file into the Patchfile field "
                                 "below or click the \"...\" button to locate the file.",
                         .TextAlign = 1,
                         .Multiline = true}),
      Row("Canvas1", {20, 14, 48, 48}, CanvasList{.TabIndex = 5},
          {.Backdrop = x_MacBGrayscale48x48::MacBGrayscale48x48}),
      Row("stStatus", {20, 269, 251, 17},
          StaticTextList{.LockBottom = true, .TabIndex = 6, .Text = "Ready", .TextSize = 11}),
      Row("EditField2", {20, 130, 448, 127},
          EditFieldList{.LockTop = true,
                        .LockBottom = true,
                        .TabIndex = 7,
                        .Multiline = true,
                        .UseFocusRing = false,
                        .ReadOnly = true},
          {.Label = "Description"}),
      Row("StaticText2", {20, 75, 61, 20}, StaticTextList{.TabIndex = 8, .Text = "Patchfile:"}),
      Row("StaticText3", {20, 103, 48, 17},
          StaticTextList{.TabIndex = 9, .Text = "Product:", .TextSize = 11}),
      Row("stProduct", {71, 103, 183, 17},
          StaticTextList{.TabIndex = 10, .TextSize = 11, .Bold = true}),
      Row("StaticText5", {266, 103, 46, 17},
          StaticTextList{.TabIndex = 11, .Text = "Version:", .TextSize = 11}),
      Row("stVersion", {317, 103, 151, 17},
          StaticTextList{.TabIndex = 12, .TextSize = 11, .Bold = true}),
  };
}

void Window1::Layout() {
  MenuBar(MenuBar1());
  ListWindow::Layout();
}

void Window1::AddMenuHandlers(const Ref<Window>& target) {
  const auto window = RuntimeCheckCast<Window1>(target);
  window->AddMenuHandler("mAbout", RuntimeCreateDelegate(&Window1::mAbout_Action));
}

Ref<class Window1> Window1() { return ImplicitWindow<class Window1>(); }

}  // namespace zelto
