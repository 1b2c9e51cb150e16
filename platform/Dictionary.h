#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/runtime/String.h"

namespace zelto {

// Values by name, in the order in which the names were added.
template <class T>
using Dictionary = std::vector<std::pair<String, T>>;

// The value of the name, or a nil or empty one.
template <class T>
T ValueOf(const Dictionary<T>& dictionary, const String& name) {
  const auto found = std::ranges::find(dictionary, name, &std::pair<String, T>::first);
  return found == dictionary.end() ? T() : found->second;
}

// Adds the value, or replaces the value of the name. Returns the replaced one.
template <class T>
T SetValue(Dictionary<T>& dictionary, const String& name, T value) {
  const auto found = std::ranges::find(dictionary, name, &std::pair<String, T>::first);
  if (found != dictionary.end()) return std::exchange(found->second, std::move(value));
  dictionary.emplace_back(name, std::move(value));
  return {};
}

}  // namespace zelto
