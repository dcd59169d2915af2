#pragma once

#include "text/String.h"

namespace quenmar {

/// Where failures go that no message box shows.
class EventLog {
 public:
  EventLog() = default;
  EventLog(const EventLog&) = delete;
  EventLog& operator=(const EventLog&) = delete;
  virtual ~EventLog() = default;

  /// Writes an informational entry; never fails towards the caller.
  virtual void Informational(StringView text) = 0;
};

/// @return the system's own log: the system logger, on Windows the application event log.
[[nodiscard]] EventLog& SystemEventLog();

}  // namespace quenmar
