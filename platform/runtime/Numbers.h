#pragma once

#include <cmath>
#include <limits>

#include "platform/runtime/String.h"

namespace zelto {

inline double RuntimeCvtSInt32ToReal64(Int32 value) { return value; }

// Truncates toward zero. Saturates if the value is out of range. NaN gives 0.
inline Int32 RuntimeCvtReal64ToSInt32(double value) {
  using Limits = std::numeric_limits<Int32>;
  if (std::isnan(value)) return 0;
  if (value <= Limits::min()) return Limits::min();
  if (value >= Limits::max()) return Limits::max();
  return static_cast<Int32>(value);
}

}  // namespace zelto
