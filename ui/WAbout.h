#pragma once

#include "platform/Window.h"

namespace zelto {

class WAbout : public ListWindow<class WAbout> {
 public:
  static const Class& ClassTable();
  static String List();
  static std::vector<ControlRow> Controls();

  Ref<Canvas> Canvas1() { return ControlNamed<Canvas>(*this, "Canvas1"); }
  Ref<StaticText> StaticText1() { return ControlNamed<StaticText>(*this, "StaticText1"); }
  Ref<StaticText> StaticText2() { return ControlNamed<StaticText>(*this, "StaticText2"); }
  Ref<StaticText> StaticText3() { return ControlNamed<StaticText>(*this, "StaticText3"); }
  Ref<Canvas> Canvas2() { return ControlNamed<Canvas>(*this, "Canvas2"); }

  virtual void StaticText2_Open();
  virtual bool Canvas2_MouseDown(Int32 x, Int32 y);
  virtual void Canvas2_MouseUp(Int32 x, Int32 y);
};

Ref<class WAbout> WAbout();

}  // namespace zelto
