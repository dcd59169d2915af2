#include "text/SharedText.h"

#include <algorithm>
#include <limits>
#include <new>
#include <stdexcept>

namespace quenmar {

SharedText::Block* SharedText::Allocate(StringView text) {
  if (text.empty()) return nullptr;
  if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error("SharedText");
  }
  void* const memory = ::operator new(sizeof(Block) + text.size() * sizeof(char16_t));
  auto* const block = new (memory) Block{1, static_cast<std::uint32_t>(text.size())};
  std::copy(text.begin(), text.end(), block->Characters());
  return block;
}

void SharedText::Free(Block* block) { ::operator delete(block); }

}  // namespace quenmar
