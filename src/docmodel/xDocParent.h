#pragma once

#include <memory>

namespace quenmar {

class Document;

/// A parent link that is always null: the tree is navigated downward only.
class xDocParent {  // NOLINT(readability-identifier-naming): its established name
 public:
  /// @return no object, even if one was assigned.
  [[nodiscard]] static std::shared_ptr<Document> Parent() { return nullptr; }

  static void SetParent(const std::shared_ptr<Document>& /*parent*/) {}
};

}  // namespace quenmar
