#pragma once

#include "platform/Menu.h"

namespace zelto {

// The application's one menu bar.
class MenuBar1 : public MenuBar {
 public:
  static const Class& ClassTable();

  void Constructor() override;
  virtual void FileMenu();
  virtual void EditMenu();

  // Forgets the shared bar.
  static void Finalize();
};

// The shared bar, built on first use.
Ref<class MenuBar1> MenuBar1();

}  // namespace zelto
