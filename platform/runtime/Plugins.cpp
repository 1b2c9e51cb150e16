#include "platform/runtime/Plugins.h"

#include <algorithm>
#include <vector>

namespace zelto {

namespace {

struct Plugins {
  std::vector<PublishedEntrypoint> Published;
  std::array<PluginEntrypoint, PluginKeys.size()> Slots{};
};

Plugins plugins;

}  // namespace

void RuntimePublishPluginEntrypoints(std::initializer_list<PublishedEntrypoint> entries) {
  plugins.Published.insert(plugins.Published.end(), entries);
}

PluginEntrypoint RuntimeLookupPluginEntrypoint(std::string_view key) {
  const auto found = std::ranges::find(plugins.Published, key, &PublishedEntrypoint::Key);
  return found == plugins.Published.end() ? PluginEntrypoint() : found->Entry;
}

void InitPluginEntrypoints() {
  std::transform(PluginKeys.begin(), PluginKeys.end(), plugins.Slots.begin(),
                 RuntimeLookupPluginEntrypoint);
}

const PluginEntrypoint& PluginSlot(std::size_t slot) { return plugins.Slots.at(slot); }

}  // namespace zelto
