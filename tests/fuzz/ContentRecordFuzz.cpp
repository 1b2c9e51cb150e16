#include <cstdlib>
#include <string>

#include "update/ContentRecord.h"

using namespace zelto;

// Joining the split lines gives the original text, and each value is part of its line.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const auto lines = Split(bytes, EndOfLine());
  std::string joined;
  for (const auto& line : lines) joined.append(line.Bytes()) += '\n';
  joined.pop_back();
  if (joined != bytes) std::abort();
  const auto record = ReadContentRecord(bytes);
  Int32 number = 1;
  for (const auto& value : {record.Product, record.Version, record.Description}) {
    const auto line = ElementAt(lines, number++).Bytes();
    if (value.Bytes().find_first_of("=\n") != std::string_view::npos) std::abort();
    if (!value.IsNil() && line.find("=" + std::string(value.Bytes())) == line.npos) std::abort();
  }
  if (Len(bytes) > LenB(bytes) || Right(bytes, Len(bytes) + 1).Bytes() != bytes) std::abort();
  return 0;
}
