#include <windows.h>

#include <string>

#include "docmodel/EventLog.h"

namespace quenmar {

namespace {

class ApplicationEventLog : public EventLog {
 public:
  void Informational(StringView text) override {
    const HANDLE source = ::RegisterEventSourceW(nullptr, L"Quenmar");
    if (source == nullptr) return;
    const std::wstring wide(text.begin(), text.end());
    const wchar_t* const strings = wide.c_str();
    ::ReportEventW(source, EVENTLOG_INFORMATION_TYPE, 0, 0, nullptr, 1, 0,
                   const_cast<const wchar_t**>(&strings), nullptr);
    ::DeregisterEventSource(source);
  }
};

}  // namespace

EventLog& SystemEventLog() {
  static ApplicationEventLog log;
  return log;
}

}  // namespace quenmar
