#pragma once

#include "platform/Menu.h"

namespace zelto {

class MenuBar1 : public MenuBar {
 public:
  static const Class& ClassTable();

  void Constructor() override;
  virtual void FileMenu();
  virtual void EditMenu();

  static void Finalize();
};

// The shared menu bar, created on first use.
Ref<class MenuBar1> MenuBar1();

}  // namespace zelto
