#include "core/App.h"

namespace zelto {

const Class& App::ClassTable() {
  static const Class table({.Name = "App", .Base = &Application::ClassTable()});
  return table;
}

Ref<class App> App() { return RuntimeCheckCast<class App>(GetAppObject()); }

}  // namespace zelto
