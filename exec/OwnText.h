#pragma once

#include <string>
#include <string_view>

// The parts of a command line's output that are the command's own. Each function edits what the
// text holds from `start` on.
namespace zelto {

// Keeps what lies between the first and the last mark; all of it when there is no mark.
void KeepMarked(std::string& text, std::size_t start, std::string_view mark);

// Removes the words if the text starts with them, or else as much of them as is common to both, up
// to a blank or a newline.
void RemoveLeading(std::string& text, std::size_t start, std::string_view words);

// Keeps the last bytes.
void KeepLast(std::string& text, std::size_t start, std::size_t size);

void EraseAll(std::string& text, std::size_t start, std::string_view part);

}  // namespace zelto
