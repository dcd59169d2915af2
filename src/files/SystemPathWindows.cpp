#include <windows.h>

#include <string>

#include "files/SystemPath.h"

namespace quenmar {

std::filesystem::path SystemPath(const std::filesystem::path& path) {
  constexpr size_t kSurelyShort = 200;  // leaves room for the folder that a relative path begins in
  const std::wstring& text = path.native();
  if (text.size() <= kSurelyShort || text.starts_with(LR"(\\?\)")) return path;
  // That form takes nothing but whole paths with backslashes.
  const DWORD size = ::GetFullPathNameW(text.c_str(), 0, nullptr, nullptr);
  std::wstring whole(size, L'\0');
  whole.resize(::GetFullPathNameW(text.c_str(), size, whole.data(), nullptr));
  if (whole.starts_with(LR"(\\)")) return LR"(\\?\UNC)" + whole.substr(1);
  return LR"(\\?\)" + whole;
}

}  // namespace quenmar
