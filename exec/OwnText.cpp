#include "exec/OwnText.h"

#include <algorithm>

namespace zelto {

void KeepMarked(std::string& text, std::size_t start, std::string_view mark) {
  const auto first = text.find(mark, start);
  if (first == std::string::npos) return;
  const auto last = text.rfind(mark);
  if (last != first) text.resize(last);
  text.erase(start, first + mark.size() - start);
}

void RemoveLeading(std::string& text, std::size_t start, std::string_view words) {
  const auto rest = std::string_view(text).substr(start);
  const auto differs = std::mismatch(words.begin(), words.end(), rest.begin(), rest.end()).first;
  auto common = static_cast<std::size_t>(differs - words.begin());
  if (common < words.size()) common = words.substr(0, common).find_last_of(" \n") + 1;
  text.erase(start, common);
}

void KeepLast(std::string& text, std::size_t start, std::size_t size) {
  const auto length = text.size() - start;
  text.erase(start, length - std::min(length, size));
}

void EraseAll(std::string& text, std::size_t start, std::string_view part) {
  for (auto at = text.find(part, start); at != std::string::npos; at = text.find(part, at)) {
    text.erase(at, part.size());
  }
}

}  // namespace zelto
