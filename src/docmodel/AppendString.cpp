#include "docmodel/AppendString.h"

#include <algorithm>

namespace quenmar {

void AppendString::AddToString(StringView strAdd) {
  const size_t needed = used_ + strAdd.size();
  if (needed > buffer_.size()) {
    const size_t steps = (needed - buffer_.size() + kStep - 1) / kStep;
    const size_t length = buffer_.size() + steps * kStep;
    buffer_.reserve(length);
    buffer_.resize(length, u' ');
  }
  std::copy(strAdd.begin(), strAdd.end(), buffer_.begin() + static_cast<std::ptrdiff_t>(used_));
  used_ = needed;
}

}  // namespace quenmar
