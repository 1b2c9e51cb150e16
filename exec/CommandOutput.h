#pragma once

#include <string>
#include <string_view>

#include "platform/runtime/String.h"

namespace zelto {

// Functions that find the text of a command in one stream of a command line. `su`, the account's
// shell and `sudo` write to the same stream: mark, text, mark, and sometimes a note and a mark.

bool HasMark(std::string_view stream, std::string_view mark);

// The text between the marks. Without a first mark, it begins at the beginning, after the default
// prompt of `su`. Without an end mark, it ends at the end, but without the lines in which a shell
// reports a killed pipeline: they contain the command that writes the password.
std::string CommandText(const String& stream, const String& mark, const String& password);

// What the wrapper reports after the text, or nil.
String Note(const String& stream, const String& mark);

// Removes what `sudo` prints before each command, such as its prompt: the common prefix of `text`
// and `check`, the text of a successful credential check. A partial prefix ends after a blank or a
// newline.
void RemoveCommonPrefix(std::string& text, std::string_view check);

}  // namespace zelto
