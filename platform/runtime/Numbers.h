#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/runtime/String.h"

namespace zelto {

inline double RuntimeCvtSInt32ToReal64(Int32 value) { return value; }

// Truncates toward zero. Saturates if the value is out of range. NaN gives 0.
inline Int32 RuntimeCvtReal64ToSInt32(double value) {
  using Limits = std::numeric_limits<Int32>;
  if (std::isnan(value)) return 0;
  return static_cast<Int32>(std::clamp<double>(value, Limits::min(), Limits::max()));
}

}  // namespace zelto
