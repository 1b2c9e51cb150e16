#pragma once

#include <any>
#include <array>
#include <string_view>

#include "platform/runtime/Exceptions.h"

namespace zelto {

// The keys of the plug-ins' entry points, in the order of their slots.
inline constexpr std::array<std::string_view, 39> PluginKeys{
    "_",
    "BevelButton.DeleteAllRows",
    "BevelButton.AddRow(text As String)",
    "BevelButton.AddSeparator",
    "BevelButton.RemoveRow(row As Integer)",
    "BevelButton.InsertRow(row As Integer, text As String)",
    "BevelButton.List(row As Integer) As String",
    "BevelButton.addActionNotificationReceiver(receiver As actionNotificationReceiver)",
    "BevelButton.removeActionNotificationReceiver(receiver As actionNotificationReceiver)",
    "BevelButton.List(row As Integer) As String.Set",
    "BevelButton.Caption.Get",
    "BevelButton.Caption.Set",
    "BevelButton.CaptionAlign.Set",
    "BevelButton.CaptionPlacement.Set",
    "BevelButton.CaptionDelta.Set",
    "BevelButton.Icon.Set",
    "BevelButton.IconAlign.Set",
    "BevelButton.IconDX.Set",
    "BevelButton.IconDY.Set",
    "BevelButton.Value.Set",
    "BevelButton.MenuValue.Get",
    "BevelButton.MenuValue.Set",
    "BevelButton.TextFont.Set",
    "Placard.Value.Set",
    "DisclosureTriangle.Value.Set",
    "ImageWell.Image.Set",
    "Shell.__init",
    "Shell.__exit",
    "Shell.Execute(command as String)",
    "Shell.Execute(command as String, parameters as String)",
    "Shell.ReadAll() as String",
    "Shell.Write(s as String)",
    "Shell.WriteLine(s as String)",
    "Shell.Close",
    "Shell.Poll",
    "Shell.Result.Get",
    "Shell.Mode.Set",
    "window.UpdateNowMBS",
    "folderitem.UnixpathMBS as string",
};

// A pointer to a function, or empty.
using PluginEntrypoint = std::any;

// An entry point that a plug-in registers under a key.
struct PublishedEntrypoint {
  std::string_view Key;
  PluginEntrypoint Entry;
};

// Registers entry points. Call it before InitPluginEntrypoints.
void RuntimePublishPluginEntrypoints(std::initializer_list<PublishedEntrypoint> entries);

// The entry point registered under the key, or empty.
PluginEntrypoint RuntimeLookupPluginEntrypoint(std::string_view key);

// Fills the slots with the registered entry points. Call it before Glink.
void InitPluginEntrypoints();

// The entry point in the slot, or empty.
const PluginEntrypoint& PluginSlot(std::size_t slot);

// The slot of a key. An unknown key does not compile.
consteval std::size_t PluginSlotOf(std::string_view key) {
  std::size_t slot = 0;
  while (PluginKeys.at(slot) != key) ++slot;
  return slot;
}

// Calls the entry point as a Function. Throws FunctionNotFoundException if the slot is empty, and
// TypeMismatchException if its entry point is of another type.
template <class Function, class... A>
auto Glink(std::size_t slot, A&&... arguments) {
  const auto& entry = PluginSlot(slot);
  if (!entry.has_value()) throw FunctionNotFoundException(PluginKeys.at(slot));
  const auto* function = std::any_cast<Function*>(&entry);
  if (!function) throw TypeMismatchException(PluginKeys.at(slot));
  return (*function)(std::forward<A>(arguments)...);
}

}  // namespace zelto
