#include <gtest/gtest.h>

#include "tests/Programs.h"
#include "tests/Stage.h"
#include "ui/MenuBar1.h"
#include "ui/WAbout.h"
#include "ui/Window1.h"

using namespace zelto;

TEST(MenuBar1, HasItsRowsInOrder) {
  std::string rows;
  for (const auto& menu : MenuBar1()->Items()) {
    rows += Bytes(menu->Name() + " " + menu->Text() + "\n");
    for (const auto& item : menu->Items()) {
      const char* const kind = RuntimeObjectIsa<QuitMenuItem>(item)    ? "Quit"
                               : RuntimeObjectIsa<AppleMenuItem>(item) ? "Apple"
                                                                       : "";
      rows += Bytes("  " + item->Name() + " " + item->Text() + " " + item->KeyboardShortcut() +
                    " " + kind + (item->AutoEnable() ? "\n" : "!\n"));
    }
  }
  EXPECT_EQ(rows,
            "FileMenu &File\n"
            "  FileQuit &Quit Cmd+Q Quit\n"
            "  mAbout About ZELTO Group Update Utility  Apple\n"
            "EditMenu &Edit\n"
            "  EditUndo &Undo Cmd+Z \n"
            "  UntitledMenu1 -  \n"
            "  EditCut Cu&t Cmd+X \n"
            "  EditCopy &Copy Cmd+C \n"
            "  EditPaste &Paste Cmd+V \n"
            "  EditClear &Delete  \n"
            "  UntitledMenu0 -  \n"
            "  EditSelectAll Select &All Cmd+A \n");
  EXPECT_TRUE(MenuBar1() == MenuBar1());
}
