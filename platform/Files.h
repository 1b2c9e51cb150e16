#pragma once

#include <vector>

#include "platform/Picture.h"
#include "platform/runtime/Object.h"

namespace zelto {

// A file or a folder, there or not.
class FolderItem : public Object {
 public:
  // The item at the path; a relative path is taken from the current folder.
  static Ref<FolderItem> At(const String& path);

  String Name() const;
  Ref<FolderItem> Parent() const;  // nil at the top of the tree
  Ref<FolderItem> Child(const String& name) const;
  bool Exists() const;
  bool IsReadable() const;
  // The picture in the file; nil when it cannot be read as one.
  Ref<Picture> OpenAsPicture() const;
  // Absolute, in the bytes of the file system.
  const String& NativePath() const { return mPath; }

 private:
  String mPath;
};

void PublishFolderItemFunctions();
// The item's path.
String UnixpathMBS(const Ref<FolderItem>& item);

// What a drag brings.
class DragItem : public Object {
 public:
  static constexpr std::string_view TypeName = "DragItem";

  bool FolderItemAvailable() const { return bool(mItem); }
  Ref<class FolderItem> FolderItem() const { return mItem; }
  void FolderItem(const Ref<class FolderItem>& item) { mItem = item; }

 private:
  Ref<class FolderItem> mItem;
};

// A kind of file, known to dialogs and drop targets by its name while it is registered. Setting a
// property takes the registration back; conversion to a String renews it.
class FileType : public Object {
 public:
  ~FileType() override { Deregister(); }

  const String& Name() const { return mName; }
  void Name(const String& name) { Set(mName, name); }
  const String& MacCreator() const { return mMacCreator; }
  void MacCreator(const String& creator) { Set(mMacCreator, creator); }
  const String& MacType() const { return mMacType; }
  void MacType(const String& type) { Set(mMacType, type); }
  // Separated by ";", without a leading dot.
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

// Several types in one filter.
String operator+(const Ref<FileType>& left, const Ref<FileType>& right);
String operator+(const Ref<FileType>& left, const String& right);
String operator+(const String& left, const Ref<FileType>& right);

void RuntimeRegisterFileType(const String& name, const String& creator, const String& type,
                             const String& extensions);
void RuntimeDeregisterFileType(const String& name);

// The extensions of the registered types of a filter, "name;name".
std::vector<String> FilterExtensions(const String& filter);
// Whether the name of a file is of a type of the filter; the case of letters does not count.
bool MatchesFilter(const String& fileName, const String& filter);

}  // namespace zelto
