#include <windows.h>

#include <string>

#include "app/ShowStartFailure.h"

namespace quenmar {

void ShowStartFailure(const QString& text) {
  const std::wstring shown = text.toStdWString();
  ::MessageBoxW(nullptr, shown.c_str(), L"Quenmar", MB_OK | MB_ICONWARNING);
}

}  // namespace quenmar
