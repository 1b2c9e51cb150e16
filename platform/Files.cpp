#include "platform/Files.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "platform/Framework.h"
#include "platform/Toolkit.h"
#include "platform/runtime/Plugins.h"

namespace zelto {

namespace {

String NativePathOf(const FolderItem& item) { return item.NativePath(); }

}  // namespace

Ref<FolderItem> FolderItem::At(const String& path) {
  auto item = RuntimeNewObject<FolderItem>();
  auto absolute = std::filesystem::absolute(path.Bytes()).string();
  while (absolute.size() > 1 && absolute.back() == '/') absolute.pop_back();
  item->mPath = String(std::move(absolute));
  return item;
}

String FolderItem::Name() const { return mPath.Bytes().substr(mPath.Bytes().rfind('/') + 1); }

Ref<FolderItem> FolderItem::Parent() const {
  const auto path = mPath.Bytes();
  if (path == "/") return nullptr;
  return At(path.substr(0, std::max<std::size_t>(path.rfind('/'), 1)));
}

Ref<FolderItem> FolderItem::Child(const String& name) const { return At(mPath + "/" + name); }

bool FolderItem::Exists() const { return access(std::string(mPath.Bytes()).c_str(), F_OK) == 0; }

bool FolderItem::IsReadable() const {
  return access(std::string(mPath.Bytes()).c_str(), R_OK) == 0;
}

Ref<Picture> FolderItem::OpenAsPicture() const { return LoadPicture(mPath); }

void PublishFolderItemFunctions() {
  RuntimePublishPluginEntrypoints({{"folderitem.UnixpathMBS as string", NativePathOf}});
}

String UnixpathMBS(const Ref<FolderItem>& item) {
  return Glink<String(const FolderItem&)>(PluginSlotOf("folderitem.UnixpathMBS as string"), *item);
}

FileType::operator String() {
  Register();
  return mName;
}

void FileType::Register() {
  if (!mRegistered) RuntimeRegisterFileType(mName, mMacCreator, mMacType, mExtension);
  mRegistered = true;
}

void FileType::Deregister() {
  if (mRegistered) RuntimeDeregisterFileType(mName);
  mRegistered = false;
}

void FileType::Set(String& property, const String& value) {
  Deregister();
  property = value;
}

String operator+(const Ref<FileType>& left, const Ref<FileType>& right) {
  return left + String(*right);
}

String operator+(const Ref<FileType>& left, const String& right) {
  return String(*left) + ";" + right;
}

String operator+(const String& left, const Ref<FileType>& right) {
  return left + ";" + String(*right);
}

// Creator and type codes have no meaning on this system.
void RuntimeRegisterFileType(const String& name, const String&, const String&,
                             const String& extensions) {
  State().FileTypes.push_back({name, extensions});
}

void RuntimeDeregisterFileType(const String& name) {
  std::erase_if(State().FileTypes, [&](const RegisteredType& type) { return type.Name == name; });
}

std::vector<String> FilterExtensions(const String& filter) {
  std::vector<String> extensions;
  for (const auto& name : Split(filter, ";")) {
    for (const auto& type : State().FileTypes) {
      if (type.Name != name) continue;
      for (const auto& extension : Split(type.Extensions, ";")) extensions.push_back(extension);
    }
  }
  return extensions;
}

bool MatchesFilter(const String& fileName, const String& filter) {
  const auto extensions = FilterExtensions(filter);
  return std::any_of(extensions.begin(), extensions.end(), [&](const String& extension) {
    return RuntimeStringCompare(Right(fileName, Len(extension) + 1), "." + extension) == 0;
  });
}

}  // namespace zelto
