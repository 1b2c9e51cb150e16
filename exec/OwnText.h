#pragma once

#include <string>
#include <string_view>

// Functions that remove the text of `su` and `sudo` from the output of a command. Each function
// edits the part of `text` from `start` on.
namespace zelto {

// Keeps the text between the first and the last mark, or all text if there is no mark.
void KeepMarked(std::string& text, std::size_t start, std::string_view mark);

// Removes the longest common prefix of the text and `words`. If only a part of `words` matches, the
// removed prefix ends after a blank or a newline.
void RemoveLeading(std::string& text, std::size_t start, std::string_view words);

// Keeps the last `size` bytes.
void KeepLast(std::string& text, std::size_t start, std::size_t size);

void EraseAll(std::string& text, std::size_t start, std::string_view part);

}  // namespace zelto
