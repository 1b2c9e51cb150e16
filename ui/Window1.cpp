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
      Row(EditFieldList{.Name = "EditField1", .Left = 82, .Top = 74, .Width = 359, .Height = 22},
          {.Events = {On("Open", &Window1::EditField1_Open),
                      On("DropObject", &Window1::EditField1_DropObject),
                      On("TextChange", &Window1::EditField1_TextChange)},
           .Label = "Patchfile:"}),
      Row(BevelButtonList{.Name = "BevelButton1",
                          .Left = 446,
                          .Top = 74,
                          .Width = 22,
                          .Height = 22,
                          .TabIndex = 1,
                          .Caption = "..."},
          {.Events = {On("Action", &Window1::BevelButton1_Action)}, .Label = "Choose update file"}),
      Row(PushButtonList{.Name = "pbTest",
                         .Left = 283,
                         .Top = 269,
                         .Width = 80,
                         .Height = 17,
                         .LockBottom = true,
                         .TabIndex = 2,
                         .Caption = "Test",
                         .Enabled = false,
                         .Visible = false,
                         .TextSize = 11},
          {.Events = {On("Action", &Window1::pbTest_Action)}}),
      Row(PushButtonList{.Name = "pbUpdate",
                         .Left = 375,
                         .Top = 269,
                         .Width = 93,
                         .Height = 17,
                         .LockBottom = true,
                         .TabIndex = 3,
                         .Caption = "Update",
                         .Default = true,
                         .Enabled = false,
                         .TextSize = 11},
          {.Events = {On("Action", &Window1::pbUpdate_Action)}}),
      Row(StaticTextList{.Name = "StaticText1",
                         .Left = 82,
                         .Top = 14,
                         .Width = 386,
                         .Height = 48,
                         .TabIndex = 4,
                         .Text = "Drop the downloaded update file into the Patchfile field "
                                 "below or click the \"...\" button to locate the file.",
                         .TextAlign = 1,
                         .Multiline = true}),
      Row(
          CanvasList{
              .Name = "Canvas1", .Left = 20, .Top = 14, .Width = 48, .Height = 48, .TabIndex = 5},
          {.Backdrop = x_MacBGrayscale48x48::MacBGrayscale48x48}),
      Row(StaticTextList{.Name = "stStatus",
                         .Left = 20,
                         .Top = 269,
                         .Width = 251,
                         .Height = 17,
                         .LockBottom = true,
                         .TabIndex = 6,
                         .Text = "Ready",
                         .TextSize = 11}),
      Row(EditFieldList{.Name = "EditField2",
                        .Left = 20,
                        .Top = 130,
                        .Width = 448,
                        .Height = 127,
                        .LockTop = true,
                        .LockBottom = true,
                        .TabIndex = 7,
                        .Multiline = true,
                        .UseFocusRing = false,
                        .ReadOnly = true},
          {.Label = "Description"}),
      Row(StaticTextList{.Name = "StaticText2",
                         .Left = 20,
                         .Top = 75,
                         .Width = 61,
                         .Height = 20,
                         .TabIndex = 8,
                         .Text = "Patchfile:"}),
      Row(StaticTextList{.Name = "StaticText3",
                         .Left = 20,
                         .Top = 103,
                         .Width = 48,
                         .Height = 17,
                         .TabIndex = 9,
                         .Text = "Product:",
                         .TextSize = 11}),
      Row(StaticTextList{.Name = "stProduct",
                         .Left = 71,
                         .Top = 103,
                         .Width = 183,
                         .Height = 17,
                         .TabIndex = 10,
                         .TextSize = 11,
                         .Bold = true}),
      Row(StaticTextList{.Name = "StaticText5",
                         .Left = 266,
                         .Top = 103,
                         .Width = 46,
                         .Height = 17,
                         .TabIndex = 11,
                         .Text = "Version:",
                         .TextSize = 11}),
      Row(StaticTextList{.Name = "stVersion",
                         .Left = 317,
                         .Top = 103,
                         .Width = 151,
                         .Height = 17,
                         .TabIndex = 12,
                         .TextSize = 11,
                         .Bold = true}),
  };
}

void Window1::Layout() {
  MenuBar(MenuBar1());
  RuntimeMassPropertySetter(*this, List());
}

void Window1::CreateControls() { CreateControls0(); }

void Window1::CreateControls0() { AddControlRows(*this, Controls()); }

void Window1::AddMenuHandlers(const Ref<Window>& target) {
  const auto window = RuntimeCheckCast<Window1>(target);
  window->AddMenuHandler("mAbout", RuntimeCreateDelegate(&Window1::mAbout_Action));
}

Ref<class Window1> Window1() { return ImplicitWindow<class Window1>(); }

}  // namespace zelto
