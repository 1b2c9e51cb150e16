#include "ui/WAbout.h"

#include "core/App.h"
#include "platform/PropertyLists.h"
#include "ui/Pictures.h"
#include "ui/Window1.h"

namespace zelto {

const Class& WAbout::ClassTable() {
  static const Class table(
      {.Name = "WAbout.WAbout",
       .Base = &Window::ClassTable(),
       .Handlers = {On("Layout", &WAbout::Layout), On("CreateControls", &WAbout::CreateControls)}});
  return table;
}

String WAbout::List() {
  return WindowList{.Width = 310, .Height = 245, .Frame = 1, .Title = "About", .LiveResize = true};
}

std::vector<ControlRow> WAbout::Controls() {
  return {
      Row("Canvas1", {91, 14, 128, 128}, CanvasList{},
          {.Backdrop = x_CircleB128x128WhiteBack::CircleB128x128WhiteBack}),
      Row("StaticText1", {20, 154, 270, 20},
          StaticTextList{.TabIndex = 1, .Text = "ZELTO Group Update Utility", .TextAlign = 1}),
      Row("StaticText2", {20, 186, 270, 20},
          StaticTextList{.TabIndex = 2, .Text = "Version", .TextAlign = 1, .TextSize = 11},
          {.Events = {On("Open", &WAbout::StaticText2_Open)}}),
      Row("StaticText3", {20, 205, 270, 20},
          StaticTextList{.TabIndex = 3,
                         .Text = "© 2026 ZELTO Group. All rights reserved.",
                         .TextAlign = 1,
                         .TextSize = 11}),
      Row("Canvas2", {0, 0, 310, 245}, CanvasList{.TabIndex = 4},
          {.Events = {On("MouseDown", &WAbout::Canvas2_MouseDown),
                      On("MouseUp", &WAbout::Canvas2_MouseUp)}}),
  };
}

void WAbout::StaticText2_Open() { StaticText2()->Text("Version " + App()->ShortVersion()); }

bool WAbout::Canvas2_MouseDown(Int32, Int32) { return true; }

void WAbout::Canvas2_MouseUp(Int32, Int32) { Close(); }

Ref<class WAbout> WAbout() { return ImplicitWindow<class WAbout>(); }

bool Window1::mAbout_Action() {
  const auto about = zelto::WAbout();
  about->ShowModalWithin(zelto::Window1());
  return true;
}

}  // namespace zelto
