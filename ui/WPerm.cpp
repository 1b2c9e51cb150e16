#include "ui/WPerm.h"

#include "platform/PropertyLists.h"
#include "ui/Pictures.h"

namespace zelto {

const Class& WPerm::ClassTable() {
  static const Class table(
      {.Name = "WPerm.WPerm",
       .Base = &Window::ClassTable(),
       .Handlers = {On("Layout", &WPerm::Layout), On("CreateControls", &WPerm::CreateControls),
                    On("Open", &WPerm::Event_Open)}});
  return table;
}

const Class& WPerm::Timer1::ClassTable() {
  static const Class table({.Name = "WPerm.Timer1", .Base = &Timer::ClassTable()});
  return table;
}

String WPerm::List() {
  return WindowList{.Width = 416,
                    .Height = 213,
                    .Frame = 1,
                    .Title = "Authenticate",
                    .Resizeable = true,
                    .MaximizeButton = true};
}

std::vector<ControlRow> WPerm::Controls() {
  return {
      Row("authuser", {185, 85, 211, 21}, EditFieldList{.TextSize = 12}, {.Label = "Name:"}),
      Row("passwd", {185, 115, 211, 22},
          EditFieldList{.TabIndex = 1, .Password = true, .TextSize = 12},
          {.Label = "Password or Phrase:"}),
      Row("PushButton1", {293, 173, 103, 20},
          PushButtonList{.TabIndex = 2, .Caption = "Authenticate", .Default = true, .TextSize = 12},
          {.Events = {On("Action", &WPerm::PushButton1_Action)}}),
      Row("StaticText1", {96, 86, 85, 20},
          StaticTextList{.TabIndex = 3, .Text = "Name:", .TextAlign = 2, .TextSize = 12}),
      Row("StaticText2", {54, 116, 127, 21},
          StaticTextList{
              .TabIndex = 4, .Text = "Password or Phrase:", .TextAlign = 2, .TextSize = 12}),
      Row("StaticText3", {89, 14, 307, 54},
          StaticTextList{.TabIndex = 5,
                         .Text = "ZELTO Group Update Utility requires that you enter your "
                                 "password or passphrase to continue.",
                         .Multiline = true,
                         .TextSize = 12,
                         .Bold = true}),
      Row("PushButton2", {218, 173, 69, 20},
          PushButtonList{.TabIndex = 6, .Caption = "Cancel", .Cancel = true, .TextSize = 12},
          {.Events = {On("Action", &WPerm::PushButton2_Action)}}),
      Row("Canvas1", {20, 20, 48, 48}, CanvasList{.TabIndex = 7},
          {.Backdrop = x_MacBGrayscale48x48::MacBGrayscale48x48}),
      {"Timer1", CreateControl<class Timer1>, TimerList{.Mode = 2, .Period = 1000}},
  };
}

Ref<class WPerm> WPerm() { return ImplicitWindow<class WPerm>(); }

}  // namespace zelto
