// Lays random wishes into arbitrary files and checks what a user relies on: nothing changes where
// nothing is to change, what was wanted is what is read next, and no comment is lost but with its
// setting.
//
// Input: the base text, a form feed, the other text, a form feed, and bytes that make the choices.
// What is missing is empty.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "LayoutTrial.h"

namespace {

/// Takes the bytes before the next form feed off the front of `rest`.
std::string_view NextPart(std::string_view& rest) {
  const size_t end = std::min(rest.find('\f'), rest.size());
  const std::string_view part = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return part;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  const std::string_view base = NextPart(rest);
  const std::string_view other = NextPart(rest);
  const auto pick = [&rest](unsigned below) {
    if (rest.empty()) return 0U;
    const auto byte = static_cast<unsigned char>(rest.front());
    rest.remove_prefix(1);
    return byte % below;
  };
  const std::string broken =
      quenmar::LayoutTrial(std::string(base), std::string(other), pick).BrokenPromise();
  if (!broken.empty()) {
    std::cerr << "broken promise: " << broken << '\n';
    std::abort();
  }
  return 0;
}
