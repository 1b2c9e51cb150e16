#include "exec/CommandOutput.h"

#include <algorithm>

namespace zelto {

namespace {

// The text without the characters with which a shell quotes.
std::string Unquoted(std::string_view text) {
  std::string unquoted(text);
  std::erase_if(unquoted, [](char c) { return c == '\'' || c == '"' || c == '\\'; });
  return unquoted;
}

// True if the line contains the command that writes the password.
bool ShowsPassword(std::string_view line, std::string_view password) {
  const auto text = Unquoted(line);
  const auto contains = [&](const std::string& command) {
    return text.find(command + Unquoted(password)) != std::string::npos;
  };
  return !password.empty() && (contains("echo ") || contains("printf %sn "));
}

std::string WithoutPassword(std::string_view text, std::string_view password) {
  std::string kept;
  const auto lines = Split(text, "\n");
  for (const auto& line : lines) {
    if (ShowsPassword(line.Bytes(), password)) continue;
    kept += line.Bytes();
    if (&line != &lines.back()) kept += '\n';
  }
  return kept;
}

}  // namespace

bool HasMark(std::string_view stream, std::string_view mark) {
  return stream.find(mark) != std::string_view::npos;
}

std::string CommandText(const String& stream, const String& mark, const String& password) {
  constexpr std::string_view prompt = "Password: ";
  const auto pieces = Split(stream, mark);
  if (pieces.size() > 2) return std::string(pieces[1].Bytes());
  auto text = pieces.back().Bytes();
  if (pieces.size() == 1 && text.starts_with(prompt)) text.remove_prefix(prompt.size());
  return WithoutPassword(text, password.Bytes());
}

String Note(const String& stream, const String& mark) {
  const auto pieces = Split(stream, mark);
  return pieces.size() > 3 ? pieces[2] : String();
}

void RemoveCommonPrefix(std::string& text, std::string_view check) {
  const auto differs = std::ranges::mismatch(check, text).in1;
  auto common = static_cast<std::size_t>(differs - check.begin());
  if (common < check.size()) common = check.substr(0, common).find_last_of(" \n") + 1;
  text.erase(0, common);
}

}  // namespace zelto
