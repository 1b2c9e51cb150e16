#pragma once

#include <unistd.h>

#include <utility>

namespace zelto {

// Owns a file descriptor and closes it. -1 means none.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : mNumber(number) {}
  Descriptor(Descriptor&& other) noexcept : mNumber(std::exchange(other.mNumber, -1)) {}
  Descriptor& operator=(Descriptor other) noexcept {
    std::swap(mNumber, other.mNumber);
    return *this;
  }
  ~Descriptor() {
    if (IsOpen()) close(mNumber);
  }

  bool IsOpen() const { return mNumber >= 0; }
  int Number() const { return mNumber; }

 private:
  int mNumber;
};

}  // namespace zelto
