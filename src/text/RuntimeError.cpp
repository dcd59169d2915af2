#include "text/RuntimeError.h"

#include <utility>

#include "text/Charset.h"

namespace quenmar {

RuntimeError::RuntimeError(int number, String source, String description)
    : number_(number),
      source_(std::move(source)),
      description_(std::move(description)),
      what_(ToUtf8(description_)) {}

String DescriptionOf(const std::exception& error) { return FromUtf8(error.what()); }

}  // namespace quenmar
