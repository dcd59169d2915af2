#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "files/FileError.h"

namespace quenmar {

/// @return the number of the failure, below 0 when it damaged a file; 0 for success.
inline int ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    const String words = error.Description();
    EXPECT_FALSE(words.empty() || words.starts_with(u"System error"));  // unknown to the system
    EXPECT_GT(words.empty() ? u'x' : words.back(), u' ') << "a line end";
    return dynamic_cast<const FileDamaged*>(&error) != nullptr ? -error.Number() : error.Number();
  }
  return 0;
}

}  // namespace quenmar
