#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "exec/Shell.h"

// A folder of the test's own, first on PATH, with scripted `su` and `sudo` behind a copy of the
// front end: that of the build is not used where others cannot reach it. The scripts accept the
// pair "zt" and "secret", note what they were called with, and run what they are asked to run with
// the rights of the test.
class StubPrograms {
 public:
  StubPrograms();
  ~StubPrograms();
  StubPrograms(const StubPrograms&) = delete;
  StubPrograms& operator=(const StubPrograms&) = delete;

  std::filesystem::path Folder() const { return mFolder; }
  std::string Path(const std::string& name) const { return mFolder / name; }
  // For the start of PATH: the front end, and the folder of the scripts.
  std::string Programs() const { return Path("front") + ":" + Path("bin"); }
  void Script(const std::string& name, const std::string& body) const;
  // A command for a script that blocks until Release or the end of this object.
  std::string Blocker() const { return "read -r line <'" + Path("gate") + "'"; }
  void Release() const;
  // The words of each call of the program so far.
  std::vector<std::vector<std::string>> Calls(const std::string& program) const;
  // Makes an update file whose members go below the folder. Gives its path.
  std::string Update(const std::string& name, const std::string& record,
                     const std::string& control = "/tmp/.KVX.Content") const;

 private:
  std::filesystem::path mFolder;
  std::string mPathBefore;
  int mGate;  // both ends of a FIFO, so that what is written waits for its reader
};

inline const std::string GoodRecord =
    "product=Zelto Core\nversion=4.2.1\ndescription=Fixes the frobnicator.\n";

// Resident memory of this process that is no file's, in bytes.
long Resident();

zelto::Ref<zelto::Shell> NewShell();

std::string Read(const std::filesystem::path& file);
void Write(const std::filesystem::path& file, const std::string& text);

inline std::string Bytes(const zelto::String& text) { return std::string(text.Bytes()); }
