#pragma once

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "exec/Shell.h"

// A temporary folder with scripts for `su` and `sudo`, first in PATH. The scripts accept the user
// "zt" with the password "secret", record their arguments, and run their commands with the rights
// of the test. They also print messages, which no output of a command may contain.
class StubPrograms {
 public:
  StubPrograms();
  ~StubPrograms();

  std::filesystem::path Folder() const { return mFolder; }
  std::string Path(const std::string& name) const { return mFolder / name; }
  void Script(const std::string& name, const std::string& body) const;
  // A shell command for use in a script. It blocks until Release, which lets one script go on, or
  // until this object is destroyed.
  std::string Blocker() const { return "read -r line <'" + Path("gate") + "'"; }
  void Release() const;
  // The arguments of each call of the program so far.
  std::vector<std::vector<std::string>> Calls(const std::string& program) const;
  // Makes an update file with the record and one member below the folder. Returns its path.
  std::string Update(const std::string& name, const std::string& record) const;

 private:
  std::filesystem::path mFolder;
  std::string mPathBefore;
  int mGate;  // a FIFO, open for both directions: a line waits until a script reads it
};

inline const std::string GoodRecord =
    "product=Zelto Core\nversion=4.2.1\ndescription=Fixes the frobnicator.\n";

// Removes the entry at the record's path. Returns false if this user may not.
bool RemoveRecord();

zelto::Ref<zelto::Shell> NewShell();

// The number of cases: `few`, or `many` in the long version, which takes minutes.
inline int Cases(int few, int many) { return std::getenv("ZELTO_LONG") ? many : few; }

// RunAgain runs the current test again in a new process, with the command line `start` `program`.
// `program` is this program or a copy. In the new process, IsRunAgain returns True.
bool IsRunAgain();
void RunAgain(const std::string& start,
              const std::string& program = std::filesystem::read_symlink("/proc/self/exe"));

std::string Read(const std::filesystem::path& file);
void Write(const std::filesystem::path& file, const std::string& text);

inline std::string Bytes(const zelto::String& text) { return std::string(text.Bytes()); }
