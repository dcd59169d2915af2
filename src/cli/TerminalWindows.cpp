#include <windows.h>
// after windows.h, which it builds on
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>

#include "cli/Terminal.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

/// How the console was set up. It is the process's own, and so is the state to go back to.
struct ConsoleState {
  UINT codePage = 0;  // 0 where there is none to restore
  DWORD mode = 0;     // of its output

  static ConsoleState Now() {
    ConsoleState state{::GetConsoleOutputCP(), 0};
    ::GetConsoleMode(::GetStdHandle(STD_OUTPUT_HANDLE), &state.mode);
    return state;
  }

  /// @return the state from before `TerminalEncoding`.
  static ConsoleState& Before() {
    static ConsoleState state;
    return state;
  }

  void Restore() const {
    if (codePage != 0) ::SetConsoleOutputCP(codePage);
    if (mode != 0) ::SetConsoleMode(::GetStdHandle(STD_OUTPUT_HANDLE), mode);
  }
};

/// Ctrl+C at a question ends the process without running destructors.
BOOL WINAPI RestoreOnBreak(DWORD /*event*/) {
  ConsoleState::Before().Restore();
  return FALSE;
}

}  // namespace

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

TerminalEncoding::TerminalEncoding() {
  ConsoleState::Before() = ConsoleState::Now();
  ::SetConsoleCtrlHandler(RestoreOnBreak, TRUE);
  ::SetConsoleOutputCP(CP_UTF8);
  ::_setmode(::_fileno(stdout), _O_BINARY);
  // Unbuffered, the runtime hands characters of several bytes to the console in pieces.
  for (std::FILE* const stream : {stdout, stderr}) std::setvbuf(stream, nullptr, _IOFBF, 1U << 16U);
}

TerminalEncoding::~TerminalEncoding() {
  std::fflush(stdout);
  std::fflush(stderr);
  ConsoleState::Before().Restore();
}

}  // namespace quenmar
