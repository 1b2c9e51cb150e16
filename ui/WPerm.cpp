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
      Row(EditFieldList{.Name = "authuser",
                        .Left = 185,
                        .Top = 85,
                        .Width = 211,
                        .Height = 21,
                        .TextSize = 12},
          {.Label = "Name:"}),
      Row(EditFieldList{.Name = "passwd",
                        .Left = 185,
                        .Top = 115,
                        .Width = 211,
                        .Height = 22,
                        .TabIndex = 1,
                        .Password = true,
                        .TextSize = 12},
          {.Label = "Password or Phrase:"}),
      Row(PushButtonList{.Name = "PushButton1",
                         .Left = 293,
                         .Top = 173,
                         .Width = 103,
                         .Height = 20,
                         .TabIndex = 2,
                         .Caption = "Authenticate",
                         .Default = true,
                         .TextSize = 12},
          {.Events = {On("Action", &WPerm::PushButton1_Action)}}),
      Row(StaticTextList{.Name = "StaticText1",
                         .Left = 96,
                         .Top = 86,
                         .Width = 85,
                         .Height = 20,
                         .TabIndex = 3,
                         .Text = "Name:",
                         .TextAlign = 2,
                         .TextSize = 12}),
      Row(StaticTextList{.Name = "StaticText2",
                         .Left = 54,
                         .Top = 116,
                         .Width = 127,
                         .Height = 21,
                         .TabIndex = 4,
                         .Text = "Password or Phrase:",
                         .TextAlign = 2,
                         .TextSize = 12}),
      Row(StaticTextList{.Name = "StaticText3",
                         .Left = 89,
                         .Top = 14,
                         .Width = 307,
                         .Height = 54,
                         .TabIndex = 5,
                         .Text = "ZELTO Group Update Utility requires that you enter your "
                                 "password or passphrase to continue.",
                         .Multiline = true,
                         .TextSize = 12,
                         .Bold = true}),
      Row(PushButtonList{.Name = "PushButton2",
                         .Left = 218,
                         .Top = 173,
                         .Width = 69,
                         .Height = 20,
                         .TabIndex = 6,
                         .Caption = "Cancel",
                         .Cancel = true,
                         .TextSize = 12},
          {.Events = {On("Action", &WPerm::PushButton2_Action)}}),
      Row(
          CanvasList{
              .Name = "Canvas1", .Left = 20, .Top = 20, .Width = 48, .Height = 48, .TabIndex = 7},
          {.Backdrop = x_MacBGrayscale48x48::MacBGrayscale48x48}),
      {"Timer1", CreateControl<class Timer1>, TimerList{.Mode = 2, .Period = 1000}},
  };
}

void WPerm::Layout() { RuntimeMassPropertySetter(*this, List()); }

void WPerm::CreateControls() { CreateControls0(); }

void WPerm::CreateControls0() { AddControlRows(*this, Controls()); }

Ref<class WPerm> WPerm() { return ImplicitWindow<class WPerm>(); }

}  // namespace zelto
