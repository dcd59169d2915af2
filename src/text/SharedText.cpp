#include "text/SharedText.h"

#include <algorithm>
#include <limits>
#include <new>
#include <stdexcept>

namespace quenmar {

SharedText::Block* SharedText::Allocate(size_t size) {
  if (size == 0) return nullptr;
  if (size > std::numeric_limits<std::uint32_t>::max()) throw std::length_error("SharedText");
  void* const memory = ::operator new(sizeof(Block) + size * sizeof(char16_t));
  return new (memory) Block{1, static_cast<std::uint32_t>(size)};
}

SharedText::Block* SharedText::Copy(StringView text) {
  Block* const block = Allocate(text.size());
  if (block != nullptr) std::copy(text.begin(), text.end(), block->Characters());
  return block;
}

void SharedText::Free(Block* block) { ::operator delete(block); }

}  // namespace quenmar
