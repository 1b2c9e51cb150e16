#include "platform/runtime/Plugins.h"

#include <map>

namespace zelto {

namespace {

std::map<std::string_view, PluginEntrypoint>& Published() {
  static std::map<std::string_view, PluginEntrypoint> published;
  return published;
}

std::array<PluginEntrypoint, PluginKeys.size()> pluginEntrypoints{};

}  // namespace

PublishedEntrypoint::PublishedEntrypoint(std::string_view key, PluginEntrypoint entry) {
  Published()[key] = entry;
}

PluginEntrypoint RuntimeLookupPluginEntrypoint(std::string_view key) {
  const auto found = Published().find(key);
  return found == Published().end() ? nullptr : found->second;
}

void InitPluginEntrypoints() {
  for (std::size_t slot = 0; slot < PluginKeys.size(); ++slot) {
    pluginEntrypoints.at(slot) = RuntimeLookupPluginEntrypoint(PluginKeys.at(slot));
  }
}

PluginEntrypoint PluginSlot(std::size_t slot) { return pluginEntrypoints.at(slot); }

}  // namespace zelto
