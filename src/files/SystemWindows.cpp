#include <windows.h>

#include <string>

#include "files/SystemWindows.h"

namespace quenmar {

std::filesystem::path SystemPath(const std::filesystem::path& path) {
  constexpr size_t kSurelyShort = 240;  // folders may have 12 characters less than the 260 of files
  const std::wstring& text = path.native();
  // The long form allows only absolute paths with backslashes.
  const DWORD size = ::GetFullPathNameW(text.c_str(), 0, nullptr, nullptr);
  if (size <= kSurelyShort) return path;  // 0: the system refuses it in every form
  std::wstring whole(size, L'\0');
  whole.resize(::GetFullPathNameW(text.c_str(), size, whole.data(), nullptr));
  if (whole.starts_with(LR"(\\?\)") || whole.starts_with(LR"(\\.\)")) return path;
  if (whole.starts_with(LR"(\\)")) return LR"(\\?\UNC)" + whole.substr(1);
  return LR"(\\?\)" + whole;
}

String SystemMessage(unsigned long number) {
  wchar_t* buffer = nullptr;
  const DWORD length = ::FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, number, 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
  String text(buffer, buffer + length);
  ::LocalFree(buffer);
  while (!text.empty() && text.back() <= u' ') text.pop_back();
  return text.empty() ? u"System error " + ToText(static_cast<int>(number)) : text;
}

}  // namespace quenmar
