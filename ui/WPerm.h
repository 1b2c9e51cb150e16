#pragma once

#include "platform/Window.h"

namespace zelto {

// The Authenticate dialog.
class WPerm : public ListWindow<class WPerm> {
 public:
  static const Class& ClassTable();
  static String List();
  static std::vector<ControlRow> Controls();

  Ref<EditField> authuser() { return ControlNamed<EditField>(*this, "authuser"); }
  Ref<EditField> passwd() { return ControlNamed<EditField>(*this, "passwd"); }
  Ref<PushButton> PushButton1() { return ControlNamed<PushButton>(*this, "PushButton1"); }
  Ref<StaticText> StaticText1() { return ControlNamed<StaticText>(*this, "StaticText1"); }
  Ref<StaticText> StaticText2() { return ControlNamed<StaticText>(*this, "StaticText2"); }
  Ref<StaticText> StaticText3() { return ControlNamed<StaticText>(*this, "StaticText3"); }
  Ref<PushButton> PushButton2() { return ControlNamed<PushButton>(*this, "PushButton2"); }
  Ref<Canvas> Canvas1() { return ControlNamed<Canvas>(*this, "Canvas1"); }
  Ref<Timer> Timer1() { return ControlNamed<Timer>(*this, "Timer1"); }

  virtual void PushButton1_Action();
  virtual void PushButton2_Action();
  virtual void Event_Open();

  class Timer1 : public Timer, public PaneChild {
   public:
    static const Class& ClassTable();
    const Class& ClassOf() const override { return ClassTable(); }
    void Constructor() override {}

    void SetWindow(class Window* window) override { ownerWindow = window; }
    Ref<class Window> Window() const override { return Ref<class Window>(ownerWindow); }
    Ref<Object> Self() override { return Window(); }
    Int32 Index() const override { return mIndex; }
    void SetIndex(Int32 index) override { mIndex = index; }
    void Fire() override;

   private:
    Int32 mIndex = 0;
    class Window* ownerWindow = nullptr;
  };

 protected:
  Int32 Counter = 0;  // failed attempts, or 3 after a success; at 3 no attempt is accepted
  Int32 origx = 0;    // left position before the shake, in pixels
  Int32 wiggle = 0;   // steps of the shake so far

 private:
  // A failed attempt shakes the dialog. Shake moves it by one step.
  void StartShake();
  void Shake();
};

Ref<class WPerm> WPerm();

}  // namespace zelto
