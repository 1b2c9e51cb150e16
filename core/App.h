#pragma once

#include "platform/Application.h"

namespace zelto {

class App : public Application {
 public:
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }
};

// The application object. Never nil while the program runs.
Ref<class App> App();

}  // namespace zelto
