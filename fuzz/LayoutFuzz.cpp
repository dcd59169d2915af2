// Lays random wishes into arbitrary files and checks what a user relies on: nothing changes where
// nothing is to change, the next reading finds what was wanted, and a comment is lost only with its
// setting.
//
// Input: the base text, a form feed, the other text, a form feed, and bytes that make the choices.
// What is missing is empty.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "LayoutTrial.h"
#include "NextPart.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  const std::string_view base = quenmar::NextPart(rest);
  const std::string_view other = quenmar::NextPart(rest);
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
