#include <windows.h>
// after windows.h, which it builds on
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>

#include "cli/Terminal.h"
#include "text/Charset.h"

namespace quenmar {

std::vector<std::string> CommandLineArguments(int /*argc*/, char** /*argv*/) {
  // The runtime's own arguments have lost every character outside the ANSI code page.
  int count = 0;
  wchar_t** const wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) {
    const std::wstring argument = wide[i];
    arguments.push_back(ToUtf8(String(argument.begin(), argument.end())));
  }
  ::LocalFree(wide);
  return arguments;
}

bool StandardInputIsTerminal() { return ::_isatty(::_fileno(stdin)) != 0; }

bool StandardOutputShowsColours() {
  const HANDLE console = ::GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  return ::GetConsoleMode(console, &mode) != 0 &&
         ::SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

TerminalEncoding::TerminalEncoding() : codePage_(::GetConsoleOutputCP()) {
  DWORD mode = 0;
  if (::GetConsoleMode(::GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0) mode_ = mode;
  ::SetConsoleOutputCP(CP_UTF8);
  ::_setmode(::_fileno(stdout), _O_BINARY);
}

TerminalEncoding::~TerminalEncoding() {
  if (codePage_ != 0) ::SetConsoleOutputCP(codePage_);
  if (mode_ != 0) ::SetConsoleMode(::GetStdHandle(STD_OUTPUT_HANDLE), mode_);
}

}  // namespace quenmar
