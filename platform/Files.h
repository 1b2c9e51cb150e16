#pragma once

#include <vector>

#include "platform/Picture.h"
#include "platform/runtime/Object.h"

namespace zelto {

// The path of a file or a folder that need not exist.
class FolderItem : public Object {
 public:
  // The item at the path. A relative path starts at the current folder.
  static Ref<FolderItem> At(const String& path);

  String Name() const;
  Ref<FolderItem> Parent() const;  // nil at the top of the tree
  Ref<FolderItem> Child(const String& name) const;
  bool Exists() const;
  bool IsReadable() const;
  // Returns nil if the file cannot be read as a picture.
  Ref<Picture> OpenAsPicture() const;
  // Absolute, in the bytes of the file system.
  const String& NativePath() const { return mPath; }

 private:
  String mPath;
};

void PublishFolderItemFunctions();
String UnixpathMBS(const Ref<FolderItem>& item);

// The data of a drop.
class DragItem : public Object {
 public:
  static constexpr std::string_view TypeName = "DragItem";

  bool FolderItemAvailable() const { return bool(mItem); }
  Ref<class FolderItem> FolderItem() const { return mItem; }
  void FolderItem(const Ref<class FolderItem>& item) { mItem = item; }

 private:
  Ref<class FolderItem> mItem;
};

// A type of files. Dialogs and drop targets refer to it by name while it is registered. Conversion
// to a String registers the type. Setting a property deregisters it, and so does the destructor.
class FileType : public Object {
 public:
  ~FileType() override { Deregister(); }

  const String& Name() const { return mName; }
  void Name(const String& name) { Set(mName, name); }
  const String& MacCreator() const { return mMacCreator; }
  void MacCreator(const String& creator) { Set(mMacCreator, creator); }
  const String& MacType() const { return mMacType; }
  void MacType(const String& type) { Set(mMacType, type); }
  // Separated by ";", without leading dots.
  const String& Extensions() const { return mExtension; }
  void Extensions(const String& extensions) { Set(mExtension, extensions); }

  operator String();

  void Register();
  void Deregister();

 private:
  void Set(String& property, const String& value);

  String mName;
  String mMacCreator;
  String mMacType;
  String mExtension;
  bool mRegistered = false;
};

// A filter of several types.
String operator+(const Ref<FileType>& left, const Ref<FileType>& right);
String operator+(const Ref<FileType>& left, const String& right);
String operator+(const String& left, const Ref<FileType>& right);

void RuntimeRegisterFileType(const String& name, const String& creator, const String& type,
                             const String& extensions);
void RuntimeDeregisterFileType(const String& name);

// The extensions of the registered types in a filter. A filter has the form "name;name".
std::vector<String> FilterExtensions(const String& filter);
// Returns whether a file name has an extension of the filter. Ignores the case of ASCII letters.
bool MatchesFilter(const String& fileName, const String& filter);

}  // namespace zelto
