#include "registry/WinRegistry.h"

#include <windows.h>

#include <optional>
#include <string>

namespace quenmar {

namespace {

/// A key that is closed by the destructor; `Handle` is null when it could not be opened.
class Key {
 public:
  using Opener = LSTATUS(WINAPI*)(HKEY, LPCSTR, PHKEY);

  Key(Opener open, RegistryRoot root, const std::string& subkey) {
    auto* const parent =
        root == RegistryRoot::kLocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
    if (open(parent, subkey.c_str(), &handle_) != ERROR_SUCCESS) handle_ = nullptr;
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
  ~Key() {
    if (handle_ != nullptr) ::RegCloseKey(handle_);
  }

  [[nodiscard]] HKEY Handle() const { return handle_; }

 private:
  HKEY handle_ = nullptr;
};

String FromAnsi(const std::string& bytes) {
  const auto size = static_cast<int>(bytes.size());
  const int length = ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0);
  std::wstring text(static_cast<size_t>(length), L'\0');
  ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.data(), length);
  return {text.begin(), text.end()};
}

/// @return the bytes, or nothing when the code page lacks a character. Converting back is the test:
/// it notices look-alikes, and works for UTF-8, too, which has no "default used" flag.
std::optional<std::string> ToAnsi(StringView text) {
  const std::wstring wide(text.begin(), text.end());
  const auto size = static_cast<int>(wide.size());
  const int length =
      ::WideCharToMultiByte(CP_ACP, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<size_t>(length), '\0');
  ::WideCharToMultiByte(CP_ACP, 0, wide.data(), size, bytes.data(), length, nullptr, nullptr);
  if (FromAnsi(bytes) != text) return std::nullopt;
  return bytes;
}

/// @return the bytes of a key or a name, ended by a NUL for the system.
std::optional<std::string> ToAnsiName(StringView name) {
  return name.find(u'\0') == StringView::npos ? ToAnsi(name) : std::nullopt;
}

}  // namespace

String WinRegistry::RegReadString(RegistryRoot root, StringView subkey, StringView name,
                                  StringView defaultText) const {
  const auto keyBytes = ToAnsiName(subkey);
  const auto nameBytes = ToAnsiName(name);
  if (!keyBytes || !nameBytes) return String(defaultText);
  const Key key(&::RegOpenKeyA, root, *keyBytes);
  DWORD type = REG_NONE;
  DWORD size = 0;
  if (key.Handle() == nullptr ||
      ::RegQueryValueExA(key.Handle(), nameBytes->c_str(), nullptr, &type, nullptr, &size) !=
          ERROR_SUCCESS ||
      type != REG_SZ) {
    return String(defaultText);
  }
  std::string buffer(size, ' ');
  if (::RegQueryValueExA(key.Handle(), nameBytes->c_str(), nullptr, nullptr,
                         reinterpret_cast<BYTE*>(buffer.data()), &size) != ERROR_SUCCESS) {
    return String(defaultText);
  }
  return FromAnsi(buffer.substr(0, buffer.find('\0')));
}

bool WinRegistry::RegWriteString(RegistryRoot root, StringView subkey, StringView name,
                                 StringView value) {
  const auto keyBytes = ToAnsiName(subkey);
  const auto nameBytes = ToAnsiName(name);
  const auto valueBytes = ToAnsi(value);
  if (!keyBytes || !nameBytes || !valueBytes) return false;
  const Key key(&::RegCreateKeyA, root, *keyBytes);
  // The size leaves out the terminating NUL: programs that read these values expect that count.
  return key.Handle() != nullptr &&
         ::RegSetValueExA(key.Handle(), nameBytes->c_str(), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(valueBytes->c_str()),
                          static_cast<DWORD>(valueBytes->size())) == ERROR_SUCCESS;
}

}  // namespace quenmar
